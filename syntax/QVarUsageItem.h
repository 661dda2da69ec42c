#pragma once

#include <QList>

struct QHierarchyItem;

// A node of the tree of variables: a top row ("Integer", "Float"), a variable of one of them, or a leaf
// naming a StateDef that writes the variable. Recycled like QHierarchyItem; `created` counts how many
// were ever made.
struct QVarUsageItem
{
    QVarUsageItem() { ++created; }
    QVarUsageItem(const QVarUsageItem&) = delete;
    QVarUsageItem& operator=(const QVarUsageItem&) = delete;

    QList<QVarUsageItem*> children;
    QVarUsageItem* parent = nullptr;
    // The StateDef of a leaf; the outline's root for States before any StateDef.
    QHierarchyItem* state = nullptr;
    // The variable's number, the row of a top row, -1 for a leaf.
    int index = -1;

    static inline int created = 0;
};
