#include "QSCtrlManager.h"

#include "QMugenModel.h"
#include "QTextEncoding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace {

int defaultCodec()
{
    return int(numberSetting("default_codepage", 0));
}

} // namespace

QSCtrlManager::QSCtrlManager(const QString& directory, QObject* parent)
    : QTemplateStore(directory.isEmpty() ? QCoreApplication::applicationDirPath() + QLatin1String("/sctrls")
                                         : directory,
                     QStringLiteral("sctrl"), parent)
{}

QString QSCtrlManager::read(const QString& name) const
{
    QFile file(path(name));
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly)) return QString();
    return QTextEncoding::decode(file.readAll(), defaultCodec());
}

bool QSCtrlManager::write(const QString& nameOrPath, const QString& text)
{
    QSaveFile file(QDir::isAbsolutePath(nameOrPath) ? nameOrPath : path(nameOrPath));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(QTextEncoding::encode(text, defaultCodec()));
    const bool written = file.commit();
    scan();
    return written;
}

bool QSCtrlManager::remove(const QString& name)
{
    const bool removed = !name.isEmpty() && QFile::remove(path(name));
    scan();
    return removed;
}
