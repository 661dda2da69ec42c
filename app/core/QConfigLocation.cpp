#include "QConfigLocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

// Callers write names as "/config.xml" as well as "config.xml".
QString fileIn(const QString& dir, QString fileName)
{
    while (fileName.startsWith(QLatin1Char('/')) || fileName.startsWith(QLatin1Char('\\')))
        fileName.remove(0, 1);
    return QDir(dir).filePath(fileName);
}

} // namespace

QConfigLocation::QConfigLocation(const QString& appDir, const QString& userDir, bool appDirWritable)
    : m_appDir(appDir), m_userDir(userDir), m_appDirWritable(appDirWritable)
{}

QConfigLocation QConfigLocation::standard()
{
    // A folder named by TAVREL_CONFIG_DIR replaces both places: for portable set-ups and for tests
    // that must not write into the build tree.
    const QString forced = qEnvironmentVariable("TAVREL_CONFIG_DIR");
    if (!forced.isEmpty()) return QConfigLocation(forced, forced, true);
    const QString appDir = QCoreApplication::applicationDirPath();
    return QConfigLocation(appDir, QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation),
                           isWritableDir(appDir));
}

bool QConfigLocation::isWritableDir(const QString& dir)
{
    if (dir.isEmpty() || !QFileInfo(dir).isDir()) return false;
    QTemporaryFile probe(fileIn(dir, QStringLiteral(".tavrel-probe-XXXXXX")));
    return probe.open();
}

QString QConfigLocation::readPath(const QString& fileName) const
{
    if (!m_appDirWritable) {
        const QString user = fileIn(m_userDir, fileName);
        if (QFileInfo(user).isFile()) return user;
    }
    const QString app = fileIn(m_appDir, fileName);
    if (QFileInfo(app).isFile()) return app;
    return fileIn(m_appDirWritable ? m_appDir : m_userDir, fileName);
}

QString QConfigLocation::writePath(const QString& fileName) const
{
    if (m_appDirWritable) return fileIn(m_appDir, fileName);
    QDir().mkpath(m_userDir);
    return fileIn(m_userDir, fileName);
}
