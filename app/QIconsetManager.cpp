#include "QIconsetManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

QIconsetManager* iconsetManager = nullptr;

namespace {

const QString iconsetFile = QStringLiteral("/Iconset.xml");

} // namespace

QIconsetManager::QIconsetManager(const QString& folderPath, QObject* parent)
    : QObject(parent), folder(folderPath)
{
    const QStringList dirs = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& dir : dirs)
        if (QFileInfo::exists(folder + QLatin1Char('/') + dir + iconsetFile)) sets.append(dir);
}

bool QIconsetManager::apply(const QString& name)
{
    if (name.isEmpty()) {
        currentName.clear();
        files.clear();
        icons.clear();
        emit iconsetChanged();
        return true;
    }
    if (!sets.contains(name)) return false;

    const QDir setDir(folder + QLatin1Char('/') + name);
    QFile file(setDir.filePath(QStringLiteral("Iconset.xml")));
    if (!file.open(QIODevice::ReadOnly)) return false;
    QHash<QString, QString> loaded;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement()) return false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("icon")) continue;
        const QString action = xml.attributes().value(QLatin1String("name")).toString();
        const QString image = xml.attributes().value(QLatin1String("file")).toString();
        if (!action.isEmpty() && !image.isEmpty()) loaded.insert(action, setDir.filePath(image));
    }
    if (xml.hasError()) return false;

    currentName = name;
    files = loaded;
    icons.clear();
    for (auto it = files.constBegin(); it != files.constEnd(); ++it)
        if (QFileInfo::exists(it.value())) icons.insert(it.key(), QIcon(it.value()));
    emit iconsetChanged();
    return true;
}
