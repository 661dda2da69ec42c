#include "QTextElement.h"

#include "QElementTextEditor.h"
#include "QTextElementType.h"

int QTextElement::flags() const
{
    return type() | etPlain;
}

int QTextElement::subType() const
{
    return 0;
}

int QTextElement::firstLine() const
{
    return block.blockNumber();
}

int QTextElement::lastLine() const
{
    return block.blockNumber();
}

void QTextElement::remove(bool)
{
    QElementTextEditor* owner = editor;
    QElementCursor span = selectSpan();
    const int start = span.selectionStart();
    const int end = span.selectionEnd();
    ++owner->ignore;
    span.QTextCursor::removeSelectedText();
    --owner->ignore;
    owner->contentsChanged(start, 1 - start + end, 0);
}

int QTextElement::startPosition() const
{
    return editor->document->findBlockByNumber(firstLine()).position();
}

int QTextElement::endPosition() const
{
    const QTextDocument* document = editor->document;
    const int lastPosition = document->characterCount() - 1;
    const QTextBlock last = document->findBlockByNumber(lastLine());
    if (!last.isValid()) return lastPosition;
    return qMin(last.position() + last.length(), lastPosition);
}

QElementCursor QTextElement::selectSpan() const
{
    QElementCursor span(editor, QTextCursor(editor->document));
    span.setPosition(startPosition());
    span.setPosition(endPosition(), QTextCursor::KeepAnchor);
    return span;
}

void QTextElement::replaceSpan(const QString& text)
{
    QElementCursor span = selectSpan();
    span.insertText(text.trimmed() + QStringLiteral("\n\n"));
}

void QTextElement::setLine(const QString& text, bool reparse)
{
    QElementTextEditor* owner = editor;
    if (!reparse) ++owner->ignore;
    QElementCursor& line = owner->cursor;
    line.setPosition(block.position());
    line.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    line.insertText(text);
    if (!reparse) --owner->ignore;
}

QTextElement* QTextElement::previousValid() const
{
    QTextElement* element = previous;
    while (element && !element->valid)
        element = element->previous;
    return element;
}

QTextElement* QTextElement::nextValid() const
{
    QTextElement* element = next;
    while (element && !element->valid)
        element = element->next;
    return element;
}

namespace {

// Whether the search for mask ends at this element's flags.
bool stopsAt(int flags, int stop)
{
    const unsigned bits = unsigned(stop) & 0x7fffffffu;
    if (bits == 0) return false;
    if (unsigned(stop) & 0x80000000u) return (unsigned(flags) & bits) != 0;
    return (unsigned(flags) & bits) == bits;
}

template <class Step>
QTextElement* walk(QTextElement* element, int mask, int stop, Step step)
{
    for (; element; element = step(element)) {
        if (!element->valid) continue;
        const int flags = element->flags();
        if ((flags & mask) == mask) return element;
        if (stopsAt(flags, stop)) return nullptr;
    }
    return nullptr;
}

template <class Step>
QTextElement* walkExact(QTextElement* element, int flags, int subType, Step step)
{
    for (; element; element = step(element))
        if (element->valid && element->flags() == flags && element->subType() == subType) return element;
    return nullptr;
}

QTextElement* up(QTextElement* element)
{
    return element->previous;
}

QTextElement* down(QTextElement* element)
{
    return element->next;
}

} // namespace

QTextElement* QTextElement::previousOf(int mask, int stop) const
{
    return walk(previous, mask, stop, up);
}

QTextElement* QTextElement::nextOf(int mask, int stop) const
{
    return walk(next, mask, stop, down);
}

QTextElement* QTextElement::previousExact(int flags, int subType) const
{
    return walkExact(previous, flags, subType, up);
}

QTextElement* QTextElement::nextExact(int flags, int subType) const
{
    return walkExact(next, flags, subType, down);
}

void QTextElement::reset()
{
    editor = nullptr;
    previous = nullptr;
    next = nullptr;
    block = QTextBlock();
    valid = true;
}
