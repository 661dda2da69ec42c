#include "QUnknownGroup.h"

#include "QTextElementPool.h"
#include "QTextElementType.h"

int QUnknownGroup::type() const
{
    return etUnknownGroup;
}

void QUnknownGroup::release()
{
    QGroupHeader::release();
    QTextElementPool<QUnknownGroup>::release(this);
}

void QUnknownGroup::parse(const QList<QTextToken*>&) {}
