#pragma once

#include <QObject>
#include <QStringList>

class QStringListModel;

// A folder of the user's text templates, one file per template with a fixed suffix, known by base
// name in the folder's order. The list is read anew after every change the program makes.
class QTemplateStore : public QObject
{
    Q_OBJECT
public:
    QTemplateStore(const QString& directory, const QString& suffix, QObject* parent = nullptr);

    QString directory() const { return m_directory; }
    // Takes another folder and reads it.
    void setDirectory(const QString& directory);
    QStringList names() const { return m_names; }
    // The names as a list model for views.
    QStringListModel* model() const { return m_model; }
    QString path(const QString& name) const;

public Q_SLOTS:
    void scan();

Q_SIGNALS:
    void scanned();

private:
    QString m_directory;
    QString suffix;
    QStringList m_names;
    QStringListModel* m_model;
};
