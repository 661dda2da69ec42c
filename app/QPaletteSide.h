#pragma once

#include <QObject>
#include <QPointer>

class MainWindow;
class QAction;
class QActionManager;
class QInterface;
class QMenu;
class QPalettesEditor;
class QProject;
class QSpritesEditor;

// The palettes side of the window: the palettes editor as the side editor beside the sprites editor,
// its commands under their names in the action manager (in the sprites editor's key scope), the
// Palettes menu and the buttons of its panel. It follows the current project.
class QPaletteSide : public QObject
{
    Q_OBJECT
public:
    QPaletteSide(QInterface* iface, MainWindow* window, QSpritesEditor* sprites, QObject* parent = nullptr);
    ~QPaletteSide() override;

    QPalettesEditor* editor() const { return palettes; }
    QMenu* menu() const { return palettesMenu; }

public Q_SLOTS:
    void setProject(QProject* project);
    void retranslate();

protected:
    // The side panel shows the palettes while the sprites editor's panel is shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* add(const char* name, void (QPalettesEditor::*slot)());
    void addActions();

    QInterface* iface;
    QActionManager* manager;
    QPointer<QSpritesEditor> sprites;
    QPalettesEditor* palettes;
    QPointer<QMenu> palettesMenu;
    QAction* advancedAction = nullptr;
};
