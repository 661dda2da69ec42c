#pragma once

#include "QCliCommand.h"

// "snd": sound files. "list" shows each sound with its numbers and the facts of its WAV; "extract"
// writes every sound as a WAV file of its own.
class QCliSndCommand : public QCliCommand
{
public:
    QString name() const override { return QStringLiteral("snd"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;
    bool readsText() const override { return false; }

    // Reads a sound file into the model and writes it back; for "resave".
    static bool resave(const QString& input, const QString& output, QString* problem);
};
