#pragma once

#include <QDialog>

class QGroupRangeBox;
class QSpinBox;

// Asks which group of sounds, whole or a run of its sample numbers, is deleted, or moved to which
// other group.
class SndGrpDlg : public QDialog
{
    Q_OBJECT

public:
    enum Mode
    {
        Delete,
        Rename
    };

    SndGrpDlg(Mode mode, int group, QWidget* parent = nullptr);

    QGroupRangeBox* range() const { return groupRange; }
    // The group the sounds move to; null when deleting.
    QSpinBox* toGroupBox() const { return toGroup; }

private:
    QGroupRangeBox* groupRange;
    QSpinBox* toGroup = nullptr;
};
