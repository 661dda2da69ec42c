// Whole actions: adding, deleting, duplicating, their text, finding them, the clipboard, the file
// commands, the import from another project and the GIF export.

#include "AddAnim.h"
#include "AnimEditTxt.h"
#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QAnimationsEditor.h"
#include "QDialogRunner.h"
#include "QElementCursor.h"
#include "QElementTextEditor.h"
#include "QSyntaxTextEditor.h"
#include "QTextWorkspace.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"
#include "animimport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QInputDialog>
#include <QRegularExpression>
#include <QSet>
#include <QTextCursor>
#include <QTextDocument>

#include <QScopedValueRollback>
#include <memory>

namespace {
QSet<int> numbersOf(const QAnimations* model)
{
    QSet<int> numbers;
    for (const QAnimation* action : model->animations)
        numbers.insert(action->number);
    return numbers;
}

// The header of an action's text, written the model's way with a number.
QString renumbered(QString text, int from, int to)
{
    text.replace(QStringLiteral("[begin action %1]").arg(from), QAnimation::headerText(to),
                 Qt::CaseInsensitive);
    return text;
}
} // namespace

void QAnimationsEditor::add()
{
    if (!model) return;
    forceStop();
    emit flushFields();
    AddAnim dialog(dialogParent(), false);
    dialog.setUsedNumbers(numbersOf(model));
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const int at = currentAction() ? model->currentIndex + 1 : model->count();
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        QAnimation* made = model->insert(uint(at), dialog.number());
        if (made && !dialog.name().isEmpty()) made->setName(dialog.name());
        model->endEdit();
    }
    definePos(at, 0);
}

void QAnimationsEditor::del()
{
    if (!currentAction()) return;
    forceStop();
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete action"), tr("Do you really want to delete the animation?")) !=
            QUserDialogs::Yes)
        return;
    emit flushFields();
    const int at = model->currentIndex;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->remove(uint(at));
    }
    definePos(qMin(at, model->count() - 1), 0);
}

void QAnimationsEditor::duplicate()
{
    if (!currentAction()) return;
    forceStop();
    emit flushFields();
    uint number = 0xffffffff;
    if (QUserDialogs::question(tr("Duplicate action"), tr("Do you want to define a new number?")) ==
        QUserDialogs::Yes) {
        AddAnim dialog(dialogParent(), false);
        dialog.setUsedNumbers(numbersOf(model));
        if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
        number = uint(dialog.number());
    }
    const int at = model->currentIndex;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        // The copied box lines are renumbered in the same step, so that one undo takes all back.
        model->beginEdit();
        model->duplicate(uint(at), number);
        model->endEdit();
    }
    definePos(at + 1, 0);
}

void QAnimationsEditor::editText()
{
    QAnimation* action = currentAction();
    if (!action) return;
    forceStop();
    emit flushFields();
    const int at = model->currentIndex;
    AnimEditTxt dialog(dialogParent());
    dialog.setText(model->spanText(uint(at)));
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const uint frame = action->currentFrameIndex;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        action->replaceSpan(dialog.text());
        model->endEdit();
    }
    // The span is read afresh: the action at the place may be a new element.
    if (QAnimation* now = model->at(uint(at))) now->currentFrameIndex = frame;
    definePos(qMin(at, model->count() - 1), int(frame));
}

void QAnimationsEditor::numChanged(int value)
{
    QAnimation* action = currentAction();
    if (block > 0 || !action || action->number == value) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        action->setNumber(value);
    }
    showAction(model->currentIndex, int(action->currentFrameIndex));
}

void QAnimationsEditor::nameChanged(const QString& text)
{
    QAnimation* action = currentAction();
    if (block > 0 || !action || action->name() == text.trimmed()) return;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        action->setName(text.trimmed());
    }
    showAction(model->currentIndex, int(action->currentFrameIndex));
}

