#pragma once

#include <QDialog>

class QCheckBox;
class QRadioButton;
class QSpinBox;

// Asks where palettes loaded from files go: the group, the index of the first one, the step from one
// index to the next, and whether each file's colours are taken in reverse order.
class AddPal : public QDialog
{
    Q_OBJECT

public:
    explicit AddPal(QWidget* parent = nullptr);

    int group() const;
    int index() const;
    // 1 or 10.
    int step() const;
    bool reversed() const;
    void setGroup(int value);
    void setIndex(int value);

    QSpinBox* groupBox() const { return groupField; }
    QSpinBox* indexBox() const { return indexField; }
    QCheckBox* reversedBox() const { return reverse; }
    QRadioButton* stepOne() const { return ones; }
    QRadioButton* stepTen() const { return tens; }

private:
    QSpinBox* groupField;
    QSpinBox* indexField;
    QCheckBox* reverse;
    QRadioButton* ones;
    QRadioButton* tens;
};
