#include "QPresetManager.h"

#include "QColorsetManager.h"
#include "QIconsetManager.h"
#include "QStylesheetManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>
#include <QXmlStreamReader>

QPresetManager* presetManager = nullptr;

namespace {

const QString defaultSet = QStringLiteral("Classic");
const QString defaultMetric = QStringLiteral("220,0,30");

// Reads the element the reader stands on, with everything below it.
QPresetElement readElement(QXmlStreamReader& xml)
{
    QPresetElement element;
    element.tag = xml.name().toString();
    const QXmlStreamAttributes attributes = xml.attributes();
    for (const QXmlStreamAttribute& attribute : attributes)
        element.attributes.insert(attribute.name().toString(), attribute.value().toString());
    while (xml.readNextStartElement())
        element.children.append(readElement(xml));
    return element;
}

const QPresetElement* findIn(const QList<QPresetElement>& list, const QString& tag, const QString& name)
{
    for (const QPresetElement& element : list)
        if (element.tag == tag && (name.isNull() || element.attribute(QStringLiteral("name")) == name))
            return &element;
    return nullptr;
}

} // namespace

const QPresetElement* QPresetElement::child(const QString& childTag, const QString& name) const
{
    return findIn(children, childTag, name);
}

QPresetManager::QPresetManager(const QString& appDir, QObject* parent)
    : QObject(parent), folder(appDir + QStringLiteral("/presets")), screenDpi(systemDpi())
{
    parseMetric(defaultMetric, panelValues);
    parseMetric(defaultMetric, extraValues);
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.xml")}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo& file : files) {
        QPresetData data;
        if (load(file.absoluteFilePath(), data)) presets.insert(file.completeBaseName(), data);
    }
}

bool QPresetManager::load(const QString& path, QPresetData& data) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("preset")) return false;
    const QXmlStreamAttributes root = xml.attributes();
    auto rootValue = [&root](const char* name, const QString& fallback) {
        const QString key = QString::fromLatin1(name);
        return root.hasAttribute(key) ? root.value(key).toString() : fallback;
    };
    data.stylesheet = rootValue("stylesheet", defaultSet);
    data.iconset = rootValue("iconset", defaultSet);
    data.colorset = rootValue("colorset", defaultSet);
    data.panelMetric = rootValue("panel-metric", defaultMetric);
    data.extraMetric = rootValue("extra-metric", defaultMetric);
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("editor") || xml.name() == QLatin1String("extra"))
            data.editors.append(readElement(xml));
        else
            xml.skipCurrentElement();
    }
    return !xml.hasError();
}

QStringList QPresetManager::names() const
{
    QStringList list = presets.keys();
    list.sort(Qt::CaseInsensitive);
    return list;
}

const QPresetData* QPresetManager::preset(const QString& name) const
{
    auto it = presets.constFind(name);
    return it == presets.constEnd() ? nullptr : &it.value();
}

bool QPresetManager::apply(const QString& presetName, const QString& iconset, const QString& stylesheet,
                           const QString& colorset)
{
    const QPresetData* data = preset(presetName);
    if (!data) return false;
    currentName = presetName;
    parseMetric(data->panelMetric, panelValues);
    parseMetric(data->extraMetric, extraValues);
    emit presetChanged();

    bool ok = true;
    if (iconsetManager) ok = iconsetManager->apply(iconset.isEmpty() ? data->iconset : iconset) && ok;
    if (stylesheetManager)
        ok = stylesheetManager->apply(stylesheet.isEmpty() ? data->stylesheet : stylesheet) && ok;
    if (colorsetManager) ok = colorsetManager->apply(colorset.isEmpty() ? data->colorset : colorset) && ok;
    return ok;
}

const QPresetElement* QPresetManager::editor(const QString& name) const
{
    const QPresetData* data = preset(currentName);
    return data ? findIn(data->editors, QStringLiteral("editor"), name) : nullptr;
}

const QPresetElement* QPresetManager::extra(const QString& name) const
{
    const QPresetData* data = preset(currentName);
    return data ? findIn(data->editors, QStringLiteral("extra"), name) : nullptr;
}

int QPresetManager::systemDpi()
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return 96;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return 96;
    const int dpi = qRound(screen->logicalDotsPerInchY());
    return dpi > 0 ? dpi : 96;
}

bool QPresetManager::parseMetric(const QString& text, QList<int>& triple)
{
    static const QRegularExpression pattern(QStringLiteral("^([0-9]{1,3}),([0-9]{1,3}),([0-9]{1,3})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) return false;
    triple = {match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()};
    return true;
}

QList<int> QPresetManager::scaledTriple(const QList<int>& triple) const
{
    QList<int> result;
    for (int value : triple)
        result.append(scaled(value));
    return result;
}
