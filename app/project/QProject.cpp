#include "QProject.h"

#include "QAnimations.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QFontFile.h"
#include "QMugenModel.h"
#include "QProjectPaths.h"
#include "QRGBPalette.h"
#include "QSounds.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QTextEncoding.h"
#include "QTextFileLines.h"
#include "QUserDialogs.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegExp>
#include <QSaveFile>

#include <functional>

// The progress of one operation: the receiver of progress() may stop it at every step.
struct QProject::Step
{
    QProject* project;
    uint max;
    uint pos = 0;
    bool allow = true;

    // Reports the next position; false when the receiver stopped the operation.
    bool next()
    {
        emit project->progress(pos++, max, allow);
        return allow;
    }
};

// One file that a save as writes: from a model, or copied from the file on disk that no model holds.
struct QProject::Placement
{
    Placement(QProjectFileType kind, const QString& name, int palette = 0)
        : kind(kind), name(name), palette(palette)
    {}

    QProjectFileType kind;
    // The name as the definitions give it.
    QString name;
    QString target;
    // The file to copy; empty when a model writes the file.
    QString source;
    // The state file that writes itself; the palette number (1 to 12) of a palette written from the
    // sprites' palettes.
    QSyntaxTextEditor* states = nullptr;
    int palette = 0;
};

namespace {

bool isInside(const QString& folder, const QString& path)
{
    const QString relative = QDir(folder).relativeFilePath(path);
    return !relative.startsWith(QLatin1String("..")) && !QDir::isAbsolutePath(relative);
}

bool sameFile(const QString& a, const QString& b)
{
    const QString first = QFileInfo(a).canonicalFilePath();
    return !first.isEmpty() && first == QFileInfo(b).canonicalFilePath();
}

// A file copied byte for byte, through a QSaveFile so that a failed copy leaves the target as it was.
bool copyBytes(const QString& source, const QString& target)
{
    if (sameFile(source, target)) return true;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) return false;
    const QByteArray bytes = in.readAll();
    QSaveFile out(target);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}

} // namespace

QProject::QProject(uint cacheType, bool cacheCompression, QObject* parent) : QObject(parent)
{
    // The order in which the models join the issue list is the order of its rows.
    defs = new QDefinitions;
    defs->setProject(this);
    airText = new QSyntaxTextEditor(pftAnimations, this, false, 0x1010000);
    spr = new QSprites(this, cacheType, cacheCompression);
    snd = new QSounds(this, cacheType, cacheCompression);
    anims = new QAnimations(this);
    anims->setEditor(airText);
    cmds = new QCommands;
    cmds->setProject(this);

    connect(defs, &QDefinitions::typeChanged, this, [this]() {
        attachAnimations();
        emit typeChanged(this);
    });
    connect(defs, &QDefinitions::nameChanged, this, [this]() {
        if (name.isEmpty()) emit nameChanged(this, displayName());
    });
    connect(&defs->versionTimer, &QTimer::timeout, this, &QProject::passVersion);
    connect(spr, &QSprites::charPalette, this, &QProject::charPalette);
}

QProject::QProject(QObject* parent)
    : QProject(numberSetting("cache_type", 0), flagSetting("cache_compression", true), parent)
{}

QProject::~QProject()
{
    anims->setEditor(nullptr);
    delete defs;
    delete snd;
    delete cmds;
    delete anims;
    delete airText;
    delete spr;
    qDeleteAll(stateFiles);
}

QProjectType QProject::type() const
{
    return defs->type();
}

QProjectType QProject::projectType() const
{
    return defs->type();
}

quint32 QProject::mugenVersion() const
{
    return defs->version();
}

QMessageList* QProject::messageList() const
{
    return &issues;
}

QString QProject::displayName() const
{
    return name.isEmpty() ? defs->displayName() : name;
}

void QProject::setDisplayName(const QString& text)
{
    if (name == text) return;
    name = text;
    emit nameChanged(this, displayName());
}

// ---- Opening

