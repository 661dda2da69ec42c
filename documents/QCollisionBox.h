#pragma once

#include "QAnimationTypes.h"
#include "QTextElement.h"

#include <QRect>

class QCollisionBoxes;

// One box line "  Clsn2[i] = x1, y1, x2, y2". The index in the line is not trusted: the box's place in
// its set is its index. The corners are kept ordered; the line keeps what was typed until the model
// writes it.
class QCollisionBox : public QTextElement
{
    Q_OBJECT
public:
    QCollisionBoxes* parent = nullptr;
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;

    int type() const override;
    // Removes the line, and the declaration too when the set is left without boxes.
    void remove(bool all = true) override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;

    // The line of a box: "Clsn2" for an odd set type, else "Clsn1", also under a default set.
    static QString boxText(QCollisionBoxType setType, int index, int left, int top, int right, int bottom);
    // The line as the model writes it, or an empty text for a box outside any set.
    QString text() const;
    // The place in the set, or -1.
    int index() const;

    QRect rect() const { return QRect(QPoint(x1, y1), QPoint(x2, y2)); }
    // Stores the corners, ordered, and rewrites the line.
    void setRect(const QRect& rect);
};
