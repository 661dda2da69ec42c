#pragma once

#include "QSpriteTypes.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QRadioButton;
class QSpinBox;

// Asked when a new image for a sprite brings colours other than the sprite's palette: whether the
// image's table is stored reversed, and which palette the sprite takes: the image's own (added unless
// a palette with those colours is there), the palette given by group and index with the pixels as they
// are, or that palette with the image adapted to its colours. It also says how the new pixels relate
// to the sprites that share the old ones.
class PalDlg : public QDialog
{
    Q_OBJECT

public:
    explicit PalDlg(QSubItem palette, QWidget* parent = nullptr);

    QSpritePaletteMode paletteMode() const;
    QSpriteShareMode shareMode() const;
    bool reversed() const;
    // The palette that the exchange and the adaptation use.
    QSubItem palette() const;

    QCheckBox* reversedBox() const { return reverse; }
    QRadioButton* exchangeButton() const { return exchange; }
    QRadioButton* forceButton() const { return force; }
    QRadioButton* ownButton() const { return own; }
    QSpinBox* pGrpBox() const { return pGrp; }
    QSpinBox* pIdxBox() const { return pIdx; }
    // Rows: a copy of its own, shared and followed by every sharer, shared and asking who follows.
    QComboBox* shareBox() const { return share; }

private:
    QCheckBox* reverse;
    QRadioButton* exchange;
    QRadioButton* force;
    QRadioButton* own;
    QSpinBox* pGrp;
    QSpinBox* pIdx;
    QComboBox* share;
};
