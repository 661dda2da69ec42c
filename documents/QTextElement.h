#pragma once

#include "QElementCursor.h"
#include "QTextToken.h"

#include <QList>
#include <QObject>
#include <QTextBlock>

class QElementTextEditor;

// A model item bound to one line of a document. Elements are pooled per class (QTextElementPool) and
// never owned by the document; the document links all its elements in line order.
class QTextElement : public QObject
{
    Q_OBJECT
public:
    // The owning document; null once released.
    QElementTextEditor* editor = nullptr;
    // Neighbours in the document's list, which holds all its elements in line order.
    QTextElement* previous = nullptr;
    QTextElement* next = nullptr;
    // The line. Qt keeps it valid while lines above come and go, so no line number is stored.
    QTextBlock block;
    // False only while the document reports this element as gone and has not released it yet.
    bool valid = true;

    // type() with the plain bit (etPlain); section elements answer etSection instead.
    virtual int flags() const;
    virtual int type() const = 0;
    virtual int subType() const;
    // Block numbers of the element's span of lines; by default its own line.
    virtual int firstLine() const;
    virtual int lastLine() const;
    // Deletes the whole span from the text and lets the document re-read the place.
    virtual void remove(bool all = true);
    // Called once after the element left its document: drops model links and goes back to the pool.
    virtual void release() = 0;
    // Reads the element's values from the tokens of its line; the recogniser already checked them.
    virtual void parse(const QList<QTextToken*>& tokens) = 0;

    // Position of the span's first line; end of its last line (never beyond the last character).
    int startPosition() const;
    int endPosition() const;
    // A guarded cursor with the span selected.
    QElementCursor selectSpan() const;
    // Replaces the span by text, trimmed, followed by an empty line.
    void replaceSpan(const QString& text);
    // Writes the element's own line. Without reparse the document does not re-read it: the element
    // already holds the values the text says. Every model setter writes this way.
    void setLine(const QString& text, bool reparse = false);
    // The text of the element's own line.
    QString lineText() const { return block.text(); }

    QTextElement* previousValid() const;
    QTextElement* nextValid() const;
    // Nearest valid element whose flags hold all bits of mask. A stop ends the search with null: with
    // bit 31 of stop set, at an element sharing any bit of stop; otherwise at one holding all of them.
    QTextElement* previousOf(int mask, int stop = 0) const;
    QTextElement* nextOf(int mask, int stop = 0) const;
    // Nearest valid element with flags() == flags and subType() == subType.
    QTextElement* previousExact(int flags, int subType = 0) const;
    QTextElement* nextExact(int flags, int subType = 0) const;

    // Puts a released element back to its fresh state; the pools call it before handing it out.
    void reset();

protected:
    QTextElement() = default;
};
