#pragma once

#include <QAbstractListModel>
#include <QList>

class QAction;

// The actions of the current scope, for the actions dock. The manager fills it; each row shows the
// action's plain text, its icon and tool tip, and is enabled while the action is, so the dock never
// offers a command that would do nothing.
class QActionList : public QAbstractListModel
{
    Q_OBJECT
public:
    // The QAction* of a row, for views that trigger what the user picks.
    static constexpr int ActionRole = Qt::UserRole;

    explicit QActionList(QObject* parent = nullptr);

    QAction* action(int row) const { return actions.value(row); }
    int rowOf(const QAction* action) const;

    void setActions(const QList<QAction*>& list);
    void append(QAction* action);
    void remove(QAction* action);
    // Tells the views that the texts, icon or state of the action (or, with null, of every action) changed.
    void refresh(QAction* action = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QList<QAction*> actions;
};
