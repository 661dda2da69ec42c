#include "QSoundsEditor.h"

#include "QBlockCounter.h"
#include "QSound.h"
#include "QSoundWorkspace.h"
#include "QSounds.h"
#include "QSoundsPanel.h"
#include "QUserDialogs.h"

#include <QApplication>
#include <QFileInfo>
#include <QRegularExpression>

namespace {
using Block = QBlockCounter;
} // namespace

QSoundsEditor::QSoundsEditor(QSoundWorkspace* workspace, QObject* parent)
    : QObject(parent), workspaceOf(workspace), panelWidget(new QSoundsPanel(this))
{
    connect(workspaceOf, &QSoundWorkspace::rowPicked, this, &QSoundsEditor::definePos);
    connect(workspaceOf, &QSoundWorkspace::rowActivated, this, [this](int row) {
        definePos(row);
        startPlaying(false);
    });
    connect(workspaceOf, &QSoundWorkspace::filesDropped, this, &QSoundsEditor::addWavFiles);
    connect(workspaceOf, &QSoundWorkspace::doFind, this,
            [this](const QString& text, const QQuickFindOptions& options) { find(text, options); });
    connect(workspaceOf, &QSoundWorkspace::doReplace, this,
            [this](const QString& source, const QString& dest, const QQuickFindOptions& options, bool all) {
                replace(source, dest, options, all);
            });
}

QSoundsEditor::~QSoundsEditor()
{
    active = false;
    bind(nullptr, nullptr);
    delete panelWidget;
}

QWidget* QSoundsEditor::dialogParent()
{
    return QApplication::activeWindow();
}

QWidget* QSoundsEditor::panel() const
{
    return panelWidget;
}

int QSoundsEditor::workspace() const
{
    return QSoundWorkspace::Number;
}

bool QSoundsEditor::isModified() const
{
    return model && model->isModified();
}

int QSoundsEditor::position() const
{
    if (!model || model->count() == 0) return -1;
    if (current.isValid() && current.model() == model) return current.row();
    // The current sound went away: the one that took its row, or the last.
    return lastRow < 0 ? -1 : qMin(lastRow, int(model->count()) - 1);
}

QSound* QSoundsEditor::currentSound() const
{
    const int row = position();
    return row >= 0 ? model->at(uint(row)) : nullptr;
}

QString QSoundsEditor::infoText(const QSound* sound)
{
    if (!sound) return tr("Channels: ---\nSample rate: ---\nBits per sample: ---\nDuration: ---");
    const QSoundInfo& info = sound->info;
    // Sounds without facts (empty, or not PCM) have no channels to name.
    const QString layout = info.channels == 0   ? QStringLiteral("---")
                           : info.channels == 1 ? tr("Mono")
                                                : tr("Stereo");
    return tr("Channels: %1 (%2)\nSample rate: %3 Hz\nBits per sample: %4 bits\nDuration: %5 seconds")
        .arg(info.channels)
        .arg(layout)
        .arg(info.sampleRate)
        .arg(info.bitsPerSample)
        .arg(double(info.duration), 0, 'f', 3);
}

void QSoundsEditor::bind(QSounds* sounds, QMap<QString, QString>* projectVariables)
{
    if (model) {
        // A sound of a project that is no longer shown would go on with nobody to stop it.
        if (model->isPlaying()) model->stop();
        disconnect(model, nullptr, this, nullptr);
        disconnect(model->undoStack(), nullptr, this, nullptr);
    }
    forceStop();
    model = sounds;
    variables = projectVariables;
    current = QPersistentModelIndex();
    lastRow = -1;
    workspaceOf->setSounds(model);
    if (model) {
        connect(model, &QSounds::changed, this, &QSoundsEditor::updateSel);
        connect(model, &QSounds::changed, this, &QSoundsEditor::titleChanged);
        connect(model, &QAbstractItemModel::modelReset, this, &QSoundsEditor::updateSel);
        connect(model, &QSounds::stopped, this, &QSoundsEditor::forceStop);
        connect(model->undoStack(), &QUndoStack::cleanChanged, this, &QSoundsEditor::titleChanged);
        if (model->count() > 0) lastRow = 0;
    }
    emit enabled(model != nullptr);
    updateSel();
}

void QSoundsEditor::activate()
{
    active = true;
    updateSel();
}

void QSoundsEditor::deactivate()
{
    active = false;
    emit flushFields();
    // Leaving the sounds is leaving their player: a loop must not play on under another editor.
    if (model && model->isPlaying()) {
        model->stop();
        forceStop();
    }
}

