#pragma once

#include <QDialog>

class QSprites;
class QTableView;

// Asked when a version 1.01 character's sprites stand where the file can't give them the character
// palette: "Reorder" moves every sprite of the character palette behind 0,0 or 9000,0 (the palette
// order the engine reads), "Cancel" leaves the order and so the save fails.
class OrderDlg : public QDialog
{
    Q_OBJECT
public:
    OrderDlg(const QSprites* sprites, const QList<uint>& rows, QWidget* parent = nullptr);

    QTableView* table() const { return view; }

    // Shows the dialog for the list and reorders the sprites when the user agrees.
    static void answer(QSprites* sprites, const QList<uint>& rows, QWidget* parent);

private:
    QTableView* view;
};
