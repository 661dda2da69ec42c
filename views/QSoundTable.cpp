#include "QSoundTable.h"

#include "QSound.h"
#include "QSounds.h"

#include <QColor>

QSoundTable::QSoundTable(QObject* parent) : QAbstractTableModel(parent) {}

void QSoundTable::setSounds(QSounds* sounds)
{
    if (sounds == model) return;
    beginResetModel();
    if (model) disconnect(model, nullptr, this, nullptr);
    model = sounds;
    if (model) {
        // The sound model is a flat list: its rows are this table's rows.
        connect(
            model, &QAbstractItemModel::rowsAboutToBeInserted, this,
            [this](const QModelIndex&, int first, int last) { beginInsertRows(QModelIndex(), first, last); });
        connect(model, &QAbstractItemModel::rowsInserted, this, [this]() { endInsertRows(); });
        connect(
            model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int first, int last) { beginRemoveRows(QModelIndex(), first, last); });
        connect(model, &QAbstractItemModel::rowsRemoved, this, [this]() { endRemoveRows(); });
        connect(model, &QAbstractItemModel::rowsAboutToBeMoved, this,
                [this](const QModelIndex&, int first, int last, const QModelIndex&, int to) {
                    beginMoveRows(QModelIndex(), first, last, QModelIndex(), to);
                });
        connect(model, &QAbstractItemModel::rowsMoved, this, [this]() { endMoveRows(); });
        connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this]() { beginResetModel(); });
        connect(model, &QAbstractItemModel::modelReset, this, [this]() { endResetModel(); });
        connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this,
                [this]() { emit layoutAboutToBeChanged(); });
        connect(model, &QAbstractItemModel::layoutChanged, this, [this]() { emit layoutChanged(); });
        connect(model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& from, const QModelIndex& to) {
                    emit dataChanged(index(from.row(), 0), index(to.row(), ColumnCount - 1));
                });
        connect(model, &QObject::destroyed, this, [this]() {
            beginResetModel();
            model = nullptr;
            endResetModel();
        });
    }
    endResetModel();
}

int QSoundTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !model ? 0 : int(model->count());
}

int QSoundTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant QSoundTable::data(const QModelIndex& index, int role) const
{
    const QSound* sound = model && index.isValid() ? model->at(uint(index.row())) : nullptr;
    if (!sound) return QVariant();
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::EditRole) {
        if (index.column() == GroupColumn) return sound->group;
        if (index.column() == SampleColumn) return sound->sample;
        return QVariant();
    }
    if (role == Qt::ToolTipRole || role == Qt::ForegroundRole) {
        // The list shows the file's issues where they are: an empty sound, a pair an earlier sound has.
        const int first = model->find(sound->group, sound->sample);
        const bool repeated = first >= 0 && first < index.row();
        if (role == Qt::ForegroundRole)
            return repeated       ? QVariant(QColor(Qt::red))
                   : !sound->data ? QVariant(QColor(Qt::gray))
                                  : QVariant();
        if (repeated)
            return tr("The group %1, index %2 is already in use by sound #%3!")
                .arg(sound->group)
                .arg(sound->sample)
                .arg(first);
        return sound->data ? QVariant() : QVariant(tr("Empty sound!"));
    }
    if (role != Qt::DisplayRole) return QVariant();
    const QSoundInfo& info = sound->info;
    // A sound without facts (empty, or not PCM) shows none rather than zeros.
    const bool facts = info.channels > 0;
    switch (index.column()) {
    case GroupColumn:
        return QString::number(sound->group);
    case SampleColumn:
        return QString::number(sound->sample);
    case ChannelsColumn:
        return facts ? QString::number(info.channels) : QString();
    case RateColumn:
        return facts ? tr("%1 Hz").arg(info.sampleRate) : QString();
    case BitsColumn:
        return facts ? QString::number(info.bitsPerSample) : QString();
    case DurationColumn:
        return facts ? tr("%1 s").arg(double(info.duration), 0, 'f', 3) : QString();
    default:
        return QVariant();
    }
}

QVariant QSoundTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) return QVariant();
    if (orientation == Qt::Vertical) return section + 1;
    switch (section) {
    case GroupColumn:
        return tr("Group");
    case SampleColumn:
        return tr("Sample");
    case ChannelsColumn:
        return tr("Channels");
    case RateColumn:
        return tr("Sample rate");
    case BitsColumn:
        return tr("Bits");
    case DurationColumn:
        return tr("Duration");
    default:
        return QVariant();
    }
}

Qt::ItemFlags QSoundTable::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == GroupColumn || index.column() == SampleColumn) result |= Qt::ItemIsEditable;
    return result;
}

bool QSoundTable::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QSound* sound = model && index.isValid() ? model->at(uint(index.row())) : nullptr;
    if (!sound || role != Qt::EditRole) return false;
    bool ok = false;
    const uint number = value.toUInt(&ok);
    if (!ok) return false;
    const uint group = index.column() == GroupColumn ? number : sound->group;
    const uint sample = index.column() == SampleColumn ? number : sound->sample;
    if (index.column() != GroupColumn && index.column() != SampleColumn) return false;
    if (group == sound->group && sample == sound->sample) return true;
    model->setInfo(uint(index.row()), group, sample);
    return true;
}
