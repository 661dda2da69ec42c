#pragma once

#include <QAbstractListModel>
#include <QColor>
#include <QHash>
#include <QString>
#include <QStringList>

class QSyntaxFormats;

// One colour of a colour set with the text style it gives.
struct QColorsetEntry
{
    QColor color = QColor(0, 0, 0);
    bool bold = false;
    bool italic = false;

    bool operator==(const QColorsetEntry& other) const
    {
        return color == other.color && bold == other.bold && italic == other.italic;
    }
};

using QColorset = QHash<QString, QColorsetEntry>;

// The colour sets of "/colorsets": one XML file each, with one element per colour key whose text is
// "r,g,b" and whose "bold" and "italic" attributes style text. The user's own set is "Custom.xml".
// As a list model it shows the keys of the current set, one row each, for the options dialog:
// the label as display, the colour as decoration, the key and the style under the roles below.
class QColorsetManager : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role
    {
        KeyRole = Qt::UserRole,
        BoldRole,
        ItalicRole
    };

    explicit QColorsetManager(const QString& folder, QObject* parent = nullptr);

    // Every colour key in the order of the options dialog, and the untranslated label of one.
    static QStringList keys();
    static QString label(const QString& key);
    // Reads "r,g,b"; false (and color untouched) when the text doesn't match or a part exceeds 255.
    static bool parseColor(const QString& text, QColor& color);

    QStringList names() const;
    QString current() const { return currentName; }
    bool contains(const QString& name) const { return sets.contains(name); }
    // The entries a set gives, keyed by colour key; empty for an unknown set.
    QColorset colorset(const QString& name) const { return sets.value(name); }

    // Makes a colour set current; applyTo() then writes it into a format table. False for an unknown
    // name, and nothing changes then.
    bool apply(const QString& name);

    // The colour of a key in the current set; black when the set lacks it.
    QColor color(const QString& key) const { return entry(key).color; }
    QColorsetEntry entry(const QString& key) const { return sets.value(currentName).value(key); }

    // Writes the current set into the nine coloured slots of a format table. A key the set lacks is
    // added to it with the default entry. True when any slot really changed, so that open editors
    // need highlighting again.
    bool applyTo(QSyntaxFormats& formats);

    // Writes the current set to a file; saveCustom() writes it as "Custom.xml" of the folder and makes
    // that set current.
    bool save(const QString& path) const;
    bool saveCustom();
    QString customFile() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void colorsetChanged();

private:
    static bool load(const QString& path, QColorset& set);

    QString folder;
    QHash<QString, QColorset> sets;
    QString currentName;
};

extern QColorsetManager* colorsetManager;
