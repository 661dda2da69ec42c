#pragma once

#include <QDialog>
#include <QList>
#include <QPair>

class QGroupRangeBox;
class QListWidget;
class QRadioButton;
class QSprites;

// Asks from which open project sprites are imported, and which of its sprites: all, or a group with an
// optional run of numbers.
class sprimport : public QDialog
{
    Q_OBJECT

public:
    using Source = QPair<QString, QSprites*>;

    explicit sprimport(const QList<Source>& sources, QWidget* parent = nullptr);

    // The chosen project's sprites; null when none is chosen.
    QSprites* source() const;
    // The rows of the chosen project that are taken, in list order.
    QList<uint> rows() const;

    QListWidget* projectList() const { return projects; }
    QRadioButton* allButton() const { return all; }
    QRadioButton* groupButton() const { return group; }
    QGroupRangeBox* range() const { return groupRange; }

private:
    QList<Source> sources;
    QListWidget* projects;
    QRadioButton* all;
    QRadioButton* group;
    QGroupRangeBox* groupRange;
};
