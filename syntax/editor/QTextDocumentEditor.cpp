#include "QTextDocumentEditor.h"

#include "QOutlineView.h"
#include "QSyntaxHierarchy.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextSearch.h"
#include "QTextWorkspace.h"
#include "QUserDialogs.h"

#include <QTextDocument>

QTextDocumentEditor::QTextDocumentEditor(QTextWorkspace* workspace, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_outline(new QOutlineView)
{
    m_outline->hide();
    connect(m_outline, &QOutlineView::blockActivated, this, [this](int block) {
        if (!m_text) return;
        m_workspace->goToBlock(block);
        m_workspace->editor()->setFocus();
    });
}

QTextDocumentEditor::~QTextDocumentEditor()
{
    // The outline may sit in a side panel of the window; it is the editor's all the same.
    delete m_outline;
}

QWidget* QTextDocumentEditor::panel() const
{
    return m_outline;
}

void QTextDocumentEditor::bind(QSyntaxTextEditor* text)
{
    disconnect(modifiedConnection);
    m_text = text;
    if (text)
        modifiedConnection = connect(text->document, &QTextDocument::modificationChanged, this,
                                     &QTextDocumentEditor::titleChanged);
    if (m_outline) m_outline->setHierarchy(text ? text->hierarchy() : nullptr);
    if (active) m_workspace->setText(text);
    emit titleChanged();
}

bool QTextDocumentEditor::isModified() const
{
    return m_text && m_text->document->isModified();
}

void QTextDocumentEditor::activate()
{
    active = true;
    m_workspace->setText(m_text);
    disconnect(cursorConnection);
    QTextEditor* editor = m_workspace->editor();
    cursorConnection = connect(editor, &QPlainTextEdit::cursorPositionChanged, this, [this, editor]() {
        if (m_outline && m_text) m_outline->followBlock(editor->textCursor().blockNumber());
    });
    if (m_outline && m_text) m_outline->followBlock(editor->textCursor().blockNumber());
}

void QTextDocumentEditor::deactivate()
{
    active = false;
    disconnect(cursorConnection);
}

void QTextDocumentEditor::navigate(int fileIndex, int index, int subIndex)
{
    Q_UNUSED(fileIndex);
    Q_UNUSED(subIndex);
    m_workspace->goToBlock(index);
    m_workspace->editor()->setFocus();
}

void QTextDocumentEditor::undo()
{
    m_workspace->editor()->undo();
}

void QTextDocumentEditor::redo()
{
    m_workspace->editor()->redo();
}

void QTextDocumentEditor::cut()
{
    m_workspace->editor()->cut();
}

void QTextDocumentEditor::copy()
{
    m_workspace->editor()->copy();
}

void QTextDocumentEditor::paste()
{
    m_workspace->editor()->paste();
}

bool QTextDocumentEditor::find(const QString& text, const QQuickFindOptions& options)
{
    QTextEditor* editor = m_workspace->editor();
    QTextDocument* document = editor->document();
    QTextCursor hit = QTextSearch::find(document, text, options, editor->textCursor());
    if (hit.isNull() && options.value(QQuickFindOption::Circular))
        hit = QTextSearch::findFromEdge(document, text, options);
    if (hit.isNull()) {
        QUserDialogs::information(tr("Find"), tr("No text found!"));
        return false;
    }
    editor->setTextCursor(hit);
    return true;
}

int QTextDocumentEditor::replace(const QString& source, const QString& dest, const QQuickFindOptions& options,
                                 bool all)
{
    QTextEditor* editor = m_workspace->editor();
    if (editor->isReadOnly() || source.isEmpty()) return 0;
    if (!all) {
        QTextCursor selection = editor->textCursor();
        int replaced = 0;
        if (selection.hasSelection() && QTextSearch::isHit(selection.selectedText(), source, options)) {
            selection.insertText(dest);
            editor->setTextCursor(selection);
            replaced = 1;
        }
        find(source, options);
        return replaced;
    }
    QTextCursor last;
    const int replaced = QTextSearch::replaceAll(editor->document(), source, dest, options, &last);
    if (replaced == 0) {
        QUserDialogs::information(tr("Find"), tr("No text found!"));
        return 0;
    }
    editor->setTextCursor(last);
    return replaced;
}
