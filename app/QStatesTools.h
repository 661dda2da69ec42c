#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QActionManager;
class QDialog;
class QMenu;
class QStatesEditor;
class QSyntaxHierarchy;

// The tools of the states editor that write into the current state file: the variables view of the
// outline, the log of variable use, the PalFX and throw wizards and the offset viewer. Their commands
// live in the states scope and are enabled while the states editor shows a file.
class QStatesTools : public QObject
{
    Q_OBJECT
public:
    explicit QStatesTools(QStatesEditor* editor);

    // Registers the commands and adds them to menu.
    void addActions(QActionManager* manager, QMenu* menu);

    // Runs a dialog and answers whether it was accepted. Tests put a function here that fills the
    // fields and answers, so that no dialog waits for a person.
    std::function<bool(QDialog&)> runDialog;
    // Where the PalFX presets are read from; the "palFX" folder beside the program unless changed.
    QString palFXFolder;

public Q_SLOTS:
    // Shows the outline of the current file as its variables tree while on; follows the tabs.
    void varList(bool on);
    void varLog();
    void palFXEditor();
    void offsetViewer();
    void throwCreator();

private:
    // Inserts at the cursor of the current file as one undo step, even when text is empty.
    void insert(const QString& text);
    void followFile();

    QStatesEditor* editor;
    QPointer<QSyntaxHierarchy> shown;
    bool variables = false;
};
