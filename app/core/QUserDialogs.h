#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

class QWidget;

// Every message box and file dialog of the program passes through the one installed QUserDialogs.
// The desktop program installs QWidgetDialogs; tests install a recorder that captures the exact texts
// and answers from a script, and the command-line tool installs one that never waits for a person.
class QUserDialogs
{
public:
    using Button = QMessageBox::StandardButton;
    using Buttons = QMessageBox::StandardButtons;

    virtual ~QUserDialogs();

    virtual Button message(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                           Buttons buttons, Button defaultButton) = 0;
    virtual QString openFileName(QWidget* parent, const QString& caption, const QString& dir,
                                 const QString& filter, QString* selectedFilter) = 0;
    virtual QStringList openFileNames(QWidget* parent, const QString& caption, const QString& dir,
                                      const QString& filter, QString* selectedFilter) = 0;
    virtual QString saveFileName(QWidget* parent, const QString& caption, const QString& dir,
                                 const QString& filter, QString* selectedFilter) = 0;
    virtual QString existingDirectory(QWidget* parent, const QString& caption, const QString& dir) = 0;
    // A choice among items; the chosen item, or empty on cancel.
    virtual QString item(QWidget* parent, const QString& title, const QString& label,
                         const QStringList& items, int current) = 0;

    // The installed instance. Until something is installed, a QWidgetDialogs serves. Installing does not
    // take ownership; installing nullptr goes back to the default.
    static QUserDialogs* instance();
    static void install(QUserDialogs* dialogs);

    // Shorthands in the form of QMessageBox's and QFileDialog's static functions.
    static Button question(QWidget* parent, const QString& title, const QString& text,
                           Buttons buttons = Buttons(QMessageBox::Yes | QMessageBox::No),
                           Button defaultButton = QMessageBox::NoButton);
    static Button information(QWidget* parent, const QString& title, const QString& text,
                              Buttons buttons = QMessageBox::Ok,
                              Button defaultButton = QMessageBox::NoButton);
    static Button warning(QWidget* parent, const QString& title, const QString& text,
                          Buttons buttons = QMessageBox::Ok, Button defaultButton = QMessageBox::NoButton);
    static Button critical(QWidget* parent, const QString& title, const QString& text,
                           Buttons buttons = QMessageBox::Ok, Button defaultButton = QMessageBox::NoButton);
    static QString getOpenFileName(QWidget* parent, const QString& caption = QString(),
                                   const QString& dir = QString(), const QString& filter = QString(),
                                   QString* selectedFilter = nullptr);
    static QStringList getOpenFileNames(QWidget* parent, const QString& caption = QString(),
                                        const QString& dir = QString(), const QString& filter = QString(),
                                        QString* selectedFilter = nullptr);
    static QString getSaveFileName(QWidget* parent, const QString& caption = QString(),
                                   const QString& dir = QString(), const QString& filter = QString(),
                                   QString* selectedFilter = nullptr);
    static QString getExistingDirectory(QWidget* parent, const QString& caption = QString(),
                                        const QString& dir = QString());
    static QString getItem(QWidget* parent, const QString& title, const QString& label,
                           const QStringList& items, int current = 0);
};
