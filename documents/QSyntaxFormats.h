#pragma once

#include <QFont>
#include <QTextCharFormat>

// The process-wide table of text formats shared by every code editor and syntax processor. The first
// nine slots carry the colour set keys below; the rest are free for later kinds of span.
class QSyntaxFormats
{
public:
    enum Slot
    {
        Comment = 0,
        Number = 1,
        String = 2,
        Keyword = 3,
        Block = 4,
        Controller = 5,
        Trigger = 6,
        Constant = 7,
        Value = 8,
        SlotCount = 16
    };

    QSyntaxFormats();

    QTextCharFormat& operator[](int slot) { return formats[slot]; }
    const QTextCharFormat& operator[](int slot) const { return formats[slot]; }
    const QFont& font() const { return baseFont; }
    void setFont(const QFont& font);

    // The colour set key of a named slot ("comment", "number", ...), empty for the free slots.
    static QString colorsetKey(int slot);

private:
    QTextCharFormat formats[SlotCount];
    QFont baseFont;
};

// Made by the entry routine after the appearance managers and deleted before them.
extern QSyntaxFormats* syntaxFormats;
