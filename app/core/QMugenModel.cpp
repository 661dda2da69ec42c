#include "QMugenModel.h"

#include "QXmlParser.h"

#include <QFile>
#include <QIcon>
#include <QSaveFile>
#include <QXmlStreamWriter>

QMugenModel* mugenModel = nullptr;

namespace {

const QString entryPrefix = QStringLiteral("mugen_");

QString entryKey(int n, const char* field)
{
    return QStringLiteral("mugen_%1_%2").arg(n).arg(QLatin1String(field));
}

} // namespace

QMugenModel::QMugenModel(QObject* parent) : QAbstractListModel(parent)
{
    setDefaults();
}

QMugenModel::~QMugenModel()
{
    deleteEntries();
}

QVariant& QMugenModel::operator[](const QString& key)
{
    return settings[key];
}

void QMugenModel::setDefaults()
{
    const QString empty = QStringLiteral("");
    QMap<QString, QVariant>& s = settings;
    s[QStringLiteral("language")] = QStringLiteral("en-us");
    s[QStringLiteral("preset")] = QStringLiteral("Classic");
    s[QStringLiteral("iconset")] = empty;
    s[QStringLiteral("stylesheet")] = empty;
    s[QStringLiteral("colorset")] = empty;
    s[QStringLiteral("use_opengl")] = false;
    s[QStringLiteral("zoom_level")] = 2;
    s[QStringLiteral("main_axis_x")] = 150;
    s[QStringLiteral("main_axis_y")] = 250;
    s[QStringLiteral("zoom_mode")] = 1;
    s[QStringLiteral("save_only_modified")] = 1;
    s[QStringLiteral("cache_type")] = 0;
    s[QStringLiteral("cache_compression")] = true;
    s[QStringLiteral("undo_limit")] = 64;
    s[QStringLiteral("max_history")] = 30;
    s[QStringLiteral("onion_effect")] = 1;
    s[QStringLiteral("onion_opacity")] = 100;
    s[QStringLiteral("thumb_size")] = 64;
    s[QStringLiteral("switch_to_imgpal")] = true;
    s[QStringLiteral("confirm_delete")] = true;
    s[QStringLiteral("confirm_close")] = true;
    s[QStringLiteral("confirm_editimg")] = true;
    s[QStringLiteral("show_addsprite_dialog")] = true;
    s[QStringLiteral("show_addsound_dialog")] = true;
    s[QStringLiteral("show_addpalette_dialog")] = true;
    s[QStringLiteral("backup_onload")] = false;
    s[QStringLiteral("ask_save_palettes")] = true;
    s[QStringLiteral("show_trans_color")] = false;
    s[QStringLiteral("sort_file_names")] = true;
    s[QStringLiteral("enable_file_watcher")] = false;
    s[QStringLiteral("show_spr_cross")] = true;
    s[QStringLiteral("show_anim_cross")] = true;
    s[QStringLiteral("show_left_panel")] = true;
    s[QStringLiteral("show_right_panel")] = true;
    s[QStringLiteral("show_sctrl_list")] = true;
    s[QStringLiteral("show_rulers")] = true;
    s[QStringLiteral("show_clsn1")] = true;
    s[QStringLiteral("show_clsn2")] = true;
    s[QStringLiteral("show_clsn_def1")] = true;
    s[QStringLiteral("show_clsn_def2")] = true;
    s[QStringLiteral("background_type")] = 1;
    s[QStringLiteral("background_x")] = -213;
    s[QStringLiteral("background_y")] = -208;
    s[QStringLiteral("background_file")] = empty;
    s[QStringLiteral("crosshair_type")] = 0;
    s[QStringLiteral("crosshair_sprite")] = empty;
    s[QStringLiteral("crosshair_animation")] = empty;
    s[QStringLiteral("crosshair_extra")] = empty;
    s[QStringLiteral("default_codepage")] = 0;
    s[QStringLiteral("font_name")] = QStringLiteral("Courier");
    s[QStringLiteral("font_size")] = 10;
    s[QStringLiteral("code_line_numbers")] = true;
    s[QStringLiteral("code_highlight_line")] = true;
    s[QStringLiteral("code_highlight_blocks")] = false;
    s[QStringLiteral("code_folding_markers")] = true;
    s[QStringLiteral("code_paren_matching")] = true;
    s[QStringLiteral("auto_expand_tree")] = false;
    s[QStringLiteral("window_left")] = 0;
    s[QStringLiteral("window_top")] = 0;
    s[QStringLiteral("window_width")] = 580;
    s[QStringLiteral("window_height")] = 750;
    s[QStringLiteral("window_state")] = 0;
    s[QStringLiteral("clsn_opacity")] = 100;
}

void QMugenModel::deleteEntries()
{
    qDeleteAll(entries);
    entries.clear();
}