bool QProject::fromFile(const QString& path, uint codepage, bool backup, bool copy)
{
    const QFileInfo info(path);
    backupTarget.clear();
    if (backup) {
        backupTarget = backupFolder(info.canonicalPath());
        QDir().mkpath(backupTarget);
        QFile::copy(path, backupTarget + info.fileName());
    }
    if (!defs->fromFile(path, codepage, copy)) return false;
    // Every file is checked for the version that the definitions declare, from its first line on.
    defs->versionTimer.stop();
    passVersion();
    name.clear();
    entries.clear();

    const QDefinitionFiles files = defs->files();
    const QString base = files.baseDirectory;
    Step step{this, uint(files.states.size()) + 16};
    if (!step.next()) return false;

    // Palettes first, so that a version 1.01 sprite file finds the character's palette among them.
    for (int i = 0; i < 12; ++i) {
        const QString& palName = files.palettes.at(i);
        if (palName.isEmpty()) continue;
        QProjectFileEntry entry{
            pftSprites, QStringLiteral("pal%1").arg(i + 1), palName, findNamed(base, palName), false, false};
        if (!entry.path.isEmpty()) {
            backupCopy(entry.path, palName);
            QRGBPal table[QRGBPal::TableSize];
            QRGBPalette palette(table);
            if (palette.fromFile(entry.path)) {
                // Loading a backup into an open project gives its palettes new colours in place.
                const int existing = spr->findPalette(0, 1, i + 1);
                if (existing >= 0)
                    spr->paletteAt(uint(existing))->setColors(table);
                else
                    spr->addPalette(table, QSpritePaletteShareMode::Share, 1, i + 1);
                entry.loaded = true;
            }
        }
        entries.append(entry);
        if (!entry.path.isEmpty() && !step.next()) return false;
    }

    auto load = [&](QProjectFileType kind, const QString& role, const QString& fileName,
                    const std::function<bool(const QString&)>& read) {
        QProjectFileEntry entry{kind,  role, fileName, findNamed(base, fileName, type() == Stage),
                                false, false};
        if (!entry.path.isEmpty()) {
            backupCopy(entry.path, fileName);
            entry.loaded = read(entry.path);
        }
        if (!fileName.isEmpty()) entries.append(entry);
        return step.next();
    };

    step.pos = 13;
    if (!load(pftSprites, QStringLiteral("sprite"), files.sprite,
              [&](const QString& file) { return spr->fromFile(file, copy); }))
        return false;
    if (type() == Character) {
        if (!load(pftAnimations, QStringLiteral("anim"), files.animation, [&](const QString& file) {
                // A file's own box lines and counts are kept as written while it loads.
                anims->rewriteOnLoad = false;
                const bool loaded = airText->fromFile(file, codepage, copy);
                anims->rewriteOnLoad = true;
                return loaded;
            }))
            return false;
    } else if (!step.next()) {
        return false;
    }
    if (!load(pftSounds, QStringLiteral("sound"), files.sound,
              [&](const QString& file) { return snd->fromFile(file, copy); }))
        return false;
    if (!load(pftCommands, QStringLiteral("cmd"), files.commands,
              [&](const QString& file) { return cmds->fromFile(file, codepage, copy); }))
        return false;

    // The state files read now replace those of an earlier load; a backup being loaded goes into the
    // open files in order, so that they keep their names.
    QList<QSyntaxTextEditor*> earlier;
    earlier.swap(stateFiles);
    for (const QString& stateName : files.states) {
        QProjectFileEntry entry{
            pftStates, QStringLiteral("states"), stateName, findNamed(base, stateName), false, false};
        entry.fromEngine =
            entry.path.isEmpty() && isCommonStates(stateName) && QProjectPaths::engineRoot(base).isEmpty();
        if (!entry.path.isEmpty()) {
            backupCopy(entry.path, stateName);
            QSyntaxTextEditor* states = copy && !earlier.isEmpty() ? earlier.takeFirst() : nullptr;
            if (!states) states = makeStatesFile(0);
            states->setFileIndex(int(stateFiles.size()));
            entry.loaded = states->fromFile(entry.path, codepage, copy);
            if (entry.loaded)
                stateFiles.append(states);
            else
                delete states;
        }
        entries.append(entry);
        if (!entry.path.isEmpty() && !step.next()) {
            qDeleteAll(earlier);
            return false;
        }
    }
    qDeleteAll(earlier);
    reportMissing();
    return true;
}

QString QProject::findNamed(const QString& base, const QString& fileName, bool stage) const
{
    return QProjectPaths::find(
        base, QProjectPaths::spellings(fileName, defs->fileNameBytes(fileName), defs->codec()), stage);
}

