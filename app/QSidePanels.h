#pragma once

#include <QObject>
#include <QPointer>

class MainWindow;
class QAction;
class QActionManager;
class QInterface;
class QOrganizerEditor;
class QProject;
class QSpritesEditor;
class QThumbnailsEditor;

// The organizer and the thumbnails in the window: both side editors registered, their commands under
// their names in the action manager, bound to the current project. It also picks what the right panel
// shows beside each editor: the organizer while "view_organizer" is on and the editor has a list to
// organize, else the editor's own side editor (the palettes beside the sprites, the thumbnails beside
// the animations). And it runs the sprite sheet importer for the sprites editor.
class QSidePanels : public QObject
{
    Q_OBJECT
public:
    QSidePanels(QInterface* iface, MainWindow* window, QSpritesEditor* sprites, QObject* parent = nullptr);
    ~QSidePanels() override;

    QOrganizerEditor* organizer() const { return organizerEditor; }
    QThumbnailsEditor* thumbnails() const { return thumbnailsEditor; }
    bool isOrganizerShown() const { return organizerShown; }

public Q_SLOTS:
    void setProject(QProject* project);
    // Shows or hides the organizer beside the editors that have a list; kept as "show_organizer".
    void viewOrganizer(bool shown);
    // Opens the sprite sheet importer over the window.
    void sheetImport();

Q_SIGNALS:
    // An action was picked in the organizer or made from thumbnails, for the animations editor.
    void animationPicked(int row);

private:
    void addActions();
    QAction* add(const QList<int>& scopes, const char* name, bool checkable);
    // The current editor changed, or its project: the organizer shows that editor's list and the
    // right panel the side editor that belongs beside it.
    void editorShown();
    void itemPicked(int row);

    QInterface* iface;
    MainWindow* window;
    QActionManager* manager;
    QSpritesEditor* sprites;
    QOrganizerEditor* organizerEditor;
    QThumbnailsEditor* thumbnailsEditor;
    QPointer<QProject> project;
    QAction* organizerAction = nullptr;
    bool organizerShown = false;
};
