#pragma once

#include <QDialog>

class QCheckBox;
class QSpinBox;

// Asks which group and first sample number WAV files take when they become sounds, and whether a
// number in use moves on to the next free one.
class AddSom : public QDialog
{
    Q_OBJECT

public:
    struct Values
    {
        int group = 0;
        int number = 0;
        bool nextFree = true;
    };

    AddSom(const Values& initial, int files, QWidget* parent = nullptr);

    Values values() const;

    QSpinBox* groupBox() const { return group; }
    QSpinBox* numberBox() const { return number; }
    QCheckBox* nextFreeBox() const { return nextFree; }

private:
    QSpinBox* group;
    QSpinBox* number;
    QCheckBox* nextFree;
};
