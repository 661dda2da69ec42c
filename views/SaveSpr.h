#pragma once

#include "SaveItem.h"

#include <QDialog>

class QGroupRangeBox;
class QRadioButton;

// Asks which sprites a command takes: the current sprite, all sprites, or a group with an optional run
// of numbers. Saving images (plain or aligned), cropping and splitting channels use it.
class SaveSpr : public QDialog
{
    Q_OBJECT

public:
    SaveSpr(const QString& title, const SaveItem& initial, QWidget* parent = nullptr);

    SaveItem value() const;

    QRadioButton* currentButton() const { return current; }
    QRadioButton* allButton() const { return all; }
    QRadioButton* groupButton() const { return group; }
    QGroupRangeBox* range() const { return groupRange; }

    // Runs the dialog; on Ok, item receives the answer.
    static bool ask(const QString& title, SaveItem& item, QWidget* parent = nullptr);

private:
    QRadioButton* current;
    QRadioButton* all;
    QRadioButton* group;
    QGroupRangeBox* groupRange;
};
