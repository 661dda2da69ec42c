#pragma once

#include "QVarLog.h"

#include <QDialog>

class QCheckBox;
class QComboBox;

// The choices of the variable usage log.
class VarDlg : public QDialog
{
    Q_OBJECT
public:
    explicit VarDlg(QWidget* parent = nullptr);

    QVarLog::Options options() const;

private:
    QComboBox* format;
    QCheckBox* onlyUsed;
    QCheckBox* onePerLine;
    QCheckBox* floats;
    QCheckBox* integers;
};
