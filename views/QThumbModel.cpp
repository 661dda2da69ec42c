#include "QThumbModel.h"

QThumbModel::QThumbModel(QObject* parent) : QAbstractListModel(parent) {}

QThumbModel::~QThumbModel() = default;

void QThumbModel::clear()
{
    if (!items.isEmpty()) {
        beginRemoveRows(QModelIndex(), 0, int(items.size()) - 1);
        items.clear();
        endRemoveRows();
    }
    groupNumber = -1;
}

void QThumbModel::setThumbs(int group, const QList<Thumb>& thumbs)
{
    clear();
    groupNumber = group;
    if (thumbs.isEmpty()) return;
    beginInsertRows(QModelIndex(), 0, int(thumbs.size()) - 1);
    items = thumbs;
    endInsertRows();
}

int QThumbModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(items.size());
}

QVariant QThumbModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Thumb& thumb = items.at(index.row());
    switch (role) {
    case Qt::DecorationRole:
        return thumb.pixmap;
    case Qt::DisplayRole:
        return thumb.number;
    case Qt::ToolTipRole:
        return QStringLiteral("%1, %2").arg(groupNumber).arg(thumb.number);
    default:
        return QVariant();
    }
}

Qt::ItemFlags QThumbModel::flags(const QModelIndex& index) const
{
    // Thumbnails are picked, never edited nor dragged about.
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}
