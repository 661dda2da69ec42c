#pragma once

#include <QObject>
#include <QPointer>

class MainWindow;
class QAction;
class QActionManager;
class QAnimSpriteWorkspace;
class QInterface;
class QLabel;
class QMenu;
class QProject;
class QSpritesEditor;

// The sprite side of the window: the sprite workspace (number 1) with its view, the sprites editor
// and its commands under their names in the action manager and the Sprites menu. Made beside the text
// editors, before the interface's final setup, so the keys read there reach these commands too.
class QSpriteEditors : public QObject
{
    Q_OBJECT
public:
    QSpriteEditors(QInterface* iface, MainWindow* window);
    ~QSpriteEditors() override;

    QAnimSpriteWorkspace* workspace() const { return m_workspace; }
    QSpritesEditor* sprites() const { return m_sprites; }
    QMenu* menu() const { return spritesMenu; }

public Q_SLOTS:
    void setProject(QProject* project);
    void retranslate();

private:
    QAction* add(const char* name, bool checkable, void (QSpritesEditor::*slot)());
    void addSpriteActions();
    // Commands whose windows arrive with later features: shown, disabled, saying why.
    void addLaterAction(const char* name);

    QInterface* iface;
    MainWindow* window;
    QActionManager* manager;
    QAnimSpriteWorkspace* m_workspace;
    QSpritesEditor* m_sprites;
    QPointer<QMenu> spritesMenu;
    QLabel* position;
    QPointer<QProject> project;
};
