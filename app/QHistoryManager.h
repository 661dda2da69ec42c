#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class QMenu;

// The projects opened and saved lately, newest first, kept in "history.xml" beside the configuration
// and shown as the "Open recent" menu. A path comes once: opening it again moves it to the top.
class QHistoryManager : public QObject
{
    Q_OBJECT
public:
    struct Entry
    {
        QString file;
        QString name;
    };

    // path is the history file; the list is read from it at once.
    explicit QHistoryManager(const QString& path, QObject* parent = nullptr);

    const QList<Entry>& entries() const { return m_entries; }
    // Puts the project on top, drops what falls below "max_history" and writes the file.
    void add(const QString& file, const QString& name);
    // The menu is rebuilt at each change; it belongs to whoever shows it.
    void setMenu(QMenu* menu);
    void retranslate();

public Q_SLOTS:
    void actionTriggered();
    void allTriggered();
    void clearTriggered();

Q_SIGNALS:
    void entryTriggered(const QString& fileName);

private:
    void load();
    void save() const;
    void rebuildMenu();
    // Asks to forget a project whose file is gone; false when the file is there.
    bool forgetMissing(const QString& file);

    QString path;
    QList<Entry> m_entries;
    QPointer<QMenu> menu;
};
