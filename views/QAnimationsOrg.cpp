#include "QAnimationsOrg.h"

#include "QAnimation.h"
#include "QAnimations.h"
#include "QElementTextEditor.h"

QAnimationsOrg* QAnimationsOrg::of(QAnimations* animations)
{
    if (!animations) return nullptr;
    if (auto* made = animations->findChild<QAnimationsOrg*>(QString(), Qt::FindDirectChildrenOnly))
        return made;
    return new QAnimationsOrg(animations);
}

QAnimationsOrg::QAnimationsOrg(QAnimations* animations) : QOrganizableObject(animations), source(animations)
{
    relay();
}

QAnimationsOrg::~QAnimationsOrg() = default;

void QAnimationsOrg::relay()
{
    using M = QAbstractItemModel;
    QAnimations* model = source;
    connect(model, &M::rowsAboutToBeInserted, this, [this](const QModelIndex&, int first, int last) {
        if (!quiet) beginInsertRows(QModelIndex(), first, last);
    });
    connect(model, &M::rowsInserted, this, [this]() {
        if (!quiet) endInsertRows();
    });
    connect(model, &M::rowsAboutToBeRemoved, this, [this](const QModelIndex&, int first, int last) {
        if (!quiet) beginRemoveRows(QModelIndex(), first, last);
    });
    connect(model, &M::rowsRemoved, this, [this]() {
        if (!quiet) endRemoveRows();
    });
    connect(model, &M::rowsAboutToBeMoved, this,
            [this](const QModelIndex&, int first, int last, const QModelIndex&, int destination) {
                if (!quiet) beginMoveRows(QModelIndex(), first, last, QModelIndex(), destination);
            });
    connect(model, &M::rowsMoved, this, [this]() {
        if (!quiet) endMoveRows();
    });
    // A new layout has no mapping this list could give its persistent indexes: it starts afresh.
    const auto beginReset = [this]() {
        if (!quiet) beginResetModel();
    };
    const auto endReset = [this]() {
        if (!quiet) endResetModel();
    };
    connect(model, &M::modelAboutToBeReset, this, beginReset);
    connect(model, &M::layoutAboutToBeChanged, this, beginReset);
    connect(model, &M::modelReset, this, endReset);
    connect(model, &M::layoutChanged, this, endReset);
    connect(model, &M::dataChanged, this,
            [this](const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) {
                if (!quiet) emit dataChanged(index(topLeft.row()), index(bottomRight.row()), roles);
            });
}

void QAnimationsOrg::beginChanges()
{
    if (source) source->beginEdit();
}

void QAnimationsOrg::endChanges()
{
    if (source) source->endEdit();
}

void QAnimationsOrg::remove(uint index)
{
    if (source) source->remove(index);
}

void QAnimationsOrg::move(uint from, uint to)
{
    const int count = rowCount();
    if (!source || from >= uint(count) || to >= uint(count) || from == to) return;
    beginMoveRows(QModelIndex(), int(from), int(from), QModelIndex(), int(to > from ? to + 1 : to));
    ++quiet;
    source->move(int(from), to);
    --quiet;
    endMoveRows();
    // Typing into a span can make the text read as more or fewer actions than before; then nothing
    // known about the rows holds any longer.
    if (rowCount() != count) {
        beginResetModel();
        endResetModel();
    }
}

void QAnimationsOrg::autoOrganize()
{
    if (!source || source->count() < 2) return;
    beginChanges();
    for (int i = 1; i < source->count(); ++i) {
        for (int j = 0; j < i; ++j) {
            if (source->at(uint(i))->number < source->at(uint(j))->number) {
                move(uint(i), uint(j));
                break;
            }
        }
    }
    endChanges();
}

int QAnimationsOrg::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !source ? 0 : source->rowCount();
}

QVariant QAnimationsOrg::data(const QModelIndex& index, int role) const
{
    if (!source || !checkIndex(index, CheckIndexOption::IndexIsValid)) return QVariant();
    return source->data(source->index(index.row()), role);
}
