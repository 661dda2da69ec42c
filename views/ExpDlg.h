#pragma once

#include "QSpriteTransfer.h"

#include <QDialog>

class QGroupRangeBox;
class QListWidget;
class QRadioButton;
class QSprites;

// Asks which sprites an export takes: all of them, whole groups checked in a list of the file's groups,
// or one group with an optional run of numbers.
class ExpDlg : public QDialog
{
    Q_OBJECT

public:
    ExpDlg(const QSprites& sprites, int group, QWidget* parent = nullptr);

    QSpriteSelection selection() const;

    QRadioButton* allButton() const { return all; }
    QRadioButton* groupsButton() const { return allGroups; }
    QRadioButton* groupButton() const { return group; }
    // One checkable row per group of the file, in ascending order.
    QListWidget* groupList() const { return groups; }
    QGroupRangeBox* range() const { return groupRange; }

private:
    QRadioButton* all;
    QRadioButton* allGroups;
    QRadioButton* group;
    QListWidget* groups;
    QGroupRangeBox* groupRange;
};