void QMugenModel::resetToDefaults()
{
    beginResetModel();
    deleteEntries();
    settings.clear();
    setDefaults();
    endResetModel();
}

bool QMugenModel::load(const QString& path)
{
    beginResetModel();
    deleteEntries();
    settings.clear();
    setDefaults();

    bool rootFound = false;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        QXmlParser xml(&file);
        rootFound = xml.findRoot(QStringLiteral("configuration"));
        while (xml.nextElement()) {
            if (xml.name() != QLatin1String("config")) continue;
            const QString key = xml.attribute(QStringLiteral("name"));
            if (!key.isEmpty()) settings[key] = xml.attribute(QStringLiteral("value"));
        }
    }

    // Numbers may have gaps (hand-edited files); the rows close them up.
    for (int n = 0; n < MaxEntries; ++n) {
        const auto name = settings.constFind(entryKey(n, "name"));
        if (name == settings.constEnd()) continue;
        auto* e = new QMugenEntry;
        e->name = name->toString();
        e->exe = settings.value(entryKey(n, "exe")).toString();
        e->params = settings.value(entryKey(n, "params")).toString();
        e->icon = settings.value(entryKey(n, "icon")).toString();
        entries.append(e);
    }
    endResetModel();
    return rootFound;
}

bool QMugenModel::save(const QString& path)
{
    for (auto it = settings.begin(); it != settings.end();) {
        if (it.key().startsWith(entryPrefix))
            it = settings.erase(it);
        else
            ++it;
    }
    for (int n = 0; n < entries.size(); ++n) {
        const QMugenEntry* e = entries.at(n);
        settings[entryKey(n, "name")] = e->name;
        settings[entryKey(n, "exe")] = e->exe;
        settings[entryKey(n, "params")] = e->params;
        settings[entryKey(n, "icon")] = e->icon;
    }

    QByteArray document;
    QXmlStreamWriter xml(&document);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("configuration"));
    for (auto it = settings.constBegin(); it != settings.constEnd(); ++it) {
        xml.writeEmptyElement(QStringLiteral("config"));
        xml.writeAttribute(QStringLiteral("name"), it.key());
        xml.writeAttribute(QStringLiteral("value"), it.value().toString());
    }
    xml.writeEndElement();
    xml.writeEndDocument();

    // Written aside and renamed over the old file, so that a failure never leaves half a configuration.
    // Unbuffered, a short write (a full disk) shows in the count; through the buffer it would go unseen.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return false;
    if (file.write(document) != document.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

int QMugenModel::addEntry(const QString& name, const QString& exe, const QString& params, const QString& icon)
{
    const int row = entries.size();
    beginInsertRows(QModelIndex(), row, row);
    entries.append(new QMugenEntry{name, exe, params, icon});
    endInsertRows();
    return row;
}

bool QMugenModel::remove(int row)
{
    if (row < 0 || row >= entries.size()) return false;
    beginRemoveRows(QModelIndex(), row, row);
    delete entries.takeAt(row);
    endRemoveRows();
    return true;
}

bool QMugenModel::move(int from, int to)
{
    if (from < 0 || from >= entries.size() || to < 0 || to >= entries.size()) return false;
    if (from == to) return true;
    // The model API names the row before which the moved row lands, counted before the move.
    beginMoveRows(QModelIndex(), from, from, QModelIndex(), to > from ? to + 1 : to);
    entries.move(from, to);
    endMoveRows();
    return true;
}

void QMugenModel::clear()
{
    if (entries.isEmpty()) return;
    beginResetModel();
    deleteEntries();
    endResetModel();
}

QMugenEntry* QMugenModel::entry(int row) const
{
    return row >= 0 && row < entries.size() ? entries.at(row) : nullptr;
}

int QMugenModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(entries.size());
}

QVariant QMugenModel::data(const QModelIndex& index, int role) const
{
    const QMugenEntry* e = index.isValid() && !index.parent().isValid() ? entry(index.row()) : nullptr;
    if (!e || index.column() != 0) return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return e->name;
    case Qt::DecorationRole:
        return QIcon(e->icon.isEmpty() ? QStringLiteral(":/imgs/Imgs/mugen.png") : e->icon);
    default:
        return QVariant();
    }
}

uint numberSetting(const char* key, uint fallback)
{
    if (!mugenModel) return fallback;
    bool ok = false;
    const uint number = mugenModel->settings.value(QLatin1String(key)).toUInt(&ok);
    return ok ? number : fallback;
}

bool flagSetting(const char* key, bool fallback)
{
    if (!mugenModel) return fallback;
    const QVariant value = mugenModel->settings.value(QLatin1String(key));
    return value.isValid() ? value.toBool() : fallback;
}
