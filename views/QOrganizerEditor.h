#pragma once

#include "QInterfaceEditor.h"

#include <QMap>
#include <QObject>
#include <QPair>
#include <QPointer>

class QAction;
class QListView;
class QModelIndex;
class QOrganizableObject;
class QToolButton;
class QWidget;

// The side panel that lists a file's items in file order and moves them: the sprites (or, switched,
// the palettes) of the sprites editor, the actions of the animations editor, commands and sounds. Every
// move takes the selected block of rows to its new place as one change of the model, which undo takes
// back in one step, and the selection goes with the block.
class QOrganizerEditor : public QObject, public QInterfaceExtraEditor
{
    Q_OBJECT

public:
    static constexpr int Number = 0;
    static constexpr int PreferredWidth = 296;

    explicit QOrganizerEditor(QObject* parent = nullptr);
    ~QOrganizerEditor() override;

    // The lists to organize: primary, and the palettes of a sprite file as secondary (only then can the
    // user switch to them). Null for none: the panel is disabled.
    void setObjects(QOrganizableObject* primary, QOrganizableObject* secondary = nullptr);
    QOrganizableObject* primaryObject() const;
    QOrganizableObject* secondaryObject() const;
    // The list shown: the secondary one while the switch is on.
    QOrganizableObject* object() const;
    bool showsSecondary() const { return onSecondary; }

    QListView* list() const { return listView; }
    // The selected block of rows, first and last; (-1, -1) for none.
    QPair<int, int> selectedRows() const;
    void selectRows(int first, int last);
    // A registered command for one of the panel's buttons, found by the action's object name
    // ("org_up", ...): the button then shows the action's text and keys and triggers it.
    void setCommand(QAction* action);

    // QInterfaceExtraEditor.
    QString title() const override { return QStringLiteral("Organizer"); }
    bool isModified() const override { return false; }
    int number() const override { return Number; }
    QWidget* panel() const override;

public Q_SLOTS:
    void moveUp();
    void moveDown();
    void moveUp10();
    void moveDown10();
    void moveTop();
    void moveBottom();
    void moveAuto();
    void palToggled(bool on);
    void itemDblClick(const QModelIndex& index);
    // Asks, then removes the selected rows as one change.
    void deleteSelected();

Q_SIGNALS:
    // The list changed its order or its items, or switched between primary and secondary (the flag).
    void changed(bool secondary);
    void enabled(bool on);
    // An item was picked to be shown in its editor.
    void itemClicked(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* addButton(const char* name, const QString& text, void (QOrganizerEditor::*slot)());
    void showObject();
    // Takes the selected block so that its first row lands on to, as one change.
    void moveBlockTo(int to);
    void updateButtons();
    int count() const;

    QPointer<QOrganizableObject> primary;
    QPointer<QOrganizableObject> secondary;
    bool onSecondary = false;
    QPointer<QWidget> page;
    QListView* listView;
    QToolButton* paletteButton;
    QMap<QString, QToolButton*> buttons;
};