bool QAnimationsEditor::find(const QString& text)
{
    if (!model || text.trimmed().isEmpty()) return false;
    const QString wanted = text.trimmed();
    const int count = model->count();
    // From the action after the current one, once around back to it.
    const int start = currentAction() ? model->currentIndex + 1 : 0;
    int found = start < count ? model->findByName(start, wanted) : -1;
    if (found < 0) found = model->findByName(0, wanted);
    if (found < 0) {
        QUserDialogs::information(tr("Find"), tr("No animation found!"));
        return false;
    }
    definePos(found, 0);
    return true;
}

void QAnimationsEditor::find()
{
    if (textMode) {
        textWorkspace()->showFind();
        return;
    }
    if (!model) return;
    QInputDialog dialog(dialogParent());
    dialog.setObjectName(QStringLiteral("air_find"));
    dialog.setWindowTitle(tr("Find"));
    dialog.setLabelText(tr("Action number or name:"));
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    find(dialog.textValue());
}

void QAnimationsEditor::replace()
{
    // Replacing is a text matter; the form has the fields for a single value.
    if (textMode) textWorkspace()->showFind();
}

void QAnimationsEditor::copy()
{
    if (textMode) {
        QTextDocumentEditor::copy();
        return;
    }
    if (currentAction()) model->copy(uint(model->currentIndex));
}

void QAnimationsEditor::cut()
{
    if (textMode) {
        QTextDocumentEditor::cut();
        return;
    }
    if (!currentAction()) return;
    forceStop();
    const int at = model->currentIndex;
    model->copy(uint(at));
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->remove(uint(at));
    }
    definePos(qMin(at, model->count() - 1), 0);
}

void QAnimationsEditor::paste()
{
    if (textMode) {
        QTextDocumentEditor::paste();
        return;
    }
    if (!model) return;
    forceStop();
    const int at = currentAction() ? model->currentIndex + 1 : model->count();
    bool pasted = false;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        pasted = model->paste(uint(at));
    }
    if (pasted) definePos(qMin(at, model->count() - 1), 0);
}

void QAnimationsEditor::undo()
{
    if (!model || !model->editor()) return;
    forceStop();
    model->editor()->document->undo();
}

void QAnimationsEditor::redo()
{
    if (!model || !model->editor()) return;
    forceStop();
    model->editor()->document->redo();
}

void QAnimationsEditor::clear()
{
    newFile();
}

void QAnimationsEditor::open()
{
    openFile();
}

void QAnimationsEditor::save()
{
    saveFile();
}

void QAnimationsEditor::saveAs()
{
    saveFileAs();
}

void QAnimationsEditor::newFile()
{
    if (!model || !model->canDiscard()) return;
    forceStop();
    model->clear();
    updateSel();
}

