#include "TestData.h"

#include <QCoreApplication>
#include <QDirIterator>

namespace TestData {

QString root()
{
    const QString path = qEnvironmentVariable("TAVREL_TESTDATA");
    if (path.isEmpty() || !QDir(path).exists()) return QString();
    return QDir(path).absolutePath();
}

QString binDir()
{
    const QString path = qEnvironmentVariable("TAVREL_BIN_DIR");
    if (!path.isEmpty()) return path;
    // Test programs live in <build>/tests/bin, the shipped programs in <build>/bin.
    return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/../../bin")).absolutePath();
}

QStringList files(const QStringList& patterns)
{
    QStringList result;
    const QString base = root();
    if (base.isEmpty()) return result;
    QDirIterator it(base, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        result << it.next();
    result.sort();
    return result;
}

} // namespace TestData
