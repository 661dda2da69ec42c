#include "QHandOff.h"

#include <QDir>
#include <QFileInfo>

QHandOff::QHandOff(const QString& path) : file(path) {}

QString QHandOff::defaultPath()
{
    return QDir::tempPath() + QStringLiteral("/open.tv3");
}

bool QHandOff::claim()
{
    return file.open(QIODevice::WriteOnly);
}

bool QHandOff::append(const QString& fileName)
{
    if (!file.isOpen() && !file.open(QIODevice::WriteOnly | QIODevice::Append)) return false;
    file.seek(file.size());
    QByteArray line = QFileInfo(fileName).absoluteFilePath().toLocal8Bit();
    line.append('\n');
    const bool written = file.write(line) == line.size();
    file.close();
    return written;
}

QStringList QHandOff::take()
{
    QFile reader(file.fileName());
    if (!reader.open(QIODevice::ReadOnly)) return QStringList();
    QByteArray bytes = reader.readAll();
    // Another start may append while we read; keep reading until the size stands still so that the
    // truncation below only removes what was read.
    while (reader.size() > bytes.size()) {
        reader.seek(bytes.size());
        bytes += reader.readAll();
    }
    reader.close();

    QStringList paths;
    for (const QByteArray& part : bytes.split('\n')) {
        if (!part.isEmpty()) paths << QString::fromLocal8Bit(part);
    }
    if (!bytes.isEmpty()) {
        QFile truncate(file.fileName());
        if (truncate.open(QIODevice::WriteOnly)) truncate.close();
    }
    return paths;
}
