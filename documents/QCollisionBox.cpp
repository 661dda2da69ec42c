#include "QCollisionBox.h"

#include "QAnimations.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

#include <utility>

int QCollisionBox::type() const
{
    return etCollisionBox;
}

void QCollisionBox::remove(bool all)
{
    if (!editor) return;
    QElementTextEditor* owner = editor;
    QCollisionBoxes* set = parent;
    owner->beginEdit();
    QTextElement::remove(all);
    if (set && set->editor == owner && set->boxes.isEmpty()) set->remove(all);
    owner->endEdit();
}

void QCollisionBox::release()
{
    if (parent) parent->boxes.removeOne(this);
    parent = nullptr;
    x1 = y1 = x2 = y2 = 0;
    QTextElementPool<QCollisionBox>::release(this);
}

void QCollisionBox::parse(const QList<QTextToken*>& tokens)
{
    x1 = tokens.at(5)->text.toInt();
    y1 = tokens.at(7)->text.toInt();
    x2 = tokens.at(9)->text.toInt();
    y2 = tokens.at(11)->text.toInt();
    if (x1 > x2) std::swap(x1, x2);
    if (y1 > y2) std::swap(y1, y2);
}

QString QCollisionBox::boxText(QCollisionBoxType setType, int index, int left, int top, int right, int bottom)
{
    const QLatin1String word = int(setType) & 1 ? QLatin1String("Clsn2") : QLatin1String("Clsn1");
    return QStringLiteral("  %1[%2] = %3, %4, %5, %6")
        .arg(word)
        .arg(index)
        .arg(left)
        .arg(top)
        .arg(right)
        .arg(bottom);
}

QString QCollisionBox::text() const
{
    if (!parent) return QString();
    return boxText(parent->clsnType, index(), x1, y1, x2, y2);
}

int QCollisionBox::index() const
{
    return parent ? int(parent->boxes.indexOf(const_cast<QCollisionBox*>(this))) : -1;
}

void QCollisionBox::setRect(const QRect& rect)
{
    int left = rect.left(), top = rect.top(), right = rect.right(), bottom = rect.bottom();
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
    if (left == x1 && top == y1 && right == x2 && bottom == y2) return;
    x1 = left;
    y1 = top;
    x2 = right;
    y2 = bottom;
    if (!editor || !parent) return;
    setLine(text());
    if (QAnimations* model = QAnimations::modelOf(editor)) model->elementWritten(this);
}
