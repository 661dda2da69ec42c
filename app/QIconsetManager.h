#pragma once

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <QStringList>

// The iconsets of "/iconsets": one folder each with "Iconset.xml", whose "icon" elements give the image
// ("file", relative to the folder) for an action name ("name").
class QIconsetManager : public QObject
{
    Q_OBJECT
public:
    explicit QIconsetManager(const QString& folder, QObject* parent = nullptr);

    QStringList names() const { return sets; }
    QString current() const { return currentName; }

    // Makes the iconset current; an empty name means no icons at all. False for an unknown name or a
    // file that can't be read, and nothing changes then.
    bool apply(const QString& name);

    // The icon of an action in the current iconset; a null icon when the set has none for it.
    QIcon icon(const QString& actionName) const { return icons.value(actionName); }
    // The image file of an action in the current iconset, empty when there is none.
    QString iconFile(const QString& actionName) const { return files.value(actionName); }

signals:
    void iconsetChanged();

private:
    QString folder;
    QStringList sets;
    QString currentName;
    QHash<QString, QString> files;
    QHash<QString, QIcon> icons;
};

extern QIconsetManager* iconsetManager;
