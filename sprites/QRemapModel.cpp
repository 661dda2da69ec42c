#include "QRemapModel.h"

QRemapModel::QRemapModel(QObject* parent) : QAbstractTableModel(parent) {}

void QRemapModel::addRow()
{
    beginInsertRows(QModelIndex(), table.size(), table.size());
    table.append(Row());
    endInsertRows();
}

void QRemapModel::removeRow(int row)
{
    // The removal itself tells the views; there is nothing left to call changed.
    if (row < 0 || row >= table.size()) return;
    beginRemoveRows(QModelIndex(), row, row);
    table.removeAt(row);
    endRemoveRows();
}

void QRemapModel::removeAll()
{
    if (table.isEmpty()) return;
    beginRemoveRows(QModelIndex(), 0, table.size() - 1);
    table.clear();
    endRemoveRows();
}

void QRemapModel::setRow(int row, int sourceGroup, int sourceIndex, int destinationGroup,
                         int destinationIndex)
{
    if (row < 0 || row >= table.size()) return;
    table[row] = Row{sourceGroup, sourceIndex, destinationGroup, destinationIndex};
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

bool QRemapModel::find(int sourceGroup, int sourceIndex, int* destinationGroup, int* destinationIndex) const
{
    for (const Row& row : table) {
        if (row.sourceGroup != sourceGroup || row.sourceIndex != sourceIndex) continue;
        if (destinationGroup) *destinationGroup = row.destinationGroup;
        if (destinationIndex) *destinationIndex = row.destinationIndex;
        return true;
    }
    return false;
}

int QRemapModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : table.size();
}

int QRemapModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 4;
}

qint32* QRemapModel::field(Row& row, int column)
{
    switch (column) {
    case 0:
        return &row.sourceGroup;
    case 1:
        return &row.sourceIndex;
    case 2:
        return &row.destinationGroup;
    case 3:
        return &row.destinationIndex;
    default:
        return nullptr;
    }
}

QVariant QRemapModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= table.size() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    Row row = table.at(index.row());
    const qint32* value = field(row, index.column());
    return value ? QVariant(*value) : QVariant();
}

bool QRemapModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= table.size()) return false;
    qint32* target = field(table[index.row()], index.column());
    if (!target) return false;
    *target = value.toInt();
    emit dataChanged(index, index);
    return true;
}

QVariant QRemapModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    switch (section) {
    case 0:
        return tr("Src Grp");
    case 1:
        return tr("Src Num");
    case 2:
        return tr("Dst Grp");
    case 3:
        return tr("Dst Num");
    default:
        return QVariant();
    }
}

Qt::ItemFlags QRemapModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::ItemIsEnabled;
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}
