#pragma once

#include "QCliCommand.h"

// "lint": checks M.U.G.E.N. text files (CNS, ST, CMD, AIR, DEF and any other text the checker knows)
// against the vocabulary beside the program and prints each finding as FILE:LINE:COLUMN: KIND: TEXT.
class QCliLintCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("lint"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
};
