#pragma once

#include "QPalFX.h"

#include <QDialog>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QLabel;
class QSpinBox;
class QSprites;
class QTimer;

// Tries the values of a PalFX controller on a sprite of the project before they go into the text. The
// preview runs the engine's ticks, so that a sine wave can be seen moving.
class PalFXDlg : public QDialog
{
    Q_OBJECT
public:
    // presetFolder holds "<name>.palfx" files; sprites may be null, then nothing is previewed.
    PalFXDlg(const QString& presetFolder, QSprites* sprites, QWidget* parent = nullptr);

    QPalFX values() const;
    void setValues(const QPalFX& values);
    // The sprite with the effect at the current tick; null without a sprite.
    QImage preview() const { return shown; }
    int presetCount() const;

private:
    QSpinBox* spin(int minimum, int maximum, int value, const QString& name);
    void presetChosen(int index);
    void updatePreview();

    QPointer<QSprites> sprites;
    QList<QPalFX::Preset> presetList;
    QComboBox* presets;
    QSpinBox* add[3];
    QSpinBox* mul[3];
    QSpinBox* sinadd[4];
    QCheckBox* invertall;
    QSpinBox* color;
    QSpinBox* group;
    QSpinBox* number;
    QLabel* picture;
    QTimer* ticker;
    QImage source;
    int sourceAt = -2;
    QImage shown;
    int tick = 0;
};
