#pragma once

#include <QStyledItemDelegate>

// Edits a cell of keys by pressing them: a QKeySequenceEdit whose sequence the model receives as a
// QKeySequence as soon as the keys are entered, so that a refused key leaves the cell as it was.
class QKeySequenceDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};