void QAnimationsEditor::openFile()
{
    if (!model || !model->canDiscard()) return;
    forceStop();
    const QString path = QUserDialogs::getOpenFileName(tr("Open animations"), startFolder("proj_path"),
                                                       tr("Animation files (*.air)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    if (!model->fromFile(path))
        QUserDialogs::critical(tr("Open animations"), tr("The file %1 can't be read.").arg(path));
    updateSel();
}

void QAnimationsEditor::saveFile()
{
    QSyntaxTextEditor* file = model ? model->textFile() : nullptr;
    if (!file) return;
    if (file->filePath().isEmpty() || !QFileInfo::exists(file->filePath())) {
        saveFileAs();
        return;
    }
    if (model->canSave(0)) model->toFile(file->filePath());
    emit titleChanged();
}

void QAnimationsEditor::saveFileAs()
{
    if (!model || !model->textFile() || !model->canSave(0)) return;
    const QString path = QUserDialogs::getSaveFileName(tr("Save animations"), startFolder("proj_path"),
                                                       tr("Animation files (*.air)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    model->toFile(path);
    emit titleChanged();
}

void QAnimationsEditor::saveGIF()
{
    forceStop();
    emit flushFields();
    QAnimation* action = currentAction();
    if (!action || action->frameCount() == 0) {
        QUserDialogs::warning(tr("Save as GIF"), tr("You can't save an empty animation as GIF."));
        return;
    }
    const QString path = QUserDialogs::getSaveFileName(tr("Save as GIF"), startFolder("gif_path"),
                                                       tr("Graphics Interchange Format (*.gif)"));
    if (path.isEmpty()) return;
    rememberFolder("gif_path", path);
    emit saveGifRequested(model->currentIndex, path);
}

namespace {
// A file's path as the file system spells it, whatever the case of the name written.
QString existingPath(const QDir& folder, QString name)
{
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString direct = folder.filePath(name);
    if (QFileInfo::exists(direct)) return direct;
    QDir at = folder;
    const QStringList parts = name.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (int i = 0; i < parts.size(); ++i) {
        QString match;
        for (const QString& entry : at.entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
            if (entry.compare(parts.at(i), Qt::CaseInsensitive) == 0) match = entry;
        if (match.isEmpty()) return QString();
        if (i + 1 == parts.size()) return at.filePath(match);
        if (!at.cd(match)) return QString();
    }
    return QString();
}

// The animation file that definitions name, or the path itself for an AIR file.
QString animationFileOf(const QString& path)
{
    if (!path.endsWith(QLatin1String(".def"), Qt::CaseInsensitive)) return path;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QString();
    static const QRegularExpression anim(QStringLiteral("^\\s*anim\\s*=\\s*([^;\\r\\n]*?)\\s*(;.*)?$"),
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = anim.match(QString::fromLatin1(file.readAll()));
    if (!match.hasMatch() || match.captured(1).isEmpty()) return QString();
    return existingPath(QFileInfo(path).absoluteDir(), match.captured(1));
}
} // namespace

void QAnimationsEditor::projImport()
{
    if (!model || !model->editor()) return;
    forceStop();
    emit flushFields();
    const QString path = QUserDialogs::getOpenFileName(tr("Import animations"), startFolder("proj_path"),
                                                       tr("M.U.G.E.N. files (*.def *.air)"));
    if (path.isEmpty()) return;
    rememberFolder("proj_path", path);
    const QString airPath = animationFileOf(path);
    const QSyntaxTextEditor* own = model->textFile();
    if (own && !airPath.isEmpty() && !own->filePath().isEmpty() &&
        QFileInfo(airPath).canonicalFilePath() == QFileInfo(own->filePath()).canonicalFilePath()) {
        QUserDialogs::warning(tr("Warning"), tr("You can't import from the destination project!"));
        return;
    }
    std::unique_ptr<QAirDocument> document;
    QAnimations* source = nullptr;
    QObject holder;
    if (importLoader) source = importLoader(path, &holder);
    if (!source && !airPath.isEmpty()) {
        document = std::make_unique<QAirDocument>();
        if (document->model.fromFile(airPath)) source = &document->model;
    }
    if (!source) {
        QUserDialogs::warning(tr("Warning"), tr("The project %1 has no animations to import.").arg(path));
        return;
    }
    animimport dialog(source, dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    QSet<int> used = numbersOf(model);
    int imported = 0;
    {
        const QScopedValueRollback<int> guard(writing, writing + 1);
        model->beginEdit();
        // Through the document's guarded cursor: the model reads each piece as it goes in.
        QElementCursor end(model->editor(), QTextCursor(model->editor()->document));
        for (int row : dialog.rows()) {
            const QAnimation* action = source->at(uint(row));
            if (!action) continue;
            // A number the file has already goes to the first free one.
            int number = action->number;
            while (used.contains(number))
                ++number;
            used.insert(number);
            QString text = renumbered(source->spanText(uint(row)), action->number, number).trimmed();
            end.movePosition(QTextCursor::End);
            if (!end.block().text().isEmpty())
                text.prepend(QStringLiteral("\n\n"));
            else if (end.block().previous().isValid() && !end.block().previous().text().isEmpty())
                text.prepend(QLatin1Char('\n'));
            end.insertText(text + QLatin1Char('\n'));
            ++imported;
        }
        model->endEdit();
    }
    if (imported > 0) {
        QUserDialogs::information(tr("Import"), tr("%n animation(s) were imported!", nullptr, imported));
        definePos(model->count() - imported, 0);
    } else {
        QUserDialogs::information(tr("Import"), tr("No animation imported!"));
    }
}
