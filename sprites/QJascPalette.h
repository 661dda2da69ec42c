#pragma once

#include "QAbstractPalette.h"

// Jasc (Paint Shop Pro) palette: the text lines "JASC-PAL", "0100", a colour count that isn't needed,
// then one line "R G B" or "R G B A" per colour, in table order. A line that isn't a colour leaves
// its entry as it was.
class QJascPalette : public QAbstractPalette
{
public:
    // A real file of 256 colours is about 4 KB; text beyond this many bytes is never looked at.
    static constexpr qint64 MaxBytes = 1 << 20;

    bool read(QIODevice* device, QRGBPal* target) override;
};
