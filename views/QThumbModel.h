#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QPixmap>

// The thumbnails of one group of sprites: a small picture and the sprite's number per row. The
// picture is the row's decoration and the number its text, so an icon view shows both.
class QThumbModel : public QAbstractListModel
{
    Q_OBJECT

public:
    struct Thumb
    {
        QPixmap pixmap;
        quint32 number = 0;
        // Where the sprite stood in its file when the thumbnail was made.
        int position = -1;
    };

    explicit QThumbModel(QObject* parent = nullptr);
    ~QThumbModel() override;

    // Replaces the rows: the old ones go, and the new ones come in one step.
    void setThumbs(int group, const QList<Thumb>& thumbs);
    void clear();
    int group() const { return groupNumber; }
    const Thumb& at(int row) const { return items.at(row); }
    int count() const { return int(items.size()); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QList<Thumb> items;
    int groupNumber = -1;
};
