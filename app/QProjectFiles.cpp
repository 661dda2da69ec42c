#include "QProjectFiles.h"

#include "BakDlg.h"
#include "OrderDlg.h"
#include "QAnimations.h"
#include "QBakManager.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QMessageList.h"
#include "QMugenModel.h"
#include "QProgress.h"
#include "QProject.h"
#include "QRGBPalette.h"
#include "QSFFFormat.h"
#include "QSounds.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSyntaxTextEditor.h"
#include "QTrace.h"
#include "QUserDialogs.h"
#include "ShareDlg.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>

#include <functional>

QProjectFiles::QProjectFiles(QWidget* dialogParent, QObject* parent)
    : QObject(parent), dialogParent(dialogParent)
{}

QProjectFiles::~QProjectFiles()
{
    qDeleteAll(projects);
}

int QProjectFiles::currentIndex() const
{
    return int(projects.indexOf(current));
}

void QProjectFiles::setCurrentIndex(int index)
{
    QProject* chosen = projects.value(index);
    if (!chosen || chosen == current) return;
    current = chosen;
    emit currentProjectChanged(current);
}

void QProjectFiles::release()
{
    current = nullptr;
    emit currentProjectChanged(nullptr);
}

int QProjectFiles::projectCount() const
{
    return int(projects.size());
}

bool QProjectFiles::onlyEmptyProjectLeft() const
{
    return projects.size() <= 1 && (projects.isEmpty() || projects.first()->isEmpty());
}

void QProjectFiles::newProject(bool fromTemplate)
{
    // Templates come from the scripts, which this program does not run yet: every new project is empty.
    Q_UNUSED(fromTemplate);
    auto* project = new QProject;
    connectProject(project);
    project->setDisplayName(tr("Project %1").arg(++newProjects));
    addProject(project);
    QTrace::write(QStringLiteral("project"), QStringLiteral("new"));
}

void QProjectFiles::connectProject(QProject* project)
{
    connect(project, &QProject::saveFileName, this, &QProjectFiles::saveFileName);
    connect(project, &QProject::spritesVersionToSave, this, &QProjectFiles::spritesVersionToSave);
    connect(project, &QProject::nameChanged, this, &QProjectFiles::changeName);
    connect(project, &QProject::charPalette, this, &QProjectFiles::charPalette);
    // Answered at once: the save that asks goes on with the order the user agreed to.
    connect(project->sprites(), &QSprites::orderMustBeChanged, this,
            [this, project](const QList<uint>& rows) {
                OrderDlg::answer(project->sprites(), rows, dialogParent);
            });
    // The list comes by reference: what the user leaves in it takes the new image.
    connect(project->sprites(), &QSprites::dataSharing, this,
            [this, project](QList<uint>& rows) { ShareDlg::answer(project->sprites(), rows, dialogParent); });
    connect(project, &QProject::typeChanged, this, [this](QProject* changed) {
        if (changed == current) emit currentStatusChanged();
    });
    connect(project, &QProject::versionChanged, this, [this](QProject* changed) {
        if (changed == current) emit currentStatusChanged();
    });
    connect(project->messageList(), &QMessageList::updated, this, [this, project]() {
        if (project == current) emit currentIssuesChanged();
    });
}

void QProjectFiles::addProject(QProject* project)
{
    projects.append(project);
    current = project;
    emit projectAdded(int(projects.size()) - 1, project->displayName());
    emit currentProjectChanged(current);
}

void QProjectFiles::newProject()
{
    newProject(false);
}

void QProjectFiles::openProject(const QString& fileName)
{
    QTrace::write(QStringLiteral("open"), QStringLiteral("def ") + fileName);
    auto* project = new QProject;
    connectProject(project);
    const QFileInfo info(fileName);
    project->variables[QStringLiteral("proj_path")] = info.absolutePath();
    bool opened = false;
    if (info.suffix().compare(QLatin1String("fnt"), Qt::CaseInsensitive) == 0) {
        opened = project->fromFontFile(fileName);
    } else {
        QProgress progress(dialogParent, tr("Loading project..."));
        connect(project, &QProject::progress, &progress, &QProgress::onProgress);
        QMugenModel& config = *mugenModel;
        opened = project->fromFile(fileName, config[QStringLiteral("default_codepage")].toUInt(),
                                   config[QStringLiteral("backup_onload")].toBool(), false);
    }
    if (!opened) {
        delete project;
        QTrace::write(QStringLiteral("project"), QStringLiteral("failed ") + fileName);
        return;
    }
    addProject(project);
    QTrace::write(QStringLiteral("project"), QStringLiteral("opened ") + project->displayName());
    // A font is converted on opening; its file is no project to come back to.
    if (info.suffix().compare(QLatin1String("fnt"), Qt::CaseInsensitive) != 0)
        emit projectFileUsed(info.absoluteFilePath(), project->displayName());
    // The empty project of a fresh window gives way to the first real one.
    if (projects.size() == 2 && projects.first()->isEmpty()) closeProject(0);
}

