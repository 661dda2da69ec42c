#pragma once

#include <QDialog>

class QSprites;
class QTableWidget;

// Asked when a sprite whose image other sprites share gets new pixels: the user checks the sprites
// that take the new image too ("Share with selected") or lets the changed sprite go alone ("No
// sharing").
class ShareDlg : public QDialog
{
    Q_OBJECT
public:
    ShareDlg(const QSprites* sprites, const QList<uint>& rows, QWidget* parent = nullptr);

    QTableWidget* table() const { return view; }
    // The sprites to take the new image: the checked ones after "Share with selected", none after "No
    // sharing" or a closed dialog.
    QList<uint> chosen() const;

    // Shows the dialog and leaves in rows only the sprites that take the new image.
    static void answer(const QSprites* sprites, QList<uint>& rows, QWidget* parent);

private:
    QTableWidget* view;
    QList<uint> rows;
};
