#pragma once

#include <QDialog>

class QGroupRangeBox;
class QSpinBox;

// Asks which group, whole or a run of its numbers, moves to which other group.
class RenGrp : public QDialog
{
    Q_OBJECT

public:
    explicit RenGrp(int group, QWidget* parent = nullptr);

    QGroupRangeBox* range() const { return groupRange; }
    QSpinBox* toGroupBox() const { return toGroup; }

private:
    QGroupRangeBox* groupRange;
    QSpinBox* toGroup;
};
