#include "QTextTools.h"

#include "QDialogRunner.h"
#include "QIssuesCombo.h"
#include "QMugenModel.h"
#include "QSCtrlList.h"
#include "QSCtrlManager.h"
#include "QSnippetManager.h"
#include "QTextBar.h"
#include "QUserDialogs.h"
#include "SCtrlEdit.h"
#include "SnipDlg.h"
#include "SnipInsertDlg.h"

#include <QComboBox>
#include <QDir>
#include <QListView>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocumentFragment>

namespace {

void storeSetting(const char* key, bool on)
{
    if (mugenModel) (*mugenModel)[QLatin1String(key)] = on;
}

} // namespace

QTextTools::QTextTools(QPlainTextEdit* editor, QWidget* parent)
    : QObject(parent), editor(editor), m_snippets(new QSnippetManager(QString(), this)),
      m_sctrls(new QSCtrlManager(QString(), this))
{
    bar = new QTextBar(m_snippets, parent);
    list = new QSCtrlList(m_sctrls, parent);
    connect(bar->snippetBox(), &QComboBox::activated, this, &QTextTools::snipActivated);
    connect(bar->issuesBox(), &QComboBox::activated, this, &QTextTools::errorActivated);
    connect(list->list(), &QListView::doubleClicked, this, &QTextTools::insertSCtrl);
    connect(list->list()->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &QTextTools::selectSCtrl);
    bar->setVisible(flagSetting("show_text_bar", true));
    list->setVisible(flagSetting("show_sctrl_list", true));
}

void QTextTools::setText(QSyntaxTextEditor* text)
{
    bar->issuesBox()->setText(text);
}

void QTextTools::insertText(const QString& text)
{
    if (editor->isReadOnly() || text.isEmpty()) return;
    QTextCursor cursor = editor->textCursor();
    cursor.beginEditBlock();
    cursor.insertText(text);
    cursor.endEditBlock();
    editor->setTextCursor(cursor);
}

bool QTextTools::insertSnippet(const QString& name)
{
    QSnippet snippet;
    if (editor->isReadOnly() || !m_snippets->read(name, &snippet)) return false;
    QString code = snippet.code;
    if (!snippet.fields.isEmpty()) {
        SnipInsertDlg dialog(name, snippet.fields, editor->window());
        if (QDialogRunner::run(&dialog) != QDialog::Accepted) return false;
        code = QSnippet::fill(code, dialog.values());
    }
    insertText(code);
    return true;
}

void QTextTools::snipInsert()
{
    insertSnippet(bar->snippetBox()->currentText());
}

void QTextTools::snipActivated(int index)
{
    insertSnippet(m_snippets->names().value(index));
    editor->setFocus();
}

void QTextTools::snipNew()
{
    QSnippet snippet;
    snippet.code = editor->textCursor().selection().toPlainText();
    SnipDlg dialog(m_snippets, QString(), snippet, editor->window());
    QDialogRunner::run(&dialog);
}

void QTextTools::snipEdit()
{
    const QString name = bar->snippetBox()->currentText();
    QSnippet snippet;
    if (!m_snippets->read(name, &snippet)) return;
    SnipDlg dialog(m_snippets, name, snippet, editor->window());
    QDialogRunner::run(&dialog);
}

void QTextTools::errorActivated(int index)
{
    const QPoint at = bar->issuesBox()->target(index);
    const QTextBlock block = editor->document()->findBlockByNumber(at.y());
    if (!block.isValid()) return;
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + qBound(0, at.x(), block.length() - 1));
    editor->setTextCursor(cursor);
    editor->centerCursor();
    editor->setFocus();
}

void QTextTools::selectSCtrl(const QModelIndex& index)
{
    const QString text = m_sctrls->read(index.data().toString());
    list->showPreview(text);
    list->list()->setToolTip(text);
}

void QTextTools::insertSCtrl(const QModelIndex& index)
{
    insertText(m_sctrls->read(index.data().toString()));
    editor->setFocus();
}

void QTextTools::sCtrlNew()
{
    SCtrlEdit dialog(SCtrlEdit::newText(), editor->window());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    QString path = QUserDialogs::getSaveFileName(tr("Save state controller"), m_sctrls->directory(),
                                                 tr("State controller (*.sctrl)"));
    if (path.isEmpty()) return;
    if (!path.endsWith(QLatin1String(".sctrl"), Qt::CaseInsensitive)) path += QLatin1String(".sctrl");
    if (!m_sctrls->write(path, dialog.text()))
        QUserDialogs::critical(tr("State controller"), tr("The file could not be written."));
}

void QTextTools::sCtrlEdit()
{
    const QString name = list->currentName();
    if (name.isEmpty()) return;
    SCtrlEdit dialog(m_sctrls->read(name), editor->window());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    if (!m_sctrls->write(name, dialog.text()))
        QUserDialogs::critical(tr("State controller"), tr("The file could not be written."));
}

void QTextTools::sCtrlDel()
{
    const QString name = list->currentName();
    if (name.isEmpty()) return;
    if (flagSetting("confirm_delete", true) &&
        QUserDialogs::question(tr("Delete"), tr("Do you really want to delete the state controller?")) !=
            QUserDialogs::Yes)
        return;
    m_sctrls->remove(name);
}

void QTextTools::setSctrlListShown(bool shown)
{
    list->setVisible(shown);
    storeSetting("show_sctrl_list", shown);
}

void QTextTools::setTextBarShown(bool shown)
{
    bar->setVisible(shown);
    storeSetting("show_text_bar", shown);
}
