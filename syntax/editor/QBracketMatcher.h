#pragma once

#include <QTextBlock>

class QTextDocument;

// The partner of a bracket, found through the bracket lists the checkers leave in each block's
// QTextEditorBlockData. A bracket in a comment or a string is in no list, so it is neither matched nor
// a partner.
class QBracketMatcher
{
public:
    enum Kind
    {
        None,    // no bracket of the right side at the position
        Match,   // a partner of the same kind
        Mismatch // a partner of another kind, or none before the end of the text
    };

    struct Result
    {
        Kind kind = None;
        // Document positions of the bracket at the cursor and of its partner (-1 without one).
        int bracket = -1;
        int partner = -1;
    };

    // The opening bracket right behind position (the character at position) and what closes it.
    static Result forward(const QTextDocument* document, int position);
    // The closing bracket right before position (the character at position - 1) and what opens it.
    static Result backward(const QTextDocument* document, int position);
    // The closing character of an opening one and the other way round; 0 for any other character.
    static int counterpart(int character);

private:
    static Result walk(QTextBlock block, int column, int step);
};
