#pragma once

#include "QThrowWriter.h"

#include <QDialog>

class QDoubleSpinBox;
class QSpinBox;

// The numbers of a throw: its first StateDef, the animations of both sides, the opponent's velocity
// when let go, how long the opponent is held and where it is drawn.
class ThrwDlg : public QDialog
{
    Q_OBJECT
public:
    explicit ThrwDlg(QWidget* parent = nullptr);

    QThrowWriter values() const;

private:
    QSpinBox* integer(int minimum, int maximum, int value, const char* name);
    QDoubleSpinBox* real(double value, const char* name);

    QSpinBox* stateDef;
    QSpinBox* p1AnimStart;
    QSpinBox* p1Anim;
    QSpinBox* p2Anim;
    QDoubleSpinBox* xVelocity;
    QDoubleSpinBox* yVelocity;
    QSpinBox* bindCount;
    QSpinBox* sprPriority;
};
