#include "QCommandsOrg.h"

#include "QCommand.h"
#include "QCommands.h"

QCommandsOrg::QCommandsOrg(QCommands* owner) : QOrganizableObject(owner), owner(owner) {}

QCommandsOrg::~QCommandsOrg() = default;

int QCommandsOrg::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : owner->count();
}

QVariant QCommandsOrg::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= owner->count()) return QVariant();
    const QCommand* command = owner->at(uint(index.row()));
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return command->name();
    case Qt::ToolTipRole:
        return command->command();
    default:
        return QVariant();
    }
}

QVariant QCommandsOrg::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    return section == 0 ? tr("Name") : tr("Command");
}

void QCommandsOrg::beginChanges()
{
    owner->beginEdit();
}

void QCommandsOrg::endChanges()
{
    owner->endEdit();
}

void QCommandsOrg::remove(uint index)
{
    owner->remove(index);
}

void QCommandsOrg::move(uint from, uint to)
{
    owner->move(int(from), to);
}

void QCommandsOrg::autoOrganize()
{
    owner->autoOrganize();
}
