#pragma once

#include <QDialog>
#include <QStringList>

class QGroupRangeBox;
class QListWidget;
class QRadioButton;

// Asks from which other open project items are imported, and which of them: all, or a group with an
// optional run of numbers. The sprites and sounds editors each name their items and read the choice
// against their own model.
class QProjectImportDlg : public QDialog
{
    Q_OBJECT

public:
    QListWidget* projectList() const { return projects; }
    QRadioButton* allButton() const { return all; }
    QRadioButton* groupButton() const { return group; }
    QGroupRangeBox* range() const { return groupRange; }

protected:
    // One list entry per project ("Name (3 sprites)"), and the two range choices' texts.
    QProjectImportDlg(const QStringList& entries, const QString& allText, const QString& groupText,
                      QWidget* parent);

    // The chosen entry, or -1.
    int chosen() const;
    bool wholeFile() const;

private:
    QListWidget* projects;
    QRadioButton* all;
    QRadioButton* group;
    QGroupRangeBox* groupRange;
};
