#pragma once

#include "QTextToken.h"

#include <QChar>
#include <QList>

class QTextElement;

// Recognises one kind of line by its tokens and makes the element for it. Recognisers are registered
// once, process-wide, in a fixed order before any document exists; the order breaks ties, so the
// earliest registered of several that fit a line wins.
class QTextElementReg
{
public:
    virtual ~QTextElementReg();
    // The element type that it makes.
    virtual int type() const = 0;
    virtual int subType() const;
    // A cheap test on the first character of the line's first token, packed by charClass().
    virtual int firstCharClass() const = 0;
    // Whether the token at index can stand there in this kind of line. At the end of the line a
    // tkEndOfLine token with empty text is offered.
    virtual bool match(int index, const QTextToken& token) = 0;
    // A fresh or recycled element.
    virtual QTextElement* create() = 0;

    // Packs a first-character class: low byte the class, then up to three ASCII characters.
    //   1 anything; 2 a digit or '-'; 3 c1; 4 c1 or c2; 5 c1, c2 or c3;
    //   6 c1 or c1 + 32; 7 and 8: c1, c2 (and c3), each also plus 32.
    static int charClass(int cls, char c1 = 0, char c2 = 0, char c3 = 0);
    // Whether c passes a packed class. A class of 0 or above 8 never passes.
    static bool passes(int packed, QChar c);

    // The registry, in registration order. Registering takes ownership.
    static void add(QTextElementReg* reg);
    static void remove(QTextElementReg* reg);
    static const QList<QTextElementReg*>& registered();
    // Deletes every recogniser; the application's end.
    static void deleteAll();
    // Changes whenever the registry does, so that documents can refresh what they cached of it.
    static int generation();
};
