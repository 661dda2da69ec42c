#include "QElementCursor.h"

#include "QElementTextEditor.h"

QElementCursor::QElementCursor(QElementTextEditor* editor, const QTextCursor& cursor)
    : QTextCursor(cursor), editor(editor)
{}

void QElementCursor::insertText(const QString& text)
{
    const int start = selectionStart();
    const int end = selectionEnd();
    ++editor->ignore;
    QTextCursor::insertText(text);
    --editor->ignore;
    // The removed count is at least 1 even without a selection, so that elements of lines that the
    // text replaced are always looked for.
    editor->contentsChanged(start, 1 - start + end, int(text.size()));
}

void QElementCursor::removeSelectedText()
{
    const int start = selectionStart();
    const int end = selectionEnd();
    ++editor->ignore;
    QTextCursor::removeSelectedText();
    --editor->ignore;
    editor->contentsChanged(start, 1 - start + end, 0);
}
