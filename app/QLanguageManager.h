#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class QCoreApplication;
class QTranslationUnit;

// What a language folder's "info.xml" says about it.
struct QLanguageInfo
{
    QString name;
    QString author;
    QString contact;
};

// The languages of "/languages": one folder each with "info.xml" and the ".qm" files of its
// translations. Applying a language replaces the translators installed on the application.
class QLanguageManager : public QObject
{
    Q_OBJECT
public:
    QLanguageManager(QCoreApplication* app, const QString& folder, QObject* parent = nullptr);
    ~QLanguageManager() override;

    // Folder names, sorted; the default "en-us" is always among them.
    QStringList names() const { return languages.keys(); }
    QString current() const { return currentName; }
    QLanguageInfo info(const QString& name) const { return languages.value(name); }

    // Removes the translators of the previous language, installs those of the new one and emits
    // langChanged(). False for an unknown name, and nothing changes then. Files that fail to load
    // are passed over: the texts they would translate stay in English.
    bool apply(const QString& name);

    // The translation files installed now.
    QStringList installedFiles() const;

signals:
    void langChanged();

private:
    void removeUnits();

    QCoreApplication* application;
    QString folder;
    QMap<QString, QLanguageInfo> languages;
    QString currentName;
    QList<QTranslationUnit*> units;
};

extern QLanguageManager* languageManager;
