#pragma once

#include "QOrganizableObject.h"

class QSprites;

// The palettes of a sprite file as a list model of their own, for the palettes view and the organizer.
// It holds no list: the palettes are the model's.
class QPaletteObject : public QOrganizableObject
{
    Q_OBJECT

public:
    explicit QPaletteObject(QSprites* sprites);

    QSprites* sprites() const { return model; }

    void beginChanges() override;
    void endChanges() override;
    void remove(uint index) override;
    void move(uint from, uint to) override;
    // Sorts the palettes by group, then index.
    void autoOrganize() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    friend class QSprites;
    QSprites* model;
};
