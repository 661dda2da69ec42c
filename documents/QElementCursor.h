#pragma once

#include <QTextCursor>

class QElementTextEditor;

// A text cursor of an element document whose edits keep text and elements in step: the document's
// own re-read is muted during the edit and then called with the exact place of the change.
class QElementCursor : public QTextCursor
{
public:
    QElementCursor() = default;
    QElementCursor(QElementTextEditor* editor, const QTextCursor& cursor);

    void insertText(const QString& text);
    void removeSelectedText();

    QElementTextEditor* editor = nullptr;
};
