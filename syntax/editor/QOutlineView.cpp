#include "QOutlineView.h"

#include "QSyntaxHierarchy.h"

#include <QHeaderView>

QOutlineView::QOutlineView(QWidget* parent) : QTreeView(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QTreeView::clicked, this, &QOutlineView::pick);
    connect(this, &QTreeView::activated, this, &QOutlineView::pick);
}

void QOutlineView::setHierarchy(QSyntaxHierarchy* hierarchy)
{
    if (hierarchy == m_hierarchy) return;
    disconnect(updatedConnection);
    m_hierarchy = hierarchy;
    setModel(hierarchy);
    if (hierarchy)
        updatedConnection = connect(hierarchy, &QSyntaxHierarchy::updated, this, &QOutlineView::reselect);
    reselect();
}

void QOutlineView::followBlock(int block)
{
    followedBlock = block;
    reselect();
}

void QOutlineView::reselect()
{
    if (!m_hierarchy || followedBlock < 0) return;
    // The variables view has no place for a line; only the outline follows the cursor.
    if (m_hierarchy->mode() != 0) return;
    const QModelIndex index = m_hierarchy->indexForLine(followedBlock);
    const QSignalBlocker blocker(this);
    if (!index.isValid()) {
        clearSelection();
        return;
    }
    setCurrentIndex(index);
    scrollTo(index);
}

void QOutlineView::pick(const QModelIndex& index)
{
    if (!m_hierarchy || !index.isValid()) return;
    // Lines of the hierarchy count from 1; 0 is an item without a line (a group, a variable).
    const int line = m_hierarchy->lineForIndex(index);
    if (line > 0) emit blockActivated(line - 1);
}
