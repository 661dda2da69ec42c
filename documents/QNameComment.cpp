#include "QNameComment.h"

#include "QGroupHeader.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int QNameComment::type() const
{
    return etNameComment;
}

void QNameComment::release()
{
    if (owner && owner->nameElement == this) owner->nameElement = nullptr;
    owner = nullptr;
    text.clear();
    QTextElementPool<QNameComment>::release(this);
}

void QNameComment::parse(const QList<QTextToken*>& tokens)
{
    text = tokens.at(0)->text.trimmed();
}
