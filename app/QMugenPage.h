#pragma once

#include <QWidget>

class QListView;
class QMugenModel;

// The options page of the games to test in. The list is the configuration's own, so changes count at
// once, as the keys do.
class QMugenPage : public QWidget
{
    Q_OBJECT
public:
    QMugenPage(QMugenModel* model, QWidget* parent = nullptr);

    QListView* list() const { return view; }

public Q_SLOTS:
    void add();
    void edit();
    void remove();
    void moveUp();
    void moveDown();

private:
    int selectedRow() const;
    void select(int row);

    QMugenModel* model;
    QListView* view;
};
