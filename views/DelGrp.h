#pragma once

#include <QDialog>

class QGroupRangeBox;

// Asks which group to delete, whole or a run of its numbers.
class DelGrp : public QDialog
{
    Q_OBJECT

public:
    explicit DelGrp(int group, QWidget* parent = nullptr);

    QGroupRangeBox* range() const { return groupRange; }

private:
    QGroupRangeBox* groupRange;
};
