#pragma once

#include <QString>
#include <QStringList>

// Runs the real tavrel-cli from the build's bin/ folder, as the command-line tests do.
namespace CliRunner {

struct Result
{
    int exitCode = -1; // -1: did not finish in time; -2: crashed
    QString out;
    QString err;
};

QString toolPath();
Result run(const QStringList& arguments);

} // namespace CliRunner
