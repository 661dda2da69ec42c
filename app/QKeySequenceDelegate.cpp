#include "QKeySequenceDelegate.h"

#include <QKeySequenceEdit>

QWidget* QKeySequenceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const
{
    Q_UNUSED(option);
    Q_UNUSED(index);
    auto* editor = new QKeySequenceEdit(parent);
    editor->setClearButtonEnabled(true);
    // The keys are taken when the user stops typing them, not when the cell loses focus later.
    connect(editor, &QKeySequenceEdit::editingFinished, this, [this, editor]() {
        auto* self = const_cast<QKeySequenceDelegate*>(this);
        emit self->commitData(editor);
        emit self->closeEditor(editor);
    });
    return editor;
}

void QKeySequenceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* keys = qobject_cast<QKeySequenceEdit*>(editor))
        keys->setKeySequence(
            QKeySequence::fromString(index.data(Qt::EditRole).toString(), QKeySequence::PortableText));
}

void QKeySequenceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                        const QModelIndex& index) const
{
    auto* keys = qobject_cast<QKeySequenceEdit*>(editor);
    if (!keys) return;
    const QKeySequence sequence = keys->keySequence();
    // Nothing changed: a cell left without a keystroke must not rebind (nor warn) again.
    if (sequence.toString(QKeySequence::PortableText) == index.data(Qt::EditRole).toString()) return;
    model->setData(index, QVariant::fromValue(sequence), Qt::EditRole);
}
