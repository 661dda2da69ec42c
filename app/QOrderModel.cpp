#include "QOrderModel.h"

#include "QSprite.h"
#include "QSprites.h"

QOrderModel::QOrderModel(const QSprites* sprites, const QList<uint>& rows, QObject* parent)
    : QAbstractTableModel(parent), sprites(sprites), rows(rows)
{}

int QOrderModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(rows.size());
}

int QOrderModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 3;
}

QVariant QOrderModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole || index.row() >= rows.size()) return QVariant();
    const uint position = rows.at(index.row());
    const QSprite* sprite = position < sprites->count() ? sprites->at(position) : nullptr;
    if (!sprite) return QVariant();
    switch (index.column()) {
    case 0:
        return position;
    case 1:
        return sprite->itemGroup();
    case 2:
        return sprite->itemIndex();
    }
    return QVariant();
}

QVariant QOrderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    switch (section) {
    case 0:
        return tr("Index");
    case 1:
        return tr("Group");
    case 2:
        return tr("Number");
    }
    return QVariant();
}
