#pragma once

#include "QSounds.h"

#include <QAbstractTableModel>
#include <QPointer>

// The sounds of a sound file as a table: group and sample, which can be edited in place (each edit one
// undo step of the sound model), and the facts of each WAV. It follows the sound model row for row,
// passing on its inserts, removals, moves and resets as they happen.
class QSoundTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        GroupColumn,
        SampleColumn,
        ChannelsColumn,
        RateColumn,
        BitsColumn,
        DurationColumn,
        ColumnCount
    };

    explicit QSoundTable(QObject* parent = nullptr);

    void setSounds(QSounds* sounds);
    QSounds* sounds() const { return model; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    QPointer<QSounds> model;
};
