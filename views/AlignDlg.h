#pragma once

#include <QDialog>
#include <QPoint>

class QSpinBox;
class QToolButton;

// The small tool window of the nine alignment commands: each puts a point of the sprite (a corner, the
// middle of a side or the centre) on the crossing of the guide lines, which the window shows and lets
// the user type.
class AlignDlg : public QDialog
{
    Q_OBJECT

public:
    explicit AlignDlg(QWidget* parent = nullptr);

    // The command names of the buttons, row by row from the top left: "spr_align_topleft" and so on.
    static const char* const commands[9];

    QToolButton* button(int which) const { return buttons[which]; }
    QSpinBox* xBox() const { return x; }
    QSpinBox* yBox() const { return y; }
    // From the view: shows the crossing without sending it back.
    void setGuides(QPoint crossing);
    void setAlignEnabled(bool on);

Q_SIGNALS:
    // Which point: 0 to 8, row by row from the top left.
    void alignRequested(int which);
    void guidesChanged(QPoint crossing);

private:
    QToolButton* buttons[9];
    QSpinBox* x;
    QSpinBox* y;
    bool guard = false;
};
