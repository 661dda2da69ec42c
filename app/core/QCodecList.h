#pragma once

#include <QByteArray>
#include <QList>

// The names of the text codecs offered for opening and saving text files, with "System" last. The
// setting "default_codepage" is an index into this list.
QList<QByteArray>& codecList();

// Fills codecList() anew from the codecs this Qt knows.
void buildCodecList();