bool QProject::isCommonStates(const QString& fileName) const
{
    const QString common =
        QProjectPaths::normalized(defs->findValue(QStringLiteral("Files"), QStringLiteral("stcommon")));
    return !common.isEmpty() && common.compare(fileName, Qt::CaseInsensitive) == 0;
}

QStringList QProject::missingFiles() const
{
    QStringList names;
    for (const QProjectFileEntry& entry : entries)
        if (entry.path.isEmpty() && !entry.name.isEmpty() && !entry.fromEngine) names << entry.name;
    return names;
}

void QProject::reportMissing() const
{
    const QStringList names = missingFiles();
    if (names.isEmpty()) return;
    QUserDialogs::warning(tr("Missing files"),
                          tr("%1 names files that are not there, in any spelling of their names:\n%2\n\n"
                             "They are not loaded.")
                              .arg(QFileInfo(defs->filePath()).fileName(), names.join(QLatin1Char('\n'))));
}

bool QProject::fromFontFile(const QString& path)
{
    entries.clear();
    name.clear();
    return QFontFile::importFnt(path, *defs, *spr);
}

QSyntaxTextEditor* QProject::makeStatesFile(int index)
{
    auto* states = new QSyntaxTextEditor(pftStates, this, false, defs->version());
    states->setFileIndex(index);
    return states;
}

// ---- Saving

QString QProject::askFileName(QProjectFileType kind, int index)
{
    savingKind = kind;
    savingState = index;
    const QString path = emit saveFileName(kind, variables.value(QStringLiteral("proj_path")));
    savingState = -1;
    if (!path.isEmpty()) variables[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    return path;
}

QString QProject::savingPath() const
{
    switch (savingKind) {
    case pftDefinitions:
        return defs->filePath();
    case pftSprites:
        return spr->fileName();
    case pftAnimations:
        return airText->filePath();
    case pftCommands:
        return cmds->filePath();
    case pftStates:
        return savingState >= 0 && savingState < stateFiles.size() ? stateFiles.at(savingState)->filePath()
                                                                   : QString();
    case pftSounds:
        return snd->fileName();
    }
    return QString();
}

void QProject::saveFile(QProjectFileType kind, bool copy, int index)
{
    switch (kind) {
    case pftSprites: {
        if (spr->count() == 0) return;
        const quint32 version = emit spritesVersionToSave(spr->version());
        if (version == 0 || !spr->canSave(version)) return;
        const QString path = askFileName(kind, index);
        if (!path.isEmpty()) spr->toFile(path, version, copy);
        return;
    }
    case pftAnimations: {
        if (anims->isEmpty() || !anims->canSave(defs->version())) return;
        const QString path = askFileName(kind, index);
        if (!path.isEmpty()) airText->toFile(path, copy);
        return;
    }
    case pftSounds: {
        if (snd->isEmpty() || !snd->canSave(defs->version())) return;
        const QString path = askFileName(kind, index);
        if (!path.isEmpty()) snd->toFile(path, copy);
        return;
    }
    case pftCommands:
    case pftStates: {
        QSyntaxTextEditor* text = kind == pftCommands ? cmds : stateFiles.value(index);
        if (!text || text->isEmpty() || !text->canSave(defs->version())) return;
        const QString path = askFileName(kind, index);
        if (!path.isEmpty()) text->toFile(path, copy);
        return;
    }
    case pftDefinitions: {
        const QString path = askFileName(kind, index);
        if (!path.isEmpty()) defs->toFile(path, copy);
        return;
    }
    }
}

// Writes one file to its known path, or asks where when it has none on disk yet.
bool QProject::writeFile(QProjectFileType kind, int index, bool onlyModified, Step& step)
{
    QProjectFile* model = nullptr;
    QString path;
    switch (kind) {
    case pftSprites:
        model = spr;
        path = spr->fileName();
        break;
    case pftAnimations:
        model = anims;
        path = airText->filePath();
        break;
    case pftCommands:
        model = cmds;
        path = cmds->filePath();
        break;
    case pftStates:
        model = stateFiles.at(index);
        path = stateFiles.at(index)->filePath();
        break;
    case pftSounds:
        model = snd;
        path = snd->fileName();
        break;
    case pftDefinitions:
        return step.next();
    }
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        saveFile(kind, false, index);
    } else if (!onlyModified || model->isModified()) {
        const quint32 version = kind == pftSprites ? spr->version() : defs->version();
        if (model->canSave(version)) {
            switch (kind) {
            case pftSprites:
                spr->toFile(path, 0, false);
                break;
            case pftAnimations:
                airText->toFile(path, false);
                break;
            case pftSounds:
                snd->toFile(path, false);
                break;
            default:
                static_cast<QSyntaxTextEditor*>(kind == pftCommands ? cmds : stateFiles.at(index))
                    ->toFile(path, false);
                break;
            }
        }
    }
    return step.next();
}

