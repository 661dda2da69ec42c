#pragma once

#include "QMugenEntry.h"

#include <QAbstractListModel>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

// The program's settings and, as a list model, its configured M.U.G.E.N. executables. Settings are read
// by key: defaults are typed (int, bool, QString), values loaded from a file are strings and readers
// convert them with toInt() or toBool(). The same file format serves "config.xml" and exported ".tvc3"
// configurations.
class QMugenModel : public QAbstractListModel
{
    Q_OBJECT

public:
    // At most this many executables are kept in a configuration file.
    static constexpr int MaxEntries = 50;

    explicit QMugenModel(QObject* parent = nullptr);
    ~QMugenModel() override;

    QList<QMugenEntry*> entries;
    QMap<QString, QVariant> settings;

    // An unknown key is inserted as an invalid value, which reads as 0, false or an empty string.
    QVariant& operator[](const QString& key);

    // Resets to the defaults and overlays the file. False if the file is missing, unreadable or not a
    // configuration; the defaults then stand.
    bool load(const QString& path);
    // Writes every setting and the executables in row order. A failed save leaves the old file intact.
    bool save(const QString& path);

    // Clears the settings and the executables and puts back the built-in defaults.
    void resetToDefaults();

    int addEntry(const QString& name, const QString& exe, const QString& params, const QString& icon);
    bool remove(int row);
    // Moves the row at from so that it ends up at row to.
    bool move(int from, int to);
    void clear();
    // The executable at row, or nullptr outside the list.
    QMugenEntry* entry(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    void setDefaults();
    void deleteEntries();
};

// The program's one configuration, made by the entry routine.
extern QMugenModel* mugenModel;

// Settings as models read them: the fallback stands when there is no configuration (the command-line
// tool, tests) or the key holds no value of that kind.
uint numberSetting(const char* key, uint fallback);
bool flagSetting(const char* key, bool fallback);
