#pragma once

#include "QSampleFigure.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QString>

class QSprites;

// Every sprite of the sample fighter: the poses of its own moves, the get-hit sprites that the game
// requires of every character, and the two portraits. Drawn once on construction.
class QSampleSprites
{
public:
    QSampleSprites();

    // The group and index pairs in file order.
    const QList<QPair<int, int>>& items() const { return order; }
    // The drawing of a sprite; an empty one for a pair that isn't drawn.
    QSampleDrawing drawing(int group, int index) const { return drawings.value({group, index}); }

    // Fills an empty sprite model: the three palettes as 1,1 to 1,3, then every sprite with the first
    // of them. False, with problem set, when the model's own check finds an error.
    bool fill(QSprites& sprites, QString* problem) const;

private:
    void add(int group, int index, const QSampleDrawing& drawing);

    QList<QPair<int, int>> order;
    QMap<QPair<int, int>, QSampleDrawing> drawings;
};
