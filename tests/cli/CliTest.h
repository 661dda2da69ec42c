#pragma once

#include "CliRunner.h"
#include "FileBytes.h"
#include "TestData.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

// What the command-line tests share: files written for the tool and read back from it, and its JSON.
namespace CliTest {

inline QString write(const QTemporaryDir& dir, const QString& name, const QByteArray& bytes)
{
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return QString();
    file.write(bytes);
    return path;
}

inline QJsonDocument json(const CliRunner::Result& result)
{
    return QJsonDocument::fromJson(result.out.toUtf8());
}

} // namespace CliTest

#define TAVREL_REQUIRE_CLI()                                                                                 \
    do {                                                                                                     \
        if (!QFile::exists(CliRunner::toolPath())) QSKIP("tavrel-cli is not built next to the tests");       \
    } while (false)
