#pragma once

#include "QSyntaxHierarchy.h"

#include <QPointer>
#include <QTreeView>

// The outline of a text file in a side panel: a tree over the file's hierarchy. A click on an item
// asks for its line; the item of the cursor's line is kept selected, also across the rebuilds of the
// hierarchy, which renew every index.
class QOutlineView : public QTreeView
{
    Q_OBJECT
public:
    explicit QOutlineView(QWidget* parent = nullptr);

    QSyntaxHierarchy* hierarchy() const { return m_hierarchy; }
    void setHierarchy(QSyntaxHierarchy* hierarchy);

public Q_SLOTS:
    // Selects the item that holds the 0-based block, without asking to go there.
    void followBlock(int block);

Q_SIGNALS:
    // The user picked an item that stands on this 0-based block.
    void blockActivated(int block);

private:
    void pick(const QModelIndex& index);
    void reselect();

    QPointer<QSyntaxHierarchy> m_hierarchy;
    QMetaObject::Connection updatedConnection;
    int followedBlock = -1;
};
