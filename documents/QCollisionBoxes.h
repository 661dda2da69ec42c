#pragma once

#include "QAnimationTypes.h"
#include "QTextElement.h"

#include <QList>
#include <QRect>

class QAnimationFrame;
class QCollisionBox;

// The declaration line of a set of boxes, "Clsn1: n" and its kin; the box lines follow it.
class QCollisionBoxes : public QTextElement
{
    Q_OBJECT
public:
    // The frame whose slot holds the set, or null.
    QAnimationFrame* frame = nullptr;
    // The box lines below the declaration, in line order; a box's index is its place here.
    QList<QCollisionBox*> boxes;
    QCollisionBoxType clsnType = QCollisionBoxType::Attack;

    int type() const override;
    // The last box line, or the declaration itself without boxes.
    int lastLine() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;

    // "Clsn1: %1", "Clsn2: %1", "Clsn1Default: %1" or "Clsn2Default: %1".
    static QString declarationText(QCollisionBoxType boxType, int count);
    // The type that a declaration word names; the word is known to be one of the four.
    static QCollisionBoxType typeOf(const QString& word);
    // The declaration as the model writes it, counting the boxes it holds.
    QString text() const;

    // A new box line after the last box, or after the declaration; the new box.
    QCollisionBox* insert(const QRect& rect);
};
