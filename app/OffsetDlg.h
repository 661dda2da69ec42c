#pragma once

#include <QDialog>
#include <QPointer>

class QLabel;
class QOffsetView;
class QSpinBox;
class QSprites;

// Reads offsets off a sprite of the project: the user picks the sprite by group and number and clicks
// a point; "Insert" takes its offset from the sprite's axis, as "x,y", into the text.
class OffsetDlg : public QDialog
{
    Q_OBJECT
public:
    explicit OffsetDlg(QSprites* sprites, QWidget* parent = nullptr);

    QOffsetView* view() const { return m_view; }
    // The offset as a parameter takes it, "x,y".
    QString offsetText() const;

private:
    void showSprite();

    QPointer<QSprites> sprites;
    QSpinBox* group;
    QSpinBox* number;
    QOffsetView* m_view;
    QLabel* offsetLabel;
};
