#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

// The stylesheets of "/styles": one folder each with "Stylesheet.css". The text is adjusted on
// loading: image urls are made to point into the stylesheet's folder as seen from the application
// folder, and sizes written "[n]" are scaled from 96 dots per inch to the screen.
class QStylesheetManager : public QObject
{
    Q_OBJECT
public:
    explicit QStylesheetManager(const QString& folder, QObject* parent = nullptr);

    QStringList names() const { return sheets; }
    QString current() const { return currentName; }

    // Sets the application's style sheet; an empty name clears it. False for an unknown name or a file
    // that can't be read, and nothing changes then.
    bool apply(const QString& name);

    // The adjusted text of a stylesheet; empty when unknown or unreadable.
    QString styleSheet(const QString& name) const;

    int dpi() const { return screenDpi; }
    void setDpi(int dpi) { screenDpi = dpi > 0 ? dpi : 96; }

signals:
    void stylesheetChanged();

private:
    bool read(const QString& name, QString& text) const;

    QString folder;
    QStringList sheets;
    QString currentName;
    int screenDpi;
};

extern QStylesheetManager* stylesheetManager;
