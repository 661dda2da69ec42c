#pragma once

#include <QObject>
#include <QPointer>

class MainWindow;
class QAction;
class QActionManager;
class QInterface;
class QMenu;
class QProject;
class QSoundWorkspace;
class QSoundsEditor;

// The sound side of the window: the sound page (workspace number 2), the sounds editor (number 5) and
// its commands under their names in the action manager and the Sounds menu. Made beside the other
// editors, before the interface's final setup, so the keys read there reach these commands too.
class QSoundEditors : public QObject
{
    Q_OBJECT
public:
    QSoundEditors(QInterface* iface, MainWindow* window);
    ~QSoundEditors() override;

    QSoundWorkspace* workspace() const { return m_workspace; }
    QSoundsEditor* sounds() const { return m_sounds; }
    QMenu* menu() const { return soundsMenu; }

public Q_SLOTS:
    void setProject(QProject* project);
    void retranslate();

private:
    QAction* add(const char* name, void (QSoundsEditor::*slot)());
    QAction* addCheckable(const char* name, void (QSoundsEditor::*slot)(bool));
    void addSoundActions();

    QInterface* iface;
    QActionManager* manager;
    QSoundWorkspace* m_workspace;
    QSoundsEditor* m_sounds;
    QPointer<QMenu> soundsMenu;
    QPointer<QProject> project;
};
