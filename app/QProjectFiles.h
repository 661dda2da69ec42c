#pragma once

#include "QProjectTypes.h"

#include <QList>
#include <QObject>

class QProject;
class QRGBPal;
class QWidget;

// The open projects and the file commands of the Project menu: new, open, save, save as, backup,
// load backup and the closes, with the questions they ask and the answers the projects ask for (file
// names, the sprite version, the character palette). The window shows the list as tabs and follows
// the signals; nothing here needs a window, so the commands can be tested without one.
class QProjectFiles : public QObject
{
    Q_OBJECT
public:
    // dialogParent carries the progress and choice dialogs; it may be null.
    explicit QProjectFiles(QWidget* dialogParent, QObject* parent = nullptr);
    ~QProjectFiles() override;

    int projectCount() const;
    QProject* project(int index) const { return projects.value(index); }
    QProject* currentProject() const { return current; }
    int currentIndex() const;
    void setCurrentIndex(int index);
    // True when closing may go on: at most one project is left and it is empty.
    bool onlyEmptyProjectLeft() const;
    // Closes a project when it may be closed; the last one closed leaves a new empty one.
    bool closeProject(int index);
    void move(int from, int to);
    // Opens one path that another start handed over, chosen by its suffix; unknown kinds are
    // skipped without a word.
    void openHandedFile(const QString& path);
    // No project is current any more: the editors let go of the documents before the projects go.
    void release();

public Q_SLOTS:
    void newProject(bool fromTemplate);
    void newProject();
    void openProject(const QString& fileName);
    void fileNew();
    // Asks for a definitions or font file and opens it.
    void fileOpen();
    void fileSave();
    void fileSaveAs();
    void fileBackup();
    // Loads one of the current project's backups into it, keeping the project's own file names.
    void fileLoadBackup();
    void fileClose();
    void fileCloseAll();
    // Closes every project but the current one.
    void fileCloseAllCurr();
    QString saveFileName(QProjectFileType file, const QString& path);
    quint32 spritesVersionToSave(quint32 currentVersion);
    void charPalette(QRGBPal* palette);

Q_SIGNALS:
    // A project joined the list at index and became the current one.
    void projectAdded(int index, const QString& name);
    void projectRemoved(int index);
    void projectNameChanged(int index, const QString& name);
    // Another project is current, or the current one was read anew (null while the window goes away).
    void currentProjectChanged(QProject* project);
    // The current project's kind or engine version changed.
    void currentStatusChanged();
    // The current project's issue list changed.
    void currentIssuesChanged();
    // A project was opened from or saved as this definitions file: the history takes it.
    void projectFileUsed(const QString& path, const QString& name);

private:
    void addProject(QProject* project);
    void connectProject(QProject* project);
    void changeName(QProject* project, const QString& name);
    void askToSavePalettes();
    void openLooseFile(QProjectFileType kind, const QString& path);

    QWidget* dialogParent;
    QList<QProject*> projects;
    QProject* current = nullptr;
    // Names new projects "Project 1", "Project 2", ... for the whole run.
    int newProjects = 0;
};
