#pragma once

#include "QInterfaceEditor.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>

#include <functional>

class AddAnim;
class QAction;
class QAnimation;
class QAnimations;
class QComboBox;
class QListView;
class QSprites;
class QThumbModel;
class QToolButton;

// The side panel beside the animations editor: the sprites of one group as small pictures, which
// become frames of the current action or of a new one, each as one undo step of the animation text,
// or are saved as image files. The group shown is kept per project.
class QThumbnailsEditor : public QObject, public QInterfaceExtraEditor
{
    Q_OBJECT

public:
    static constexpr int Number = 2;
    static constexpr int PreferredWidth = 304;
    // The name of the property that keeps a project's chosen group on the object bound as project.
    static const char* const GroupProperty;

    explicit QThumbnailsEditor(QObject* parent = nullptr);
    ~QThumbnailsEditor() override;

    // The current project's models, its variables ("spr_path", "proj_path") and the object that keeps
    // its chosen group (the project); nulls for none.
    void bind(QSprites* sprites, QAnimations* animations, QMap<QString, QString>* variables,
              QObject* project);
    QSprites* sprites() const;
    QAnimations* animations() const;
    QThumbModel* model() const { return thumbs; }
    QComboBox* groupList() const { return groups; }
    QListView* view() const { return thumbView; }
    // The group shown, or -1.
    int group() const;
    QList<int> selectedRows() const;
    void selectRows(const QList<int>& rows);
    // A registered command for one of the panel's buttons, found by the action's object name.
    void setCommand(QAction* action);
    // Lets a test or the window fill in the new action's dialog before it runs.
    void setDialogHook(std::function<void(AddAnim&)> hook) { dialogHook = std::move(hook); }

    // QInterfaceExtraEditor.
    QString title() const override { return QStringLiteral("Thumbnails"); }
    bool isModified() const override { return false; }
    int number() const override { return Number; }
    QWidget* panel() const override;
    void activate() override;
    void deactivate() override;

public Q_SLOTS:
    // The group of the combo's row at index becomes the one shown and the project's choice.
    void grpChanged(int index);
    // The selected (or all) thumbnails as frames after the current frame of the current action.
    void add();
    void addAll();
    // The selected (or all) thumbnails as the frames of a new action at the end of the file.
    void newAnim();
    void newAnimAll();
    // The selected sprites as image files.
    void save();
    // Reads the groups of the sprite file again, and the thumbnails when they are shown.
    void refresh();

Q_SIGNALS:
    void enabled(bool on);
    // The group shown, by its number.
    void setGroup(int group);
    // Frames or an action were made: the animations editor should be shown, and show them.
    void switchToAnimations();
    void animationsChanged();

private:
    QToolButton* addButton(const char* name, const QString& text, void (QThumbnailsEditor::*slot)());
    void load(int group);
    void insertFrames(QAnimation* animation, const QList<int>& rows, int at, int ticks);
    void addFrames(const QList<int>& rows);
    void makeAnimation(const QList<int>& rows);
    QList<int> allRows() const;
    QAnimation* currentAnimation() const;
    void updateButtons();
    QString startFolder() const;

    QPointer<QSprites> spriteModel;
    QPointer<QAnimations> animationModel;
    QMap<QString, QString>* variables = nullptr;
    QPointer<QObject> project;
    QPointer<QWidget> page;
    QComboBox* groups;
    QListView* thumbView;
    QThumbModel* thumbs;
    QMap<QString, QToolButton*> buttons;
    std::function<void(AddAnim&)> dialogHook;
    bool active = false;
    // The thumbnails don't show what the sprite file holds now; they are made again when shown.
    bool stale = true;
};
