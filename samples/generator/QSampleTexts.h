#pragma once

#include <QByteArray>

// The text files of the sample fighter, lines ending in CR LF as the game's own files do.
class QSampleTexts
{
public:
    static QByteArray definitions();
    static QByteArray commands();
    static QByteArray states();
};
