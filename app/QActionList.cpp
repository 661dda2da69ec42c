#include "QActionList.h"

#include "QActionInfo.h"
#include "QIconsetManager.h"

#include <QAction>

QActionList::QActionList(QObject* parent) : QAbstractListModel(parent) {}

int QActionList::rowOf(const QAction* action) const
{
    return int(actions.indexOf(const_cast<QAction*>(action)));
}

void QActionList::setActions(const QList<QAction*>& list)
{
    beginResetModel();
    actions = list;
    endResetModel();
}

void QActionList::append(QAction* action)
{
    const int row = int(actions.size());
    beginInsertRows(QModelIndex(), row, row);
    actions.append(action);
    endInsertRows();
}

void QActionList::remove(QAction* action)
{
    const int row = rowOf(action);
    if (row < 0) return;
    beginRemoveRows(QModelIndex(), row, row);
    actions.removeAt(row);
    endRemoveRows();
}

void QActionList::refresh(QAction* action)
{
    if (actions.isEmpty()) return;
    if (!action) {
        emit dataChanged(index(0), index(int(actions.size()) - 1));
        return;
    }
    const int row = rowOf(action);
    if (row >= 0) emit dataChanged(index(row), index(row));
}

int QActionList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(actions.size());
}

QVariant QActionList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    QAction* action = actions.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        // The menu text carries the key after a tab and a mnemonic; the icon text has neither.
        return action->iconText();
    case Qt::DecorationRole: {
        const QIcon icon = iconsetManager ? iconsetManager->icon(QActionInfo::of(action).name) : QIcon();
        return icon.isNull() ? action->icon() : icon;
    }
    case Qt::ToolTipRole:
        return action->toolTip();
    case ActionRole:
        return QVariant::fromValue(action);
    default:
        return {};
    }
}

Qt::ItemFlags QActionList::flags(const QModelIndex& index) const
{
    if (!index.isValid() ||
        !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemNeverHasChildren;
    if (actions.at(index.row())->isEnabled()) result |= Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return result;
}
