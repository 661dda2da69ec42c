#pragma once

#include <QFlags>
#include <QString>
#include <QStringList>

// Every message box and file dialog of the program passes through the one installed QUserDialogs.
// Models include only this header, so they neither depend on the widget library nor block where no
// person can answer. The desktop program installs the widget dialogs (app/), tests install a recorder
// that captures the exact texts and answers from a script, and the command-line tool installs one
// that prints. Until something is installed, a silent seam answers every box with its default button.
class QUserDialogs
{
public:
    // The same values as QMessageBox's standard buttons, so that the widget seam maps them one to one.
    enum Button : unsigned
    {
        NoButton = 0x00000000,
        Ok = 0x00000400,
        Save = 0x00000800,
        SaveAll = 0x00001000,
        Open = 0x00002000,
        Yes = 0x00004000,
        YesToAll = 0x00008000,
        No = 0x00010000,
        NoToAll = 0x00020000,
        Abort = 0x00040000,
        Retry = 0x00080000,
        Ignore = 0x00100000,
        Close = 0x00200000,
        Cancel = 0x00400000,
        Discard = 0x00800000,
        Apply = 0x02000000,
    };
    Q_DECLARE_FLAGS(Buttons, Button)

    enum Icon
    {
        NoIcon,
        Information,
        Warning,
        Critical,
        Question
    };

    virtual ~QUserDialogs();

    virtual Button message(Icon icon, const QString& title, const QString& text, Buttons buttons,
                           Button defaultButton) = 0;
    virtual QString openFileName(const QString& caption, const QString& dir, const QString& filter,
                                 QString* selectedFilter) = 0;
    virtual QStringList openFileNames(const QString& caption, const QString& dir, const QString& filter,
                                      QString* selectedFilter) = 0;
    virtual QString saveFileName(const QString& caption, const QString& dir, const QString& filter,
                                 QString* selectedFilter) = 0;
    virtual QString existingDirectory(const QString& caption, const QString& dir) = 0;
    // A choice among items; the chosen item, or empty on cancel.
    virtual QString item(const QString& title, const QString& label, const QStringList& items,
                         int current) = 0;

    // The installed instance, or the silent default. Installing does not take ownership; installing
    // nullptr goes back to the default.
    static QUserDialogs* instance();
    static void install(QUserDialogs* dialogs);

    // Shorthands in the form of QMessageBox's and QFileDialog's static functions.
    static Button question(const QString& title, const QString& text, Buttons buttons = Buttons(Yes | No),
                           Button defaultButton = NoButton);
    static Button information(const QString& title, const QString& text, Buttons buttons = Ok,
                              Button defaultButton = NoButton);
    static Button warning(const QString& title, const QString& text, Buttons buttons = Ok,
                          Button defaultButton = NoButton);
    static Button critical(const QString& title, const QString& text, Buttons buttons = Ok,
                           Button defaultButton = NoButton);
    static QString getOpenFileName(const QString& caption = QString(), const QString& dir = QString(),
                                   const QString& filter = QString(), QString* selectedFilter = nullptr);
    static QStringList getOpenFileNames(const QString& caption = QString(), const QString& dir = QString(),
                                        const QString& filter = QString(), QString* selectedFilter = nullptr);
    static QString getSaveFileName(const QString& caption = QString(), const QString& dir = QString(),
                                   const QString& filter = QString(), QString* selectedFilter = nullptr);
    static QString getExistingDirectory(const QString& caption = QString(), const QString& dir = QString());
    static QString getItem(const QString& title, const QString& label, const QStringList& items,
                           int current = 0);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(QUserDialogs::Buttons)
