#pragma once

#include <QLabel>
#include <QMenu>
#include <QObject>
#include <QPointer>

class MainWindow;
class QAction;
class QActionManager;
class QAnimSpriteWorkspace;
class QAnimationsEditor;
class QInterface;
class QProject;

// The animation side of the window: the animations editor (number 2) on the sprite workspace that
// it shares with the sprites editor, its commands under their names in the action manager and the
// Animations menu, bound to the current project. Made after the sprite and text editors, before the
// interface's final setup, so that the keys read there reach these commands too.
class QAnimationEditors : public QObject
{
    Q_OBJECT
public:
    QAnimationEditors(QInterface* iface, MainWindow* window, QAnimSpriteWorkspace* workspace);
    ~QAnimationEditors() override;

    QAnimationsEditor* animations() const { return m_animations; }
    QMenu* menu() const { return animationsMenu; }
    QLabel* rateLabel() const { return rate; }

public Q_SLOTS:
    void setProject(QProject* project);
    void retranslate();
    // Writes an action as an animated GIF, frame for frame with the project's sprites.
    void saveGif(int action, const QString& path);

private:
    QAction* add(const char* name, void (QAnimationsEditor::*slot)());
    QAction* addCheckable(const char* name, void (QAnimationsEditor::*slot)(bool));
    void addAnimationActions();
    bool textModeCurrent() const;

    QInterface* iface;
    QActionManager* manager;
    QAnimationsEditor* m_animations;
    QPointer<QMenu> animationsMenu;
    QPointer<QLabel> rate;
    QPointer<QProject> project;
};