void QSoundsEditor::navigate(int, int index, int)
{
    definePos(index);
}

void QSoundsEditor::updateSel()
{
    if (!model) {
        Block guard(block);
        emit setMaximum(0);
        emit enabled(false);
        showSound(-1);
        return;
    }
    const int count = int(model->count());
    int row = position();
    if (row < 0 && count > 0) row = 0;
    {
        Block guard(block);
        emit setMaximum(count);
    }
    showSound(row);
}

void QSoundsEditor::definePos(int position)
{
    if (block > 0 || !model || position < 0 || position >= int(model->count())) return;
    emit flushFields();
    showSound(position);
}

void QSoundsEditor::selPosChanged(int position)
{
    definePos(position);
}

void QSoundsEditor::showSound(int position)
{
    const QSound* sound = model && position >= 0 ? model->at(uint(position)) : nullptr;
    current = sound ? QPersistentModelIndex(model->index(position, 0)) : QPersistentModelIndex();
    lastRow = sound ? position : -1;
    Block guard(block);
    if (sound) {
        emit setSelPos(position);
        emit setPosText(QStringLiteral("%1 / %2").arg(position + 1).arg(model->count()));
        emit setGroup(int(sound->group));
        emit setNumber(int(sound->sample));
    } else {
        emit setSelPos(0);
        emit setPosText(QStringLiteral("0 / 0"));
        emit setGroup(0);
        emit setNumber(0);
    }
    emit setInfoText(infoText(sound));
    workspaceOf->selectRow(sound ? position : -1);
}

void QSoundsEditor::orgChanged(bool)
{
    updateSel();
}

void QSoundsEditor::orgObject(bool)
{
    updateSel();
}

void QSoundsEditor::prevSnd()
{
    const int row = position();
    if (row > 0) definePos(row - 1);
}

void QSoundsEditor::nextSnd()
{
    const int row = position();
    if (row >= 0) definePos(row + 1);
}

void QSoundsEditor::prevGrp()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    // The group run before the current sound's, entered at its first sound.
    int at = position();
    while (at >= 0 && model->at(uint(at))->group == sound->group)
        --at;
    if (at < 0) return;
    const uint group = model->at(uint(at))->group;
    while (at > 0 && model->at(uint(at - 1))->group == group)
        --at;
    definePos(at);
}

void QSoundsEditor::nextGrp()
{
    const QSound* sound = currentSound();
    if (!sound) return;
    int at = position();
    while (at < int(model->count()) && model->at(uint(at))->group == sound->group)
        ++at;
    if (at < int(model->count())) definePos(at);
}

void QSoundsEditor::grpChanged(int value)
{
    const QSound* sound = currentSound();
    if (block > 0 || !sound || value < 0 || sound->group == uint(value)) return;
    model->setInfo(uint(position()), uint(value), sound->sample);
}

void QSoundsEditor::numChanged(int value)
{
    const QSound* sound = currentSound();
    if (block > 0 || !sound || value < 0 || sound->sample == uint(value)) return;
    model->setInfo(uint(position()), sound->group, uint(value));
}

// ---- Playing

void QSoundsEditor::startPlaying(bool loop)
{
    const QSound* sound = currentSound();
    if (!sound) {
        forceStop();
        return;
    }
    // The model tells the user itself when no player can be made or the bytes can't be played.
    model->play(uint(position()), loop);
    if (!model->isPlaying()) {
        forceStop();
        return;
    }
    Block guard(block);
    emit setPlaying(!loop);
    emit setLooping(loop);
    emit setStopped(false);
}

void QSoundsEditor::play(bool on)
{
    if (block > 0) return;
    if (on) {
        startPlaying(false);
    } else {
        if (model) model->stop();
        forceStop();
    }
}

void QSoundsEditor::playLoop(bool on)
{
    if (block > 0) return;
    if (on) {
        startPlaying(true);
    } else {
        if (model) model->stop();
        forceStop();
    }
}

void QSoundsEditor::stop(bool)
{
    if (block > 0) return;
    if (model) model->stop();
    forceStop();
}

void QSoundsEditor::forceStop()
{
    Block guard(block);
    emit setPlaying(false);
    emit setLooping(false);
    emit setStopped(false);
}

// ---- Finding

