#pragma once

#include <QByteArray>
#include <QList>

// The names of the text codecs offered for opening and saving text files: "System" (the locale's
// codec) first, then every codec this Qt knows, sorted. The setting "default_codepage" and the codec
// of a text document are indices into this list, so its order must not depend on the run.
QList<QByteArray>& codecList();

// Fills codecList() anew from the codecs this Qt knows.
void buildCodecList();

// The codecs that a text file's bytes are tried in when its encoding is not marked, in the order of
// preference among equally good readings: the Unicode form first, then the multi-byte pages of East
// Asian content, then the Windows pages of one byte, which read nearly any bytes and so prove little.
const QList<QByteArray>& detectionCodecs();
