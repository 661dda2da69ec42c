#include "QProjectTextTools.h"

#include "FindDlgMlt.h"
#include "MainWindow.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QInterface.h"
#include "QMugenModel.h"
#include "QProjectSearch.h"
#include "QTextDocumentEditor.h"
#include "QTextEditor.h"
#include "QTextEditorSettings.h"
#include "QTextEditors.h"
#include "QTextSearch.h"
#include "QTextWorkspace.h"
#include "QUserDialogs.h"

#include <QLineEdit>
#include <QMenu>

namespace {

const QString showKey = QStringLiteral("show_find_multi");
const QString xKey = QStringLiteral("find_multi_x");
const QString yKey = QStringLiteral("find_multi_y");

} // namespace

QProjectTextTools::QProjectTextTools(QInterface* iface, MainWindow* window, QTextEditors* texts)
    : QObject(iface), iface(iface), texts(texts), findMulti(new FindDlgMlt(window))
{
    // Everywhere: the search walks all text files of the project, so it is as useful from the sprites
    // or sounds as from a text editor, and no key of an editor's own may shadow it.
    const QString name = QStringLiteral("edit_find_replace_multi");
    QMenu* edit = window->editMenu();
    edit->addAction(iface->actionManager()->add({QActionInfo::Everywhere}, name, QActionTexts::id(name),
                                                false, this, &QProjectTextTools::showFindMulti));
    QTextWorkspace* workspace = texts->workspace();
    QAction* encoding = edit->addAction(tr("Encoding..."), workspace, &QTextWorkspace::statusClicked);
    encoding->setObjectName(QStringLiteral("textEncoding"));

    // Outside the text editors no file is shown, so even the search of "the current file" spans the
    // project's text files.
    connect(findMulti, &FindDlgMlt::find, this,
            [this](const QString& text, const QQuickFindOptions& options) {
                if (QTextDocumentEditor* editor = this->texts->current())
                    editor->find(text, options);
                else
                    findInFiles(text, options);
            });
    connect(findMulti, &FindDlgMlt::replace, this,
            [this](const QString& source, const QString& dest, const QQuickFindOptions& options, bool all) {
                if (QTextDocumentEditor* editor = this->texts->current())
                    editor->replace(source, dest, options, all);
                else
                    replaceInFiles(source, dest, options, all);
            });
    connect(findMulti, &FindDlgMlt::findInFiles, this, &QProjectTextTools::findInFiles);
    connect(findMulti, &FindDlgMlt::replaceInFiles, this, &QProjectTextTools::replaceInFiles);
    // Only the user's closing counts: the window going away hides the dialog too.
    connect(findMulti, &QDialog::finished, this, [this]() {
        if (mugenModel) (*mugenModel)[showKey] = false;
    });
    connect(iface, &QInterface::configApplied, this, &QProjectTextTools::applyConfig);
    applyConfig();
    restoreFindMulti();
}

QProjectTextTools::~QProjectTextTools()
{
    storeFindMulti();
}

void QProjectTextTools::showFindMulti()
{
    if (!findMulti) return;
    if (QTextDocumentEditor* editor = texts->current()) {
        const QString selected = editor->textWorkspace()->editor()->textCursor().selectedText();
        if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
            findMulti->findTxt()->setText(selected);
    }
    findMulti->show();
    placed = true;
    findMulti->raise();
    findMulti->activateWindow();
    findMulti->findTxt()->setFocus();
    findMulti->findTxt()->selectAll();
    if (mugenModel) (*mugenModel)[showKey] = true;
}

void QProjectTextTools::applyConfig()
{
    if (mugenModel) QTextEditorSettings::apply(texts->workspace()->editor(), mugenModel->settings);
}

void QProjectTextTools::findInFiles(const QString& text, const QQuickFindOptions& options)
{
    QTextDocumentEditor* editor = texts->current();
    QTextEditor* view = texts->workspace()->editor();
    const QSyntaxTextEditor* shown = editor ? editor->text() : nullptr;
    const QProjectSearch::Hit hit = QProjectSearch::find(
        iface->currentProject(), shown, shown ? view->textCursor() : QTextCursor(), text, options);
    if (hit.isNull()) {
        QUserDialogs::information(tr("Find"), tr("No text found!"));
        return;
    }
    if (hit.file.text != shown)
        iface->navigateTo(hit.file.type, hit.file.fileIndex, hit.cursor.blockNumber(), 0);
    // The editor of that kind of file may be hidden; then the hit can't be shown.
    if (view->document() != hit.cursor.document()) return;
    view->setTextCursor(hit.cursor);
    view->ensureCursorVisible();
}

void QProjectTextTools::replaceInFiles(const QString& source, const QString& dest,
                                       const QQuickFindOptions& options, bool all)
{
    if (!all) {
        QTextDocumentEditor* editor = texts->current();
        QTextEditor* view = texts->workspace()->editor();
        QTextCursor selection = view->textCursor();
        if (editor && editor->text() && !view->isReadOnly() && selection.hasSelection() &&
            QTextSearch::isHit(selection.selectedText(), source, options)) {
            selection.insertText(dest);
            view->setTextCursor(selection);
        }
        findInFiles(source, options);
        return;
    }
    int files = 0;
    const int replaced = QProjectSearch::replaceAll(iface->currentProject(), source, dest, options, &files);
    if (replaced == 0) {
        QUserDialogs::information(tr("Find"), tr("No text found!"));
        return;
    }
    QUserDialogs::information(tr("Replace All"),
                              tr("%1 occurrence(s) replaced in %2 file(s).").arg(replaced).arg(files));
}

void QProjectTextTools::restoreFindMulti()
{
    if (!mugenModel || !findMulti) return;
    QMugenModel& config = *mugenModel;
    const QVariant x = config[xKey];
    const QVariant y = config[yKey];
    if (x.isValid() && y.isValid()) {
        findMulti->move(x.toInt(), y.toInt());
        placed = true;
    }
    if (config[showKey].toBool()) showFindMulti();
}

void QProjectTextTools::storeFindMulti()
{
    if (!mugenModel || !findMulti || !placed) return;
    QMugenModel& config = *mugenModel;
    config[xKey] = findMulti->x();
    config[yKey] = findMulti->y();
}
