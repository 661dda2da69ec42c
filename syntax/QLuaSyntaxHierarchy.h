#pragma once

#include "QHierarchyItem.h"
#include "QSyntaxHierarchy.h"

// The outline of a Lua script: a root with nothing below it, so the tree stays empty and scripts find no
// sections or values in Lua text.
class QLuaSyntaxHierarchy : public QSyntaxHierarchy
{
    Q_OBJECT
public:
    explicit QLuaSyntaxHierarchy(QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    void update(const QString& text) override;
    int lineForIndex(const QModelIndex& index) const override;
    QModelIndex indexForLine(int line) const override;
    bool sectionExists(const QString& name) const override;
    QString findValue(const QString& section, const QString& key) const override;

private:
    QHierarchyItem m_root;
};
