#include "QMessageList.h"

#include "QMessages.h"
#include "QProjectTypes.h"

#include <utility>

QMessageList::QMessageList(QObject* parent) : QAbstractListModel(parent) {}

QMessageList::~QMessageList()
{
    // Lists that outlive the project's list keep their issues but must not call back into it.
    for (QMessages* list : std::as_const(messages))
        list->parentList = nullptr;
}

int QMessageList::count(int kind) const
{
    int sum = 0;
    for (const QMessages* list : messages)
        sum += list->count(kind);
    return sum;
}

const QMessage* QMessageList::find(int row) const
{
    if (row < 0) return nullptr;
    for (const QMessages* list : messages) {
        if (row < list->items.size()) return &list->items.at(row);
        row -= list->items.size();
    }
    return nullptr;
}

QMessage QMessageList::at(int row) const
{
    const QMessage* message = find(row);
    return message ? *message : QMessage();
}

QString QMessageList::rowText(int row) const
{
    const QMessage* message = find(row);
    return message ? messageText(*message) : QString();
}

void QMessageList::refresh()
{
    beginResetModel();
    rows = count(3);
    endResetModel();
    emit updated();
}

void QMessageList::registerList(QMessages* list)
{
    if (messages.contains(list)) return;
    messages.append(list);
    if (!list->items.isEmpty()) refresh();
}

void QMessageList::unregisterList(QMessages* list)
{
    if (!messages.removeOne(list)) return;
    if (!list->items.isEmpty()) refresh();
}

int QMessageList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows;
}

QVariant QMessageList::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rows) return QVariant();
    const QMessage* message = find(index.row());
    if (!message) return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return messageText(*message);
    case Qt::DecorationRole: {
        const QIcon icon = severityIcon(message->severity);
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    default:
        return QVariant();
    }
}

QString QMessageList::messageText(const QMessage& message)
{
    const QString index = QString::number(message.index);
    switch (message.file) {
    case pftDefinitions:
        return tr("DEF(%1): %2").arg(index, message.text);
    case pftSprites: {
        const QString kind = message.subIndex == 1 ? tr("palette ") : QString();
        return tr("SFF%1: %2").arg(tr("(%1%2)").arg(kind, index), message.text);
    }
    case pftAnimations:
        return tr("AIR(%1): %2").arg(index, message.text);
    case pftCommands:
        return tr("CMD(%1): %2").arg(index, message.text);
    case pftStates:
        return tr("ST %1(%2): %3").arg(QString::number(message.subIndex), index, message.text);
    case pftSounds:
        return tr("SND%1: %2").arg(tr("(%1)").arg(index), message.text);
    default:
        return message.text;
    }
}

QIcon QMessageList::severityIcon(int severity)
{
    switch (severity) {
    case 0:
        return QIcon(QStringLiteral(":/imgs/Imgs/error.png"));
    case 1:
        return QIcon(QStringLiteral(":/imgs/Imgs/warn.png"));
    case 2:
        return QIcon(QStringLiteral(":/imgs/Imgs/info.png"));
    default:
        return QIcon();
    }
}
