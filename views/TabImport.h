#pragma once

#include <QDialog>
#include <QList>
#include <QPair>

class QGroupRangeBox;
class QListWidget;
class QRadioButton;
class QSounds;

// Asks from which open project sounds are imported, and which of its sounds: all, or a group with an
// optional run of sample numbers.
class TabImport : public QDialog
{
    Q_OBJECT

public:
    using Source = QPair<QString, QSounds*>;

    explicit TabImport(const QList<Source>& sources, QWidget* parent = nullptr);

    // The chosen project's sounds; null when none is chosen.
    QSounds* source() const;
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
