#pragma once

#include <QString>

// The process-wide tables that documents need: the recognisers of the text elements, the vocabularies
// and the checkers they drive. Every program (the editor, the command-line tool, the sample generator,
// benchmarks) makes one QModelTables at its start and keeps it for its run, so that no code path has
// to remember to register anything. The vocabularies are read on the first call of checkers(): a
// command that never checks text does not pay for reading them.
class QModelTables
{
public:
    // dataDir holds syntax_mugen.xml and syntax_lua.xml; empty means the program's own folder.
    explicit QModelTables(const QString& dataDir = QString());
    ~QModelTables();
    QModelTables(const QModelTables&) = delete;
    QModelTables& operator=(const QModelTables&) = delete;

    // Reads the vocabularies and installs the checkers, once per run. False when a vocabulary can't be
    // read; documents then open with an empty vocabulary. Without a QModelTables alive it does nothing
    // and answers false.
    static bool checkers();
    // The folder the vocabularies come from, or empty without a QModelTables alive.
    static QString dataDir();

private:
    QString folder;
    int loaded = -1; // -1 not tried, 0 failed, 1 read
};
