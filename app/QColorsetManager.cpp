#include "QColorsetManager.h"

#include "QSyntaxFormats.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QRegularExpression>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

QColorsetManager* colorsetManager = nullptr;

namespace {

struct KeyLabel
{
    const char* key;
    const char* label;
};

const KeyLabel keyLabels[] = {
    {"comment", QT_TRANSLATE_NOOP("QColorsetManager", "Comments")},
    {"block", QT_TRANSLATE_NOOP("QColorsetManager", "Block header")},
    {"number", QT_TRANSLATE_NOOP("QColorsetManager", "Number")},
    {"string", QT_TRANSLATE_NOOP("QColorsetManager", "String")},
    {"keyword", QT_TRANSLATE_NOOP("QColorsetManager", "Block parameter")},
    {"value", QT_TRANSLATE_NOOP("QColorsetManager", "Parameter literal value")},
    {"controller", QT_TRANSLATE_NOOP("QColorsetManager", "Block controller")},
    {"trigger", QT_TRANSLATE_NOOP("QColorsetManager", "Trigger")},
    {"const", QT_TRANSLATE_NOOP("QColorsetManager", "Constant")},
    {"paren", QT_TRANSLATE_NOOP("QColorsetManager", "Matched parenthesis")},
    {"paren_range", QT_TRANSLATE_NOOP("QColorsetManager", "Matched parenthesis range")},
    {"block_range", QT_TRANSLATE_NOOP("QColorsetManager", "Block range")},
    {"line", QT_TRANSLATE_NOOP("QColorsetManager", "Line highlight")},
    {"back_start", QT_TRANSLATE_NOOP("QColorsetManager", "Background start")},
    {"back_end", QT_TRANSLATE_NOOP("QColorsetManager", "Background end")},
    {"clsn1", QT_TRANSLATE_NOOP("QColorsetManager", "CLSN 1")},
    {"clsn2", QT_TRANSLATE_NOOP("QColorsetManager", "CLSN 2")},
    {"clsn1def", QT_TRANSLATE_NOOP("QColorsetManager", "CLSN 1 Default")},
    {"clsn2def", QT_TRANSLATE_NOOP("QColorsetManager", "CLSN 2 Default")},
};
const int keyCount = int(sizeof(keyLabels) / sizeof(keyLabels[0]));

const QString customName = QStringLiteral("Custom");

bool isTrue(QStringView text)
{
    return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1");
}

} // namespace

QColorsetManager::QColorsetManager(const QString& folderPath, QObject* parent)
    : QAbstractListModel(parent), folder(folderPath)
{
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.xml")}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo& file : files) {
        QColorset set;
        if (load(file.absoluteFilePath(), set)) sets.insert(file.completeBaseName(), set);
    }
}

QStringList QColorsetManager::keys()
{
    QStringList list;
    for (const KeyLabel& item : keyLabels)
        list.append(QString::fromLatin1(item.key));
    return list;
}

QString QColorsetManager::label(const QString& key)
{
    for (const KeyLabel& item : keyLabels)
        if (key == QLatin1String(item.key)) return QString::fromLatin1(item.label);
    return QString();
}

bool QColorsetManager::parseColor(const QString& text, QColor& color)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,3})\\,(\\d{1,3})\\,(\\d{1,3})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) return false;
    const int r = match.captured(1).toInt(), g = match.captured(2).toInt(), b = match.captured(3).toInt();
    if (r > 255 || g > 255 || b > 255) return false;
    color = QColor(r, g, b);
    return true;
}

bool QColorsetManager::load(const QString& path, QColorset& set)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement()) return false;
    const QStringList known = keys();
    while (xml.readNextStartElement()) {
        const QString key = xml.name().toString();
        if (!known.contains(key)) {
            xml.skipCurrentElement();
            continue;
        }
        QColorsetEntry entry;
        entry.bold = isTrue(xml.attributes().value(QLatin1String("bold")));
        entry.italic = isTrue(xml.attributes().value(QLatin1String("italic")));
        if (parseColor(xml.readElementText().trimmed(), entry.color)) set.insert(key, entry);
    }
    return !xml.hasError();
}

