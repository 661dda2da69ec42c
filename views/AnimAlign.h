#pragma once

#include <QDialog>
#include <QPoint>

class QComboBox;
class QSpinBox;

// Moves the offsets of several frames together: by a distance, or to one place, for the current
// frame, the frames from it on, the whole action or every action of the file.
class AnimAlign : public QDialog
{
    Q_OBJECT

public:
    enum Range
    {
        CurrentFrame = 0,
        FramesOnward = 1,
        WholeAction = 2,
        AllActions = 3
    };
    enum Mode
    {
        MoveBy = 0,
        SetTo = 1
    };

    explicit AnimAlign(QWidget* parent = nullptr);

    Range range() const;
    void setRange(Range value);
    Mode mode() const;
    void setMode(Mode value);
    QPoint offset() const;
    void setOffset(QPoint value);

private:
    QComboBox* rangeBox;
    QComboBox* modeBox;
    QSpinBox* xBox;
    QSpinBox* yBox;
};
