#include "CliRunner.h"

#include "TestData.h"

#include <QProcess>

namespace CliRunner {

QString toolPath()
{
    return TestData::binDir() + QStringLiteral("/tavrel-cli");
}

Result run(const QStringList& arguments)
{
    QProcess process;
    process.start(toolPath(), arguments);
    Result result;
    // Generous: the real-data rows decode whole sprite files under the sanitizers.
    if (!process.waitForFinished(120000)) return result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace CliRunner
