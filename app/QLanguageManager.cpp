#include "QLanguageManager.h"

#include "QTranslationUnit.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

QLanguageManager* languageManager = nullptr;

namespace {

const QString defaultLanguage = QStringLiteral("en-us");

bool readInfo(const QString& path, QLanguageInfo& info)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement()) return false;
    while (xml.readNextStartElement()) {
        const QStringView tag = xml.name();
        if (tag == QLatin1String("name"))
            info.name = xml.readElementText().trimmed();
        else if (tag == QLatin1String("author"))
            info.author = xml.readElementText().trimmed();
        else if (tag == QLatin1String("contact"))
            info.contact = xml.readElementText().trimmed();
        else
            xml.skipCurrentElement();
    }
    return !xml.hasError();
}

} // namespace

QLanguageManager::QLanguageManager(QCoreApplication* app, const QString& folderPath, QObject* parent)
    : QObject(parent), application(app), folder(folderPath)
{
    const QStringList dirs = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& dir : dirs) {
        QLanguageInfo info;
        if (!readInfo(folder + QLatin1Char('/') + dir + QStringLiteral("/info.xml"), info)) continue;
        if (info.name.isEmpty()) info.name = dir;
        languages.insert(dir, info);
    }
    // The program's own texts are English: that language needs no folder to be offered.
    if (!languages.contains(defaultLanguage))
        languages.insert(defaultLanguage, {QStringLiteral("English (United States)"), QString(), QString()});
}

QLanguageManager::~QLanguageManager()
{
    removeUnits();
}

void QLanguageManager::removeUnits()
{
    for (QTranslationUnit* unit : std::as_const(units)) {
        if (application) application->removeTranslator(unit);
        delete unit;
    }
    units.clear();
}

bool QLanguageManager::apply(const QString& name)
{
    if (!languages.contains(name)) return false;
    removeUnits();
    const QDir dir(folder + QLatin1Char('/') + name);
    const QStringList files =
        dir.entryList({QStringLiteral("*.qm")}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QString& file : files) {
        auto* unit = new QTranslationUnit;
        if (!unit->loadFile(dir.filePath(file))) {
            delete unit;
            continue;
        }
        if (application) application->installTranslator(unit);
        units.append(unit);
    }
    currentName = name;
    emit langChanged();
    return true;
}

QStringList QLanguageManager::installedFiles() const
{
    QStringList list;
    for (const QTranslationUnit* unit : units)
        list.append(unit->path());
    return list;
}
