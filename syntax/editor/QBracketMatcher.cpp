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

// The one walk of both directions: from the bracket at column of block, over the brackets of the
// following (step 1) or preceding (step -1) blocks, counting the nesting of brackets of the same side.
QBracketMatcher::Result QBracketMatcher::walk(QTextBlock block, int column, int step)
{
    Result result;
    const QList<QSyntaxParenthesis>* brackets = bracketsOf(block);
    if (!brackets) return result;
    const int side = step > 0 ? QSyntaxParenthesis::Opening : QSyntaxParenthesis::Closing;
    int index = indexAt(*brackets, column, side);
    if (index < 0) return result;
    const QSyntaxParenthesis start = brackets->at(index);
    result.bracket = block.position() + column;
    result.kind = Mismatch;

    int depth = 0;
    for (;;) {
        for (index += step; index >= 0 && index < brackets->size(); index += step) {
            const QSyntaxParenthesis& bracket = brackets->at(index);
            if (bracket.type == side) {
                ++depth;
            } else if (depth == 0) {
                return partnerFound(result, start, bracket, block.position() + bracket.position);
            } else {
                --depth;
            }
        }
        do {
            block = step > 0 ? block.next() : block.previous();
        } while (block.isValid() && !bracketsOf(block));
        if (!block.isValid()) return result;
        brackets = bracketsOf(block);
        index = step > 0 ? -1 : int(brackets->size());
    }
}

QBracketMatcher::Result QBracketMatcher::forward(const QTextDocument* document, int position)
{
    const QTextBlock block = document->findBlock(position);
    return walk(block, position - block.position(), 1);
}

QBracketMatcher::Result QBracketMatcher::backward(const QTextDocument* document, int position)
{
    if (position <= 0) return Result();
    const QTextBlock block = document->findBlock(position - 1);
    return walk(block, position - 1 - block.position(), -1);
}
