#include "QCollisionBoxes.h"

#include "QAnimationFrame.h"
#include "QCollisionBox.h"
#include "QElementTextEditor.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int QCollisionBoxes::type() const
{
    return etCollisionBoxes;
}

int QCollisionBoxes::lastLine() const
{
    return boxes.isEmpty() ? block.blockNumber() : boxes.last()->lastLine();
}

void QCollisionBoxes::release()
{
    if (frame)
        for (QCollisionBoxes*& slot : frame->boxes)
            if (slot == this) slot = nullptr;
    frame = nullptr;
    for (QCollisionBox* box : std::as_const(boxes))
        if (box->parent == this) box->parent = nullptr;
    boxes.clear();
    clsnType = QCollisionBoxType::Attack;
    QTextElementPool<QCollisionBoxes>::release(this);
}

void QCollisionBoxes::parse(const QList<QTextToken*>& tokens)
{
    clsnType = typeOf(tokens.at(0)->text);
}

QString QCollisionBoxes::declarationText(QCollisionBoxType boxType, int count)
{
    switch (boxType) {
    case QCollisionBoxType::Attack:
        return QStringLiteral("Clsn1: %1").arg(count);
    case QCollisionBoxType::Collision:
        return QStringLiteral("Clsn2: %1").arg(count);
    case QCollisionBoxType::AttackDefault:
        return QStringLiteral("Clsn1Default: %1").arg(count);
    case QCollisionBoxType::CollisionDefault:
        break;
    }
    return QStringLiteral("Clsn2Default: %1").arg(count);
}

QCollisionBoxType QCollisionBoxes::typeOf(const QString& word)
{
    int value = 0;
    if (word.startsWith(QLatin1String("clsn2"), Qt::CaseInsensitive)) value |= 1;
    if (word.endsWith(QLatin1String("default"), Qt::CaseInsensitive)) value |= 2;
    return QCollisionBoxType(value);
}

QString QCollisionBoxes::text() const
{
    return declarationText(clsnType, int(boxes.size()));
}

QCollisionBox* QCollisionBoxes::insert(const QRect& rect)
{
    if (!editor) return nullptr;
    QTextElement* above = boxes.isEmpty() ? static_cast<QTextElement*>(this) : boxes.last();
    const QTextBlock anchor = above->block;
    const QRect box = rect;
    editor->insertLineAfter(
        above,
        QCollisionBox::boxText(clsnType, int(boxes.size()), box.left(), box.top(), box.right(), box.bottom()),
        true);
    QTextElement* inserted = QElementTextEditor::elementAt(anchor.next());
    return inserted && inserted->type() == etCollisionBox ? static_cast<QCollisionBox*>(inserted) : nullptr;
}