bool QProject::save()
{
    const bool onlyModified = flagSetting("save_only_modified", true);
    defs->toFile(defs->filePath(), false);
    Step step{this, uint(stateFiles.size()) + 4};
    if (!step.next()) return false;
    if (!writeFile(pftSprites, 0, onlyModified, step)) return false;
    if (type() != Character) return true;
    if (!writeFile(pftAnimations, 0, onlyModified, step)) return false;
    if (!writeFile(pftCommands, 0, onlyModified, step)) return false;
    for (int i = 0; i < stateFiles.size(); ++i)
        if (!writeFile(pftStates, i, onlyModified, step)) return false;
    return writeFile(pftSounds, 0, onlyModified, step);
}

QList<QProject::Placement> QProject::placeFiles(const QString& folder, QStringList* unwritable,
                                                QStringList* lacking,
                                                QList<const QSyntaxTextEditor*>* named) const
{
    const QDefinitionFiles files = defs->files();
    const QString base = files.baseDirectory;
    QList<Placement> result;
    QList<QSyntaxTextEditor*> unnamedStates;
    for (QSyntaxTextEditor* states : stateFiles)
        if (states->filePath().isEmpty()) unnamedStates << states;

    // model: whether a model writes the file; common: the engine's common states.
    auto place = [&](Placement placement, const QString& source, bool model, bool common = false) {
        const bool stageSprite = placement.kind == pftSprites && !placement.palette && type() == Stage;
        // A file that the engine finds outside the project's folder (its data folder, the stages) stays
        // there when it finds it from the new folder too; the engine's common states stay anyway.
        if ((!source.isEmpty() && !isInside(base, source)) || (source.isEmpty() && common)) {
            const QString there = findNamed(folder, placement.name, stageSprite);
            if (common || (!there.isEmpty() && !isInside(folder, there))) return;
        }
        const QString relative = !source.isEmpty() && isInside(base, source)
                                     ? QDir(base).relativeFilePath(source)
                                     : QDir::cleanPath(QProjectPaths::normalized(placement.name).trimmed());
        if (relative.startsWith(QLatin1String("..")) || QDir::isAbsolutePath(relative)) {
            *unwritable << tr("%1: it lies outside the folder of the definitions").arg(placement.name);
            return;
        }
        if (!model && source.isEmpty()) {
            *lacking << placement.name;
            return;
        }
        placement.target = QDir(folder).filePath(relative);
        if (!model) placement.source = source;
        result << placement;
    };
    auto sourceOf = [&](const QString& name, bool stage = false) {
        return base.isEmpty() || name.isEmpty() ? QString() : findNamed(base, name, stage);
    };

    // Palettes go along as their files are; one that no file holds yet is written from its colours.
    for (int i = 0; i < 12; ++i) {
        const QString& name = files.palettes.at(i);
        if (name.isEmpty()) continue;
        const QString source = sourceOf(name);
        const bool model = source.isEmpty() && spr->findPalette(0, 1, i + 1) >= 0;
        place(Placement(pftSprites, name, model ? i + 1 : 0), source, model);
    }
    // A model writes its file when it holds something; else the file on disk goes along as it is. A
    // file that neither has is one the original lacks too: nothing is made up for it.
    if (!files.sprite.isEmpty())
        place(Placement(pftSprites, files.sprite), sourceOf(files.sprite, type() == Stage), spr->count() > 0);
    if (type() != Character) return result;
    if (!files.animation.isEmpty())
        place(Placement(pftAnimations, files.animation), sourceOf(files.animation),
              !airText->filePath().isEmpty() || !airText->isEmpty());
    if (!files.sound.isEmpty())
        place(Placement(pftSounds, files.sound), sourceOf(files.sound), snd->count() > 0);
    if (!files.commands.isEmpty())
        place(Placement(pftCommands, files.commands), sourceOf(files.commands),
              !cmds->filePath().isEmpty() || !cmds->isEmpty());
    for (const QString& name : files.states) {
        const QString source = sourceOf(name);
        Placement placement(pftStates, name);
        for (QSyntaxTextEditor* states : stateFiles)
            if (!source.isEmpty() && sameFile(states->filePath(), source)) placement.states = states;
        // State files made in the editor and never saved stand for the names that have no file, in order.
        if (!placement.states && source.isEmpty() && !isCommonStates(name) && !unnamedStates.isEmpty())
            placement.states = unnamedStates.takeFirst();
        if (placement.states) *named << placement.states;
        place(placement, source, placement.states, isCommonStates(name));
    }
    return result;
}