QStringList QColorsetManager::names() const
{
    QStringList list = sets.keys();
    list.sort(Qt::CaseInsensitive);
    return list;
}

bool QColorsetManager::apply(const QString& name)
{
    if (!sets.contains(name)) return false;
    currentName = name;
    if (rowCount() > 0) emit dataChanged(index(0), index(rowCount() - 1));
    emit colorsetChanged();
    return true;
}

bool QColorsetManager::applyTo(QSyntaxFormats& formats)
{
    auto set = sets.find(currentName);
    if (set == sets.end()) return false;
    bool changed = false;
    for (int slot = 0;; ++slot) {
        const QString key = QSyntaxFormats::colorsetKey(slot);
        if (key.isEmpty()) break;
        auto found = set->find(key);
        if (found == set->end()) found = set->insert(key, QColorsetEntry());
        const QColorsetEntry& entry = found.value();
        QTextCharFormat& format = formats[slot];
        const bool same =
            format.hasProperty(QTextFormat::ForegroundBrush) && format.foreground().color() == entry.color &&
            (format.fontWeight() >= QFont::Bold) == entry.bold && format.fontItalic() == entry.italic;
        if (same) continue;
        format.setForeground(entry.color);
        format.setFontWeight(entry.bold ? QFont::Bold : QFont::Normal);
        format.setFontItalic(entry.italic);
        changed = true;
    }
    return changed;
}

bool QColorsetManager::save(const QString& path) const
{
    const QColorset set = sets.value(currentName);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("colorset"));
    for (const QString& key : keys()) {
        auto it = set.constFind(key);
        if (it == set.constEnd()) continue;
        xml.writeStartElement(key);
        if (it->bold) xml.writeAttribute(QStringLiteral("bold"), QStringLiteral("true"));
        if (it->italic) xml.writeAttribute(QStringLiteral("italic"), QStringLiteral("true"));
        xml.writeCharacters(
            QStringLiteral("%1,%2,%3").arg(it->color.red()).arg(it->color.green()).arg(it->color.blue()));
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError() && file.commit();
}

QString QColorsetManager::customFile() const
{
    return folder + QLatin1Char('/') + customName + QStringLiteral(".xml");
}

bool QColorsetManager::saveCustom()
{
    if (!sets.contains(currentName) || !save(customFile())) return false;
    sets.insert(customName, sets.value(currentName));
    return apply(customName);
}

int QColorsetManager::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : keyCount;
}

QVariant QColorsetManager::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= keyCount) return QVariant();
    const QString key = QString::fromLatin1(keyLabels[index.row()].key);
    const QColorsetEntry item = entry(key);
    switch (role) {
    case Qt::DisplayRole:
        return tr(keyLabels[index.row()].label);
    case Qt::DecorationRole:
    case Qt::EditRole:
        return item.color;
    case KeyRole:
        return key;
    case BoldRole:
        return item.bold;
    case ItalicRole:
        return item.italic;
    default:
        return QVariant();
    }
}

bool QColorsetManager::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.row() < 0 || index.row() >= keyCount) return false;
    auto set = sets.find(currentName);
    if (set == sets.end()) return false;
    QColorsetEntry& item = (*set)[QString::fromLatin1(keyLabels[index.row()].key)];
    switch (role) {
    case Qt::DecorationRole:
    case Qt::EditRole: {
        const QColor color = value.value<QColor>();
        if (!color.isValid()) return false;
        item.color = color;
        break;
    }
    case BoldRole:
        item.bold = value.toBool();
        break;
    case ItalicRole:
        item.italic = value.toBool();
        break;
    default:
        return false;
    }
    emit dataChanged(index, index, {role});
    return true;
}

Qt::ItemFlags QColorsetManager::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}
