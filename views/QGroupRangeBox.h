#pragma once

#include <QWidget>

class QCheckBox;
class QSpinBox;

// A group and, optionally, a run of its numbers: the part that every range question of the sprites
// editor shares (saving, cropping, deleting, renaming, exporting and importing sprites).
class QGroupRangeBox : public QWidget
{
    Q_OBJECT

public:
    explicit QGroupRangeBox(const QString& groupLabel, QWidget* parent = nullptr);

    int group() const;
    void setGroup(int value);
    // True when the whole group is meant, false for the numbers from() to to() only.
    bool allNumbers() const;
    void setNumbers(bool all, int from, int to);
    int from() const;
    int to() const;

    QSpinBox* groupBox() const { return groupSpin; }
    QCheckBox* rangeBox() const { return range; }
    QSpinBox* fromBox() const { return fromSpin; }
    QSpinBox* toBox() const { return toSpin; }

private:
    QSpinBox* groupSpin;
    QCheckBox* range;
    QSpinBox* fromSpin;
    QSpinBox* toSpin;
};