bool QProject::writePlaced(const Placement& placement, bool copy, quint32 spritesVersion)
{
    if (!QDir().mkpath(QFileInfo(placement.target).absolutePath())) return false;
    if (!placement.source.isEmpty()) return copyBytes(placement.source, placement.target);
    switch (placement.kind) {
    case pftSprites:
        if (placement.palette) {
            const int palette = spr->findPalette(0, 1, placement.palette);
            return palette >= 0 && spr->paletteAt(uint(palette))->toFile(placement.target);
        }
        return spr->toFile(placement.target, spritesVersion, copy);
    case pftAnimations:
        return airText->toFile(placement.target, copy);
    case pftSounds:
        return snd->toFile(placement.target, copy);
    case pftCommands:
        return cmds->toFile(placement.target, copy);
    case pftStates:
        return placement.states->toFile(placement.target, copy);
    case pftDefinitions:
        break;
    }
    return false;
}

bool QProject::toFile(const QString& path, bool copy)
{
    written.clear();
    saveProblem.clear();
    auto fail = [&](const QStringList& problems) {
        saveProblem = tr("%1 can't be saved as it stands: these files that it names can't be written.\n%2")
                          .arg(QFileInfo(path).fileName(), problems.join(QLatin1Char('\n')));
        QUserDialogs::warning(tr("Save project as"), saveProblem);
        return false;
    };
    const QString folder = QFileInfo(path).absolutePath();
    QStringList unwritable;
    QStringList lacking;
    QList<const QSyntaxTextEditor*> named;
    const QList<Placement> placements = placeFiles(folder, &unwritable, &lacking, &named);
    if (!unwritable.isEmpty()) return fail(unwritable);

    quint32 version = spr->version();
    const bool writesSprites =
        std::any_of(placements.cbegin(), placements.cend(), [](const Placement& placement) {
            return placement.kind == pftSprites && !placement.palette && placement.source.isEmpty();
        });
    if (writesSprites) {
        version = emit spritesVersionToSave(spr->version());
        if (version == 0 || !spr->canSave(version)) return false;
    }

    Step step{this, uint(placements.size()) + 2};
    if (!step.next()) return false;
    if (!QDir().mkpath(folder)) return fail({folder});
    for (const Placement& placement : placements) {
        if (!writePlaced(placement, copy, version)) return fail({placement.name});
        written << placement.target;
        if (!step.next()) return false;
    }
    // The definitions come last: until they are written, no folder names files that are not there.
    if (!defs->toFile(path, copy)) return fail({QFileInfo(path).fileName()});
    written.prepend(path);

    // Files with content that the definitions don't name go where the user says.
    const QDefinitionFiles files = defs->files();
    if (files.sprite.isEmpty()) saveFile(pftSprites, copy, 0);
    if (type() == Character) {
        if (files.animation.isEmpty()) saveFile(pftAnimations, copy, 0);
        if (files.commands.isEmpty()) saveFile(pftCommands, copy, 0);
        for (int i = 0; i < stateFiles.size(); ++i)
            if (!named.contains(stateFiles.at(i))) saveFile(pftStates, copy, i);
        if (files.sound.isEmpty()) saveFile(pftSounds, copy, 0);
    }
    step.next();
    if (!lacking.isEmpty())
        QUserDialogs::warning(
            tr("Save project as"),
            tr("%1 names files that the project doesn't have, so the copy lacks them too:\n%2")
                .arg(QFileInfo(path).fileName(), lacking.join(QLatin1Char('\n'))));
    return true;
}

// ---- Backups and test copies

QString QProject::backupFolder(const QString& base)
{
    return base + QStringLiteral("/backup/") +
           QDateTime::currentDateTime().toString(QStringLiteral("dd-MM-yyyy h-m-s ap")) + QLatin1Char('/');
}

