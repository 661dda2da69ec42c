#include "QMessages.h"

#include "QMessageList.h"

QMessages::QMessages(QProjectFileType file, QMessageList* parentList, QObject* parent)
    : QAbstractListModel(parent), parentList(parentList), file(file)
{
    if (parentList) parentList->registerList(this);
}

QMessages::~QMessages()
{
    if (parentList) parentList->unregisterList(this);
}

void QMessages::add(int severity, const QString& text, int index, int subIndex)
{
    const int row = items.size();
    beginInsertRows(QModelIndex(), row, row);
    items.append(QMessage{severity, file, index, subIndex, text});
    if (severity >= 0 && severity < 3) ++counters[severity];
    endInsertRows();
    if (!updating && parentList) parentList->refresh();
}

void QMessages::begin()
{
    beginResetModel();
    items.clear();
    counters[0] = counters[1] = counters[2] = 0;
    endResetModel();
    updating = true;
}

void QMessages::end()
{
    updating = false;
    if (parentList) parentList->refresh();
}

int QMessages::count(int kind) const
{
    if (kind >= 0 && kind < 3) return counters[kind];
    if (kind == 3) return items.size();
    return 0;
}

QMessage QMessages::at(int row) const
{
    if (row < 0 || row >= items.size()) return QMessage();
    return items.at(row);
}

void QMessages::setParentList(QMessageList* list)
{
    if (list == parentList) return;
    QMessageList* previous = parentList;
    parentList = list;
    if (previous) previous->unregisterList(this);
    if (list) list->registerList(this);
}

int QMessages::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : items.size();
}

QVariant QMessages::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= items.size()) return QVariant();
    const QMessage& message = items.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return message.text;
    case Qt::DecorationRole: {
        const QIcon icon = QMessageList::severityIcon(message.severity);
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    default:
        return QVariant();
    }
}