bool QProjectFiles::closeProject(int index)
{
    QProject* project = projects.value(index);
    if (!project || !project->canClose()) return false;
    if (projects.size() == 1) newProject(false);
    const int shown = currentIndex();
    projects.removeAt(index);
    // As a tab bar does: the project right of a closed current one takes its place, else the last.
    if (project == current) current = projects.value(qMin(shown, int(projects.size()) - 1));
    emit projectRemoved(index);
    emit currentProjectChanged(current);
    delete project;
    return true;
}

void QProjectFiles::move(int from, int to)
{
    if (from >= 0 && from < projects.size() && to >= 0 && to < projects.size()) projects.move(from, to);
}

void QProjectFiles::changeName(QProject* project, const QString& name)
{
    const int index = int(projects.indexOf(project));
    if (index >= 0) emit projectNameChanged(index, name);
}

QString QProjectFiles::saveFileName(QProjectFileType file, const QString& path)
{
    static const char* const titles[] = {QT_TR_NOOP("Save project"),    QT_TR_NOOP("Save sprites"),
                                         QT_TR_NOOP("Save animations"), QT_TR_NOOP("Save commands"),
                                         QT_TR_NOOP("Save states"),     QT_TR_NOOP("Save sounds")};
    static const char* const filters[] = {
        "Definitions (*.def)",
        "Sprites (*.sff)",
        "Animations (*.air)",
        "Commands (*.cmd)",
        "Constants (*.cns);;States (*.st);;Text (*.txt);;Lua script (*.lua)",
        "Sounds (*.snd)"};
    const int kind = qBound(0, int(file), 5);
    return QUserDialogs::getSaveFileName(tr(titles[kind]), path, QLatin1String(filters[kind]));
}

quint32 QProjectFiles::spritesVersionToSave(quint32 currentVersion)
{
    QStringList names;
    for (quint32 version : {QSprites::Version_101, QSprites::Version_200, QSprites::Version_201})
        names << QSFF::versionText(version);
    const int currentIndex = qMax(0, int(names.indexOf(QSFF::versionText(currentVersion))));
    return QSFF::parseVersion(QUserDialogs::getItem(
        tr("Sprite file version"), tr("Save the sprites in the version:"), names, currentIndex));
}

void QProjectFiles::charPalette(QRGBPal* palette)
{
    QUserDialogs::warning(tr("Palette warning!"),
                          tr("Tavrel not found the character palette. To view all sprites properly you must "
                             "select an external palette file."));
    // The project asking may still be loading, before it is the current one.
    const auto* asking = qobject_cast<const QProject*>(sender());
    const QString start = asking ? asking->variables.value(QStringLiteral("proj_path")) : QString();
    const QString path =
        QUserDialogs::getOpenFileName(tr("Character palette"), start, QRGBPalette::openFilter());
    if (path.isEmpty()) return;
    QRGBPalette reader(palette);
    reader.fromFile(path);
}