QString QProject::inside(const QString& folder, const QString& fileName)
{
    QStringList parts = QProjectPaths::normalized(fileName).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    parts.removeAll(QStringLiteral(".."));
    parts.removeAll(QStringLiteral("."));
    const QString path = QDir(folder).filePath(parts.join(QLatin1Char('/')));
    QDir().mkpath(QFileInfo(path).absolutePath());
    return path;
}

void QProject::backupCopy(const QString& source, const QString& fileName) const
{
    if (!backupTarget.isEmpty()) QFile::copy(source, inside(backupTarget, fileName));
}

QSyntaxTextEditor* QProject::loadedStates(const QString& stateName) const
{
    const QString tail = QLatin1Char('/') + QFileInfo(stateName).fileName();
    for (QSyntaxTextEditor* states : stateFiles)
        if (states->filePath().endsWith(tail, Qt::CaseInsensitive)) return states;
    return nullptr;
}

bool QProject::backup()
{
    const QDefinitionFiles files = defs->files();
    if (files.baseDirectory.isEmpty() || !QDir(files.baseDirectory).exists()) return false;
    const QString folder = backupFolder(files.baseDirectory);
    if (!QDir().mkpath(folder)) return false;
    defs->toFile(folder + QFileInfo(defs->filePath()).fileName(), true);

    Step step{this, uint(files.states.size()) + 16};
    if (!step.next()) return false;
    for (int i = 0; i < 12; ++i) {
        if (files.palettes.at(i).isEmpty()) continue;
        const int palette = spr->findPalette(0, 1, i + 1);
        if (palette >= 0) spr->paletteAt(uint(palette))->toFile(inside(folder, files.palettes.at(i)));
        if (!step.next()) return false;
    }
    if (!files.sprite.isEmpty() && !spr->isEmpty()) spr->toFile(inside(folder, files.sprite), 0, true);
    if (!step.next()) return false;
    if (type() != Character) return true;
    if (!files.animation.isEmpty() && !anims->isEmpty())
        airText->toFile(inside(folder, files.animation), true);
    if (!files.sound.isEmpty() && !snd->isEmpty()) snd->toFile(inside(folder, files.sound), true);
    if (!files.commands.isEmpty() && !cmds->isEmpty()) cmds->toFile(inside(folder, files.commands), true);
    if (!step.next()) return false;
    for (const QString& stateName : files.states) {
        if (QSyntaxTextEditor* states = loadedStates(stateName))
            states->toFile(inside(folder, stateName), true);
        if (!step.next()) return false;
    }
    return true;
}

bool QProject::saveTestCopy(const QString& folder, const QString& testName, QStringList* written)
{
    QDefinitionFiles files = defs->files();
    const QString base = files.baseDirectory;
    const QString originalSprite = files.sprite;
    const QString defPath = folder + QLatin1Char('/') + testName + QStringLiteral(".def");
    QDir().mkpath(folder);
    if (!defs->toFile(defPath, true)) return false;
    if (type() == Stage) {
        // The engine finds a stage's sprites through its own folder, so the copy names its own file.
        QByteArray bytes;
        if (!QTextFileLines::readFile(defPath, &bytes)) return false;
        bool bom = false;
        QString text = QTextEncoding::decode(bytes, defs->codec(), nullptr, &bom);
        const QRegExp sprEntry(QStringLiteral("spr\\s*=\\s*[^\\r\\n]*"), Qt::CaseInsensitive);
        text = sprEntry.replaceIn(text, QStringLiteral("spr = ") + testName + QStringLiteral(".sff"));
        if (!QTextFileLines::writeFile(defPath, QTextEncoding::encode(text, defs->codec(), bom)))
            return false;
        files.sprite = testName + QStringLiteral(".sff");
    }
    const QString spritePath = inside(folder, files.sprite);
    if (written) *written << defPath << spritePath;

    // A model with content writes itself; otherwise the file as it is on disk goes along.
    auto copySource = [&](const QString& fileName) {
        const QString source = QProjectPaths::find(base, fileName);
        if (!source.isEmpty()) QFile::copy(source, inside(folder, fileName));
    };

    Step step{this, uint(files.states.size()) + 16};
    if (!step.next()) return false;
    if (spr->count() > 0) {
        spr->toFile(spritePath, 0, true);
    } else if (!originalSprite.isEmpty()) {
        // Sprites that did not load go along as they are, under the name the written definitions use.
        const QString source = findNamed(base, originalSprite, type() == Stage);
        if (!source.isEmpty()) {
            QFile::remove(spritePath);
            QFile::copy(source, spritePath);
        }
    }
    if (!step.next() || type() != Character) return step.allow;

    for (int i = 0; i < 12; ++i) {
        const QString& palName = files.palettes.at(i);
        if (palName.isEmpty()) continue;
        const int palette = spr->findPalette(0, 1, i + 1);
        if (palette >= 0)
            spr->paletteAt(uint(palette))->toFile(inside(folder, palName));
        else
            copySource(palName);
    }
    if (!files.animation.isEmpty()) {
        if (!anims->isEmpty())
            airText->toFile(inside(folder, files.animation), true);
        else
            copySource(files.animation);
    }
    if (!files.sound.isEmpty()) {
        if (!snd->isEmpty())
            snd->toFile(inside(folder, files.sound), true);
        else
            copySource(files.sound);
    }
    if (!files.commands.isEmpty()) {
        if (!cmds->isEmpty())
            cmds->toFile(inside(folder, files.commands), true);
        else
            copySource(files.commands);
    }
    if (!step.next()) return false;
    for (const QString& stateName : files.states) {
        if (QSyntaxTextEditor* states = loadedStates(stateName))
            states->toFile(inside(folder, stateName), true);
        else
            copySource(stateName);
        if (!step.next()) return false;
    }
    return true;
}

