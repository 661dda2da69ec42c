#include "QBracketMatcher.h"

#include "QTextEditorBlockData.h"

#include <QTextBlock>
#include <QTextDocument>

namespace {

const QList<QSyntaxParenthesis>* bracketsOf(const QTextBlock& block)
{
    const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
    return data && !data->parentheses.isEmpty() ? &data->parentheses : nullptr;
}

int indexAt(const QList<QSyntaxParenthesis>& brackets, int column, int type)
{
    for (int i = 0; i < brackets.size(); ++i)
        if (brackets[i].position == column && brackets[i].type == type) return i;
    return -1;
}

QBracketMatcher::Result partnerFound(QBracketMatcher::Result result, const QSyntaxParenthesis& from,
                                     const QSyntaxParenthesis& to, int position)
{
    result.partner = position;
    result.kind = QBracketMatcher::counterpart(from.character) == to.character ? QBracketMatcher::Match
                                                                               : QBracketMatcher::Mismatch;
    return result;
}

} // namespace

int QBracketMatcher::counterpart(int character)
{
    switch (character) {
    case '(':
        return ')';
    case ')':
        return '(';
    case '[':
        return ']';
    case ']':
        return '[';
    case '{':
        return '}';
    case '}':
        return '{';
    default:
        return 0;
    }
}

QBracketMatcher::Result QBracketMatcher::forward(const QTextDocument* document, int position)
{
    Result result;
    QTextBlock block = document->findBlock(position);
    const QList<QSyntaxParenthesis>* brackets = bracketsOf(block);
    if (!brackets) return result;
    int index = indexAt(*brackets, position - block.position(), QSyntaxParenthesis::Opening);
    if (index < 0) return result;
    const QSyntaxParenthesis start = brackets->at(index);
    result.bracket = position;
    result.kind = Mismatch;

    int depth = 0;
    for (;;) {
        for (++index; index < brackets->size(); ++index) {
            const QSyntaxParenthesis& bracket = brackets->at(index);
            if (bracket.type == QSyntaxParenthesis::Opening) {
                ++depth;
            } else if (depth == 0) {
                return partnerFound(result, start, bracket, block.position() + bracket.position);
            } else {
                --depth;
            }
        }
        do {
            block = block.next();
        } while (block.isValid() && !bracketsOf(block));
        if (!block.isValid()) return result;
        brackets = bracketsOf(block);
        index = -1;
    }
}

QBracketMatcher::Result QBracketMatcher::backward(const QTextDocument* document, int position)
{
    Result result;
    if (position <= 0) return result;
    QTextBlock block = document->findBlock(position - 1);
    const QList<QSyntaxParenthesis>* brackets = bracketsOf(block);
    if (!brackets) return result;
    int index = indexAt(*brackets, position - 1 - block.position(), QSyntaxParenthesis::Closing);
    if (index < 0) return result;
    const QSyntaxParenthesis start = brackets->at(index);
    result.bracket = position - 1;
    result.kind = Mismatch;

    int depth = 0;
    for (;;) {
        for (--index; index >= 0; --index) {
            const QSyntaxParenthesis& bracket = brackets->at(index);
            if (bracket.type == QSyntaxParenthesis::Closing) {
                ++depth;
            } else if (depth == 0) {
                return partnerFound(result, start, bracket, block.position() + bracket.position);
            } else {
                --depth;
            }
        }
        do {
            block = block.previous();
        } while (block.isValid() && !bracketsOf(block));
        if (!block.isValid()) return result;
        brackets = bracketsOf(block);
        index = brackets->size();
    }
}
