#pragma once

#include "QCliCommand.h"

// "pal": palette files. "convert" reads any palette file the editor reads (ACT, RIFF or Jasc PAL,
// ACO, ASE, Painter swatches, the table of a PNG, PCX or BMP) and writes it as an ACT.
class QCliPalCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("pal"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
    bool readsText() const override { return false; }
};