bool QSoundsEditor::matches(const QString& text, const QQuickFindOptions& options, uint group, uint sample)
{
    const QString subject = QStringLiteral("%1,%2").arg(group).arg(sample);
    const auto caseOption = options.value(QQuickFindOption::CaseSensitive)
                                ? QRegularExpression::NoPatternOption
                                : QRegularExpression::CaseInsensitiveOption;
    if (options.value(QQuickFindOption::RegularExpression)) {
        const QRegularExpression pattern(text, caseOption);
        return pattern.isValid() && pattern.match(subject).hasMatch();
    }
    // Plain text names one sound as "group,sample"; "*" and "?" stand for any digits, so "5,*" is the
    // whole group 5.
    QString plain = text;
    plain.remove(QLatin1Char(' '));
    QString expression = QRegularExpression::escape(plain);
    expression.replace(QLatin1String("\\*"), QLatin1String(".*"))
        .replace(QLatin1String("\\?"), QLatin1String("."));
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(expression), caseOption);
    return pattern.isValid() && pattern.match(subject).hasMatch();
}

int QSoundsEditor::matchFrom(const QString& text, const QQuickFindOptions& options, int start, bool backward,
                             bool wrap) const
{
    const int count = int(model->count());
    const int step = backward ? -1 : 1;
    // The sounds past the start first, then, going round, those before it and the start itself.
    const int tries = wrap ? count : (backward ? start : count - start - 1);
    for (int k = 1; k <= tries; ++k) {
        const int at = ((start + step * k) % count + count) % count;
        const QSound* sound = model->at(uint(at));
        if (matches(text, options, sound->group, sound->sample)) return at;
    }
    return -1;
}

bool QSoundsEditor::find(const QString& text, const QQuickFindOptions& options)
{
    if (!model || text.trimmed().isEmpty()) return false;
    const int found = model->count() == 0
                          ? -1
                          : matchFrom(text, options, position(), options.value(QQuickFindOption::Backward),
                                      options.value(QQuickFindOption::Circular));
    if (found < 0) {
        QUserDialogs::information(tr("Find"), tr("No sound found!"));
        return false;
    }
    definePos(found);
    return true;
}

int QSoundsEditor::replace(const QString& source, const QString& dest, const QQuickFindOptions& options,
                           bool all)
{
    if (!model || source.trimmed().isEmpty()) return 0;
    static const QRegularExpression pair(QStringLiteral("^(\\d{1,10})?(?:\\s*,\\s*(\\d{1,10}))?$"));
    const QRegularExpressionMatch parts = pair.match(dest.trimmed());
    if (!parts.hasMatch() || dest.trimmed().isEmpty()) {
        QUserDialogs::warning(tr("Replace"), tr("Replace a sound's numbers by \"group,sample\"."));
        return 0;
    }
    const auto renumber = [&](uint row) {
        const QSound* sound = model->at(row);
        const uint group = parts.captured(1).isEmpty() ? sound->group : parts.captured(1).toUInt();
        const uint sample = parts.captured(2).isEmpty() ? sound->sample : parts.captured(2).toUInt();
        if (group == sound->group && sample == sound->sample) return false;
        model->setInfo(row, group, sample);
        return true;
    };
    emit flushFields();
    int changed = 0;
    if (all) {
        QList<uint> rows;
        for (uint i = 0; i < model->count(); ++i)
            if (matches(source, options, model->at(i)->group, model->at(i)->sample)) rows << i;
        if (!rows.isEmpty()) {
            model->beginEdit();
            for (const uint row : std::as_const(rows))
                changed += renumber(row) ? 1 : 0;
            model->endEdit();
        }
    } else {
        // The current sound when it matches, as after a find; else the next one that does.
        const QSound* sound = currentSound();
        const int row =
            sound && matches(source, options, sound->group, sound->sample)
                ? position()
                : (model->count() == 0 ? -1
                                       : matchFrom(source, options, position(),
                                                   options.value(QQuickFindOption::Backward), true));
        if (row >= 0) {
            definePos(row);
            changed = renumber(uint(row)) ? 1 : 0;
        }
        if (row < 0) {
            QUserDialogs::information(tr("Replace"), tr("No sound found!"));
            return 0;
        }
    }
    if (all && changed == 0) QUserDialogs::information(tr("Replace"), tr("No sound found!"));
    updateSel();
    return changed;
}

// ---- Project variables

QString QSoundsEditor::startFolder(const char* key) const
{
    if (!variables) return QString();
    const QString own = variables->value(QLatin1String(key));
    return own.isEmpty() ? variables->value(QStringLiteral("proj_path")) : own;
}

void QSoundsEditor::rememberFolder(const char* key, const QString& file)
{
    if (variables && !file.isEmpty()) (*variables)[QLatin1String(key)] = QFileInfo(file).absolutePath();
}
