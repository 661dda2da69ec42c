#include "QTemplateStore.h"

#include <QDir>
#include <QFileInfo>
#include <QStringListModel>

QTemplateStore::QTemplateStore(const QString& directory, const QString& suffix, QObject* parent)
    : QObject(parent), m_directory(directory), suffix(suffix), m_model(new QStringListModel(this))
{
    scan();
}

void QTemplateStore::setDirectory(const QString& directory)
{
    m_directory = directory;
    scan();
}

QString QTemplateStore::path(const QString& name) const
{
    return QDir(m_directory).filePath(name + QLatin1Char('.') + suffix);
}

void QTemplateStore::scan()
{
    m_names.clear();
    const QFileInfoList files =
        QDir(m_directory)
            .entryInfoList({QStringLiteral("*.") + suffix}, QDir::Files | QDir::Readable,
                           QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo& file : files)
        m_names << file.completeBaseName();
    m_model->setStringList(m_names);
    emit scanned();
}
