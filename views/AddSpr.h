#pragma once

#include "QSpriteTypes.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QSpinBox;

// Asks how image files become sprites: the group and first number, the axis, the step that numbering
// takes past numbers in use, and what happens to the images and their palettes.
class AddSpr : public QDialog
{
    Q_OBJECT

public:
    struct Values
    {
        int group = 0;
        int number = 0;
        int x = 0;
        int y = 0;
        // How far a number in use moves on to find a free one; 0 numbers the files by tens.
        int step = 1;
        // The axis of each sprite at the middle of its image's bottom instead of (x, y).
        bool bottomCenter = false;
        bool crop = false;
        // Identical pixels are stored once.
        bool share = true;
        QSpritePaletteMode paletteMode = QSpritePaletteMode::Ignore;
        QSubItem palette{1, 1};

        QSpriteShareMode shareMode() const
        {
            return share ? QSpriteShareMode::Share : QSpriteShareMode::NoShare;
        }
    };

    AddSpr(const Values& initial, int files, QWidget* parent = nullptr);

    Values values() const;

    QSpinBox* groupBox() const { return group; }
    QSpinBox* numberBox() const { return number; }
    QSpinBox* xBox() const { return x; }
    QSpinBox* yBox() const { return y; }
    QSpinBox* stepBox() const { return step; }
    QCheckBox* bottomCenterBox() const { return bottomCenter; }
    QCheckBox* cropBox() const { return crop; }
    QCheckBox* shareBox() const { return share; }
    // Rows: the image's palette, the palette below with the pixels unchanged, the image adapted to it.
    QComboBox* paletteBox() const { return palette; }
    QSpinBox* pGrpBox() const { return pGrp; }
    QSpinBox* pIdxBox() const { return pIdx; }

private:
    QSpinBox* group;
    QSpinBox* number;
    QSpinBox* x;
    QSpinBox* y;
    QSpinBox* step;
    QCheckBox* bottomCenter;
    QCheckBox* crop;
    QCheckBox* share;
    QComboBox* palette;
    QSpinBox* pGrp;
    QSpinBox* pIdx;
};
