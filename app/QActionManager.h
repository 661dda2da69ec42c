#pragma once

#include "QActionInfo.h"

#include <QAbstractTableModel>
#include <QAction>
#include <QKeySequence>
#include <QList>

#include <type_traits>
#include <utility>

class QActionList;
class QWidget;

// Every command of the program, registered once under its stable name (see QActionInfo for the
// scopes). The editors share one window, so the same key means different things in different
// editors: Ctrl+N makes a new sprite in one and a new animation in another. Two Qt shortcuts on one key
// in one window are ambiguous and neither fires, so the manager keeps one key action per distinct key
// sequence, owned by it and added to the window; the registered actions never own a shortcut. When a key
// action fires, shortcutTriggered() passes it on to the registered actions of the current scope that use it.
//
// As a table model it lists every registered action: column 0 its tool tip and icon ("Function"),
// column 1 its keys in portable text ("Keys"), which the options dialog edits.
class QActionManager : public QAbstractTableModel
{
    Q_OBJECT
public:
    // Registered actions become children of window; the key actions are added to it.
    explicit QActionManager(QWidget* window);
    ~QActionManager() override;

    // Registers an action in the scopes (read up to the first negative number) and connects it the
    // Qt 5 way: member is a SLOT() or SIGNAL() of receiver, fed by toggled(bool) for a checkable
    // action and triggered() for any other; enabler, when given, is a SIGNAL(x(bool)) of receiver
    // that enables and disables the action.
    QAction* add(const QList<int>& scopes, const QString& name, unsigned textId, bool checkable,
                 QObject* receiver, const char* member, const char* enabler = nullptr);

    // The same for a lambda or a member function pointer, called in context's thread and disconnected
    // when context dies. Enabling is then an ordinary connect to QAction::setEnabled.
    template <typename Context, typename Functor,
              typename = std::enable_if_t<!std::is_convertible_v<Functor, const char*>>>
    QAction* add(const QList<int>& scopes, const QString& name, unsigned textId, bool checkable,
                 const Context* context, Functor functor)
    {
        QAction* action = create(scopes, name, textId, checkable);
        if (checkable)
            connect(action, &QAction::toggled, context, std::move(functor));
        else
            connect(action, &QAction::triggered, context, std::move(functor));
        return action;
    }

    // The first registered action of that name, or null.
    QAction* find(const QString& name) const;

    // Binds keys to a registered action; empty keys unbind it. Keys that an action of a shared scope
    // already uses are refused with a warning, and then nothing changes.
    bool setShortcut(QAction* action, const QKeySequence& keys);
    QKeySequence shortcut(const QAction* action) const;

    const QList<QAction*>& actions() const { return registered; }
    const QList<QAction*>& keyActions() const { return keys; }
    // How many registered actions a key action serves.
    static int useCount(const QAction* keyAction);

    // "shortcuts.xml": save writes the bound keys; load binds what it reads and answers how many
    // bindings it applied, 0 for a missing file. Names no registered action has are passed over.
    bool save(const QString& path) const;
    int load(const QString& path);

    int scope() const { return currentScope; }
    // Makes a scope current (9 or more: none), which decides what keys do and what the list shows.
    void setScope(int scope);
    // The actions of the current scope, for the actions dock.
    QActionList* actionList() const { return list; }

    // Reapplies the texts of QActionTexts to every action, after a language change.
    void retranslate();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

public Q_SLOTS:
    void shortcutTriggered();

private:
    QAction* create(const QList<int>& scopes, const QString& name, unsigned textId, bool checkable);
    QAction* makeKeyAction(const QKeySequence& sequence);
    void release(QAction* keyAction);
    void dropKeyAction(QAction* keyAction);
    void actionChanged(QAction* action);
    void forget(QAction* action);
    QList<QAction*> actionsOfScope(int scope) const;

    QWidget* window;
    QList<QAction*> registered;
    QList<QAction*> keys;
    QActionList* list;
    int currentScope = QActionInfo::NoScope;
};