// ---- Closing, state files, issues

bool QProject::canClose()
{
    bool discard = true;
    for (QSyntaxTextEditor* states : std::as_const(stateFiles))
        discard = states->canDiscard() && discard;
    if (!discard || !defs->canDiscard() || !spr->canDiscard()) return false;
    if (anims->editor() == airText && !anims->canDiscard()) return false;
    return cmds->canDiscard() && snd->canDiscard();
}

bool QProject::isEmpty()
{
    return defs->isEmpty() && spr->isEmpty() && anims->isEmpty() && cmds->isEmpty() && stateFiles.isEmpty() &&
           snd->isEmpty();
}

void QProject::check()
{
    defs->updateHierarchy();
    spr->check();
    snd->check();
    airText->updateHierarchy();
    anims->check();
    cmds->updateHierarchy();
    for (QSyntaxTextEditor* states : std::as_const(stateFiles))
        states->updateHierarchy();
}

QSyntaxTextEditor* QProject::addStatesFile(const QString& fileName)
{
    QSyntaxTextEditor* states = makeStatesFile(int(stateFiles.size()));
    if (!fileName.isEmpty() && QFileInfo(fileName).isFile())
        states->fromFile(fileName, numberSetting("default_codepage", 0), false);
    stateFiles.append(states);
    refreshMessages();
    return states;
}

void QProject::moveStatesFile(int from, int to)
{
    if (from < 0 || from >= stateFiles.size() || to < 0 || to >= stateFiles.size() || from == to) return;
    stateFiles.move(from, to);
    renumberStates();
}

void QProject::removeStatesFile(int index)
{
    if (index < 0 || index >= stateFiles.size()) return;
    delete stateFiles.takeAt(index);
    renumberStates();
}

void QProject::renumberStates()
{
    for (int i = 0; i < stateFiles.size(); ++i)
        stateFiles.at(i)->setFileIndex(i);
    refreshMessages();
}

// The issues of a state file carry its position, so they are taken again after the list changed.
void QProject::refreshMessages()
{
    for (QSyntaxTextEditor* states : std::as_const(stateFiles))
        states->check();
    issues.refresh();
}

void QProject::attachAnimations()
{
    // A character keeps its animations in its own AIR file; the other kinds hold their "[Begin Action]"
    // sections in the definitions themselves, and a font has none.
    switch (defs->type()) {
    case Font:
        anims->setEditor(nullptr);
        break;
    case Character:
        anims->setEditor(airText);
        break;
    default:
        anims->setEditor(defs);
        break;
    }
}

void QProject::passVersion()
{
    const quint32 version = defs->version();
    defs->setMugenVersion(version);
    airText->setMugenVersion(version);
    cmds->setMugenVersion(version);
    for (QSyntaxTextEditor* states : std::as_const(stateFiles))
        states->setMugenVersion(version);
    emit versionChanged(this);
}
