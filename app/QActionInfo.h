#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

#include <array>

class QAction;

// What QActionManager knows of one registered action. It travels with the action as its user data
// (QAction::data()), so whoever holds the action can ask for its name and scopes without the manager.
//
// The scopes are the places where an action's key may fire:
//   0 the frame itself (no project editor is current); never compared when keys are bound, so actions
//     that live there alone may share keys freely
//   1 definitions, 2 sprites, 3 animations, 4 commands, 5 states, 6 sounds
//   7 the image and palette tools
//   8 everywhere: fires in every scope and shares its key with nobody
// A current scope of 9 or more means that no scope is current and no key fires.
struct QActionInfo
{
    enum Scope : int
    {
        FrameScope = 0,
        DefinitionsScope = 1,
        SpritesScope = 2,
        AnimationsScope = 3,
        CommandsScope = 4,
        StatesScope = 5,
        SoundsScope = 6,
        ToolsScope = 7,
        Everywhere = 8,
        NoScope = 9
    };
    static constexpr int ScopeCount = 9;

    unsigned textId = 0;
    QString name;
    std::array<quint8, ScopeCount> scopes{};
    // The manager's action that carries the key sequence; null while the action has no key.
    QAction* keyAction = nullptr;

    // Sets the flags of the scopes up to the first negative number; numbers past 8 are ignored.
    void setScopes(const QList<int>& list);
    bool inScope(int scope) const { return scope >= 0 && scope < ScopeCount && scopes[size_t(scope)]; }
    // Whether this action may not share a key with other. Scope 0 is never compared, so two frame-only
    // actions never clash; an everywhere action clashes with every other, in either order.
    bool conflictsWith(const QActionInfo& other) const;

    // The info an action carries; has() is false for actions the manager did not register.
    static bool has(const QAction* action);
    static QActionInfo of(const QAction* action);
    void attachTo(QAction* action) const;
};

Q_DECLARE_METATYPE(QActionInfo)
