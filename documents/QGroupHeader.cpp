#include "QGroupHeader.h"

#include "QElementTextEditor.h"
#include "QNameComment.h"
#include "QTextElementType.h"

namespace {

// A line that reaches a ';' before any blank belongs to the comment block above a header. An
// indented comment does not; "abc;def" does.
bool opensWithComment(const QString& text)
{
    for (const QChar c : text) {
        switch (c.unicode()) {
        case ';':
            return true;
        case '\t':
        case '\n':
        case '\r':
        case ' ':
            return false;
        default:
            break;
        }
    }
    return false;
}

QNameComment* commentOf(QTextElement* element)
{
    return element && element->type() == etNameComment ? static_cast<QNameComment*>(element) : nullptr;
}

QGroupHeader* headerOf(QTextElement* element)
{
    return element && (element->flags() & etSection) ? qobject_cast<QGroupHeader*>(element) : nullptr;
}

void disown(QNameComment* comment)
{
    if (comment->owner && comment->owner->nameElement == comment) comment->owner->nameElement = nullptr;
    comment->owner = nullptr;
}

void adopt(QGroupHeader* header, QNameComment* comment)
{
    if (header->nameElement && header->nameElement != comment && header->nameElement->owner == header)
        header->nameElement->owner = nullptr;
    if (comment->owner != header) disown(comment);
    header->nameElement = comment;
    comment->owner = header;
}

} // namespace

int QGroupHeader::flags() const
{
    return type() | etSection;
}

int QGroupHeader::firstLine() const
{
    for (QTextBlock above = block.previous(); above.isValid(); above = above.previous()) {
        const QString text = above.text();
        if (text.isEmpty() || !opensWithComment(text)) return above.blockNumber() + 1;
    }
    return 0;
}

int QGroupHeader::lastLine() const
{
    QTextBlock section = block.next();
    while (section.isValid() && !section.text().startsWith(QLatin1Char('[')))
        section = section.next();
    if (!section.isValid()) return block.document()->blockCount();
    if (QTextElement* header = QElementTextEditor::elementAt(section)) return header->firstLine() - 1;
    QTextBlock above = section.previous();
    while (above.isValid() && (above.text().isEmpty() || above.text().startsWith(QLatin1Char(';'))))
        above = above.previous();
    return above.blockNumber() + 1;
}

void QGroupHeader::release()
{
    if (nameElement && nameElement->owner == this) nameElement->owner = nullptr;
    nameElement = nullptr;
}

QString QGroupHeader::name() const
{
    return nameElement ? nameElement->text : QString();
}

void QGroupHeader::setName(const QString& text)
{
    if (text.isEmpty()) {
        if (nameElement) nameElement->remove(true);
        return;
    }
    const QString line = QStringLiteral("; ") + text;
    if (nameElement) {
        nameElement->text = line.mid(1).trimmed();
        nameElement->setLine(line, false);
        return;
    }
    editor->insertLineBefore(this, line, true);
}

void QGroupHeader::bindNames(const QList<QTextElementChange>& changes)
{
    for (const QTextElementChange& change : changes) {
        QTextElement* element = change.element;
        if (QNameComment* comment = commentOf(element)) {
            if (change.type == ElementRemoved)
                disown(comment);
            else if (change.type == ElementAdded)
                if (QGroupHeader* header = headerOf(comment->nextValid())) adopt(header, comment);
            continue;
        }
        QGroupHeader* header = headerOf(element);
        if (!header) continue;
        if (change.type == ElementAdded) {
            if (QNameComment* comment = commentOf(header->previousValid())) adopt(header, comment);
        } else if (change.type == ElementRemoved) {
            if (QNameComment* comment = commentOf(header->previousValid())) {
                if (QGroupHeader* following = headerOf(header->nextValid()))
                    adopt(following, comment);
                else
                    disown(comment);
            }
            if (header->nameElement && header->nameElement->owner == header)
                header->nameElement->owner = nullptr;
            header->nameElement = nullptr;
        }
    }
}