void QProjectFiles::fileSave()
{
    if (!current) return;
    QProgress progress(dialogParent, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    current->save();
    askToSavePalettes();
}

void QProjectFiles::fileSaveAs()
{
    if (!current) return;
    const QString path = saveFileName(pftDefinitions, current->variables.value(QStringLiteral("proj_path")));
    if (path.isEmpty()) return;
    current->variables[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    QProgress progress(dialogParent, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    if (current->toFile(path, false)) emit projectFileUsed(path, current->displayName());
    askToSavePalettes();
}

void QProjectFiles::askToSavePalettes()
{
    if (current->type() != Character || current->sprites()->version() != QSprites::Version_101 ||
        !mugenModel || !(*mugenModel)[QStringLiteral("ask_save_palettes")].toBool())
        return;
    if (QUserDialogs::question(tr("Save palettes"),
                               tr("Do you want to save the palettes of the group 1 based on the definitions "
                                  "(palette 1,x = palx in DEF)?\nChoose No to ignore palettes."),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) != QUserDialogs::Yes)
        return;
    const QDefinitionFiles files = current->definitions()->files();
    for (int i = 0; i < 12; ++i) {
        if (files.palettes.at(i).isEmpty()) continue;
        const QString path = QDir(files.baseDirectory).filePath(files.palettes.at(i));
        QDir().mkpath(QFileInfo(path).absolutePath());
        const int palette = current->sprites()->findPalette(0, 1, i + 1);
        if (palette >= 0) current->sprites()->paletteAt(uint(palette))->toFile(path);
    }
}

void QProjectFiles::fileBackup()
{
    if (!current) return;
    QProgress progress(dialogParent, tr("Loading project..."));
    connect(current, &QProject::progress, &progress, &QProgress::onProgress);
    current->backup();
}

void QProjectFiles::fileLoadBackup()
{
    if (!current) return;
    const QBakManager backups(current->definitions()->filePath());
    if (backups.entries().isEmpty()) {
        QUserDialogs::information(tr("Load backup"), tr("This project has no backups yet."));
        return;
    }
    BakDlg chooser(backups.titles(), dialogParent);
    if (chooser.exec() != QDialog::Accepted || chooser.chosen() < 0) return;
    const QString path = backups.entries().at(chooser.chosen()).definitions;
    QTrace::write(QStringLiteral("backup"), QStringLiteral("load ") + path);
    bool loaded = false;
    {
        QProgress progress(dialogParent, tr("Loading backup..."));
        connect(current, &QProject::progress, &progress, &QProgress::onProgress);
        loaded = current->fromFile(path, numberSetting("default_codepage", 0), false, true);
    }
    if (!loaded)
        QUserDialogs::warning(tr("Load backup"),
                              tr("The backup %1 can't be loaded.").arg(QDir::toNativeSeparators(path)));
    // The editors show the models again, which the load has filled anew.
    emit currentProjectChanged(current);
}

void QProjectFiles::fileClose()
{
    closeProject(currentIndex());
}

void QProjectFiles::openLooseFile(QProjectFileType kind, const QString& path)
{
    static const char* const names[] = {"def", "sff", "air", "cmd", "cns", "snd"};
    QTrace::write(QStringLiteral("open"), QLatin1String(names[kind]) + QLatin1Char(' ') + path);
    const uint codepage = (*mugenModel)[QStringLiteral("default_codepage")].toUInt();
    // For each kind: whether a project already holds such a file, and how it reads one.
    struct Kind
    {
        std::function<bool(QProject*)> occupied;
        std::function<bool(QProject*)> load;
    };
    const QMap<QProjectFileType, Kind> kinds = {
        {pftSprites,
         {[](QProject* p) { return !p->sprites()->isEmpty() || p->sprites()->isModified(); },
          // Read as a copy: the sprite file's own path is not kept, so a save asks where to write.
          [&](QProject* p) { return p->sprites()->fromFile(path, true); }}},
        {pftAnimations,
         {[](QProject* p) { return !p->animations()->isEmpty(); },
          [&](QProject* p) { return p->animations()->fromFile(path, int(codepage)); }}},
        {pftCommands,
         {[](QProject* p) { return !p->commands()->isEmpty(); },
          [&](QProject* p) { return p->commands()->fromFile(path, codepage); }}},
        {pftStates,
         {[](QProject* p) { return p->statesCount() > 0; },
          [&](QProject* p) {
              QSyntaxTextEditor* states = p->addStatesFile(QString());
              states->setObjectName(path);
              if (states->fromFile(path, codepage)) return true;
              p->removeStatesFile(p->statesCount() - 1);
              return false;
          }}},
        {pftSounds,
         {[](QProject* p) { return !p->sounds()->isEmpty(); },
          [&](QProject* p) { return p->sounds()->fromFile(path); }}},
    };
    if (!kinds.contains(kind)) return;
    // A file goes into the current project when that project has no such file yet; else it gets a
    // project of its own, so that nothing the user has open is replaced.
    const bool fresh = kinds[kind].occupied(current);
    if (fresh) newProject(false);
    QProject* project = current;
    const bool loaded = kinds[kind].load(project);
    QTrace::write(QStringLiteral("loaded"),
                  QLatin1String(names[kind]) +
                      (loaded ? QStringLiteral(" ok ") : QStringLiteral(" failed ")) + path);
    if (loaded) return;
    QUserDialogs::warning(tr("Open"), tr("The file %1 can't be opened.").arg(QDir::toNativeSeparators(path)));
    if (fresh && project->isEmpty()) closeProject(projects.indexOf(project));
}

void QProjectFiles::openHandedFile(const QString& path)
{
    const QFileInfo info(path);
    const QString suffix = info.suffix().toLower();
    if (suffix == QLatin1String("def"))
        openProject(info.absoluteFilePath());
    else if (suffix == QLatin1String("sff"))
        openLooseFile(pftSprites, info.absoluteFilePath());
    else if (suffix == QLatin1String("air"))
        openLooseFile(pftAnimations, info.absoluteFilePath());
    else if (suffix == QLatin1String("cmd"))
        openLooseFile(pftCommands, info.absoluteFilePath());
    else if (suffix == QLatin1String("cns"))
        openLooseFile(pftStates, info.absoluteFilePath());
    else if (suffix == QLatin1String("snd"))
        openLooseFile(pftSounds, info.absoluteFilePath());
}

void QProjectFiles::fileNew()
{
    newProject(false);
}

void QProjectFiles::fileOpen()
{
    const QString path = QUserDialogs::getOpenFileName(tr("Open project"),
                                                       (*mugenModel)[QStringLiteral("proj_path")].toString(),
                                                       tr("Definitions or Font (*.def *.fnt)"));
    if (path.isEmpty()) return;
    (*mugenModel)[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    openProject(path);
}

void QProjectFiles::fileCloseAllCurr()
{
    QProject* keep = current;
    for (int index = int(projects.size()) - 1; index >= 0; --index)
        if (projects.at(index) != keep) closeProject(index);
    setCurrentIndex(int(projects.indexOf(keep)));
}

void QProjectFiles::fileCloseAll()
{
    // From the last tab to the first; a project that may not close stops nothing else.
    for (int index = int(projects.size()) - 1; index >= 0; --index)
        if (projects.size() > 1 || !projects.first()->isEmpty()) closeProject(index);
}
