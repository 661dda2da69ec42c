#pragma once

#include <QList>
#include <QString>

// A node of a text's outline: a section, a State under its StateDef, a key line of a section. Nodes are
// recycled between rebuilds of the outline and never freed; `created` counts how many were ever made.
struct QHierarchyItem
{
    QHierarchyItem() { ++created; }
    QHierarchyItem(const QHierarchyItem&) = delete;
    QHierarchyItem& operator=(const QHierarchyItem&) = delete;

    QList<QHierarchyItem*> children;
    QHierarchyItem* parent = nullptr;
    QString type;
    QString name;
    QString value;
    // The place in the parent.
    int row = 0;
    // The text line, 1 for the first; a root has none (0).
    int line = 0;

    static inline int created = 0;
};
