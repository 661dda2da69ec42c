#pragma once

#include "QCliCommand.h"

// "resave": reads a content file into the editor's model of it and writes it straight back, so that
// what the editor would do to an untouched file can be checked against the original byte for byte.
// Definitions and commands go through QDefinitions and QCommands with their sections and keys
// recognised, animations through QAnimations bound to the AIR text; the other text kinds through a
// plain QSyntaxTextEditor.
class QCliResaveCommand : public QCliCommand
{
public:
    // Reads input into a model and writes the model to output; false with the reason on failure.
    using Resaver = bool (*)(const QString& input, const QString& output, QString* problem);

    QString name() const override { return QStringLiteral("resave"); }
    QString summary() const override;
    QString usage() const override;
    int run(QCliContext& context) override;

    // The resaver of a file suffix (without the dot, any case). Kinds without a model of their own are
    // read as plain text documents.
    static Resaver resaverFor(const QString& suffix);

private:
    static bool resaveText(const QString& input, const QString& output, QString* problem);
};
