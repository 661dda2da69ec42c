#pragma once

#include <QAbstractTableModel>
#include <QList>

// A table of palette substitutions: a sprite whose palette is named by a row's source group and
// number is shown with the palette that the row's destination names.
class QRemapModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Row
    {
        qint32 sourceGroup = 1;
        qint32 sourceIndex = 1;
        qint32 destinationGroup = 1;
        qint32 destinationIndex = 1;
    };

    explicit QRemapModel(QObject* parent = nullptr);

    // Appends a row with every field 1.
    void addRow();
    void removeRow(int row);
    void removeAll();
    void setRow(int row, int sourceGroup, int sourceIndex, int destinationGroup, int destinationIndex);
    // The destination of the first row with this source; false when no row has it.
    bool find(int sourceGroup, int sourceIndex, int* destinationGroup, int* destinationIndex) const;
    const QList<Row>& rows() const { return table; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    static qint32* field(Row& row, int column);
    QList<Row> table;
};
