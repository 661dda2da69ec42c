#pragma once

#include <QAbstractTableModel>
#include <QList>

class QSprites;

// The sprites that a version 1.01 file can't give the character palette where they stand: their
// position, group and number, for OrderDlg.
class QOrderModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    QOrderModel(const QSprites* sprites, const QList<uint>& rows, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const QSprites* sprites;
    QList<uint> rows;
};
