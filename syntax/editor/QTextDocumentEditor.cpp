#include "QTextDocumentEditor.h"

#include "QOutlineView.h"
#include "QSyntaxHierarchy.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextWorkspace.h"
#include "QUserDialogs.h"

#include <QRegularExpression>
#include <QTextDocument>

namespace {

QTextDocument::FindFlags flagsOf(const QQuickFindOptions& options)
{
    QTextDocument::FindFlags flags;
    if (options.value(QQuickFindOption::CaseSensitive)) flags |= QTextDocument::FindCaseSensitively;
    if (options.value(QQuickFindOption::Backward)) flags |= QTextDocument::FindBackward;
    return flags;
}

QRegularExpression expressionOf(const QString& text, const QQuickFindOptions& options)
{
    return QRegularExpression(text, options.value(QQuickFindOption::CaseSensitive)
                                        ? QRegularExpression::NoPatternOption
                                        : QRegularExpression::CaseInsensitiveOption);
}

QTextCursor search(const QTextDocument* document, const QString& text, const QQuickFindOptions& options,
                   const QTextCursor& from, QTextDocument::FindFlags flags)
{
    if (options.value(QQuickFindOption::RegularExpression))
        return document->find(expressionOf(text, options), from, flags);
    return document->find(text, from, flags);
}

} // namespace

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
    const QTextDocument::FindFlags flags = flagsOf(options);
    QTextCursor hit =
        text.isEmpty() ? QTextCursor() : search(document, text, options, editor->textCursor(), flags);
    if (hit.isNull() && !text.isEmpty() && options.value(QQuickFindOption::Circular)) {
        QTextCursor from(document);
        if (flags & QTextDocument::FindBackward) from.movePosition(QTextCursor::End);
        hit = search(document, text, options, from, flags);
    }
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
    QTextDocument* document = editor->document();
    const bool expression = options.value(QQuickFindOption::RegularExpression);
    if (!all) {
        QTextCursor selection = editor->textCursor();
        const QString selected = selection.selectedText();
        const bool isHit =
            selection.hasSelection() &&
            (expression ? expressionOf(QStringLiteral("\\A(?:%1)\\z").arg(source), options)
                              .match(selected)
                              .hasMatch()
                        : selected.compare(source, options.value(QQuickFindOption::CaseSensitive)
                                                       ? Qt::CaseSensitive
                                                       : Qt::CaseInsensitive) == 0);
        int replaced = 0;
        if (isHit) {
            selection.insertText(dest);
            editor->setTextCursor(selection);
            replaced = 1;
        }
        find(source, options);
        return replaced;
    }
    // Every hit from the start, forward, whatever the direction of the search.
    QQuickFindOptions forward = options;
    forward.insert(QQuickFindOption::Backward, false);
    const QTextDocument::FindFlags flags = flagsOf(forward);
    QTextCursor edit(document);
    QTextCursor from(document);
    int replaced = 0;
    for (;;) {
        QTextCursor hit = search(document, source, forward, from, flags);
        if (hit.isNull()) break;
        if (replaced == 0) edit.beginEditBlock();
        edit.setPosition(hit.selectionStart());
        edit.setPosition(hit.selectionEnd(), QTextCursor::KeepAnchor);
        edit.insertText(dest);
        ++replaced;
        from = edit;
        // An empty hit would be found again at the same place.
        if (hit.selectionStart() == hit.selectionEnd() && !from.movePosition(QTextCursor::NextCharacter))
            break;
    }
    if (replaced == 0) {
        QUserDialogs::information(tr("Find"), tr("No text found!"));
        return 0;
    }
    edit.endEditBlock();
    editor->setTextCursor(edit);
    return replaced;
}
