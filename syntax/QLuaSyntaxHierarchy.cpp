#include "QLuaSyntaxHierarchy.h"

QLuaSyntaxHierarchy::QLuaSyntaxHierarchy(QObject* parent) : QSyntaxHierarchy(parent) {}

QModelIndex QLuaSyntaxHierarchy::index(int row, int column, const QModelIndex& parent) const
{
    const QHierarchyItem* item =
        parent.isValid() ? static_cast<const QHierarchyItem*>(parent.internalPointer()) : &m_root;
    if (column != 0 || row < 0 || row >= item->children.size()) return QModelIndex();
    return createIndex(row, 0, item->children.at(row));
}

QModelIndex QLuaSyntaxHierarchy::parent(const QModelIndex& child) const
{
    if (!child.isValid()) return QModelIndex();
    const QHierarchyItem* up = static_cast<const QHierarchyItem*>(child.internalPointer())->parent;
    if (!up || up == &m_root) return QModelIndex();
    return createIndex(up->row, 0, up);
}

int QLuaSyntaxHierarchy::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid()) return int(m_root.children.size());
    return int(static_cast<const QHierarchyItem*>(parent.internalPointer())->children.size());
}

int QLuaSyntaxHierarchy::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant QLuaSyntaxHierarchy::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return QVariant();
    const auto* item = static_cast<const QHierarchyItem*>(index.internalPointer());
    if (role == Qt::DisplayRole || role == Qt::EditRole) return item->name;
    return QVariant();
}

void QLuaSyntaxHierarchy::update(const QString&)
{
    emit updated();
}

int QLuaSyntaxHierarchy::lineForIndex(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<const QHierarchyItem*>(index.internalPointer())->line : 0;
}

QModelIndex QLuaSyntaxHierarchy::indexForLine(int) const
{
    return QModelIndex();
}

bool QLuaSyntaxHierarchy::sectionExists(const QString&) const
{
    return false;
}

QString QLuaSyntaxHierarchy::findValue(const QString&, const QString&) const
{
    return QString();
}
