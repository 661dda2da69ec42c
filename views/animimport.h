#pragma once

#include <QDialog>
#include <QList>

class QAnimations;
class QListWidget;

// Picks the actions of another project to import: all of them are listed with their numbers and
// names, each with a check box.
class animimport : public QDialog
{
    Q_OBJECT

public:
    explicit animimport(const QAnimations* source, QWidget* parent = nullptr);

    // The checked actions by their index in the source, in order.
    QList<int> rows() const;
    QListWidget* list() const { return actions; }
    void setAllChecked(bool on);

private:
    QListWidget* actions;
};
