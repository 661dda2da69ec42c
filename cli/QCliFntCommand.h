#pragma once

#include "QCliCommand.h"

// "fnt": old single-file fonts. "convert" reads an FNT and writes the font in its current form: a
// definitions file and the version 2.00 sprite file it names, both under the FNT's base name.
class QCliFntCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("fnt"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
