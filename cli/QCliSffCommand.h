#pragma once

#include "QCliCommand.h"

class QSprites;

// "sff": sprite files. "info" and "list" show how a file is made, "decode" decodes every sprite and
// prints a checksum of its pixels, "extract" writes every sprite as PNG and every palette as ACT,
// "convert" reads a file and writes it again, in another version if asked.
class QCliSffCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("sff"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
    bool readsText() const override { return false; }

private:
    int info(QCliContext& context, QSprites& sprites, bool json);
    int list(QCliContext& context, QSprites& sprites, bool json);
    int decode(QCliContext& context, QSprites& sprites, bool json);
    int extract(QCliContext& context, QSprites& sprites, const QString& folder);
    int convert(QCliContext& context, QSprites& sprites, const QString& output, const QString& version,
                bool reorder);
};
