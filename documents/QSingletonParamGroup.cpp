#include "QSingletonParamGroup.h"

#include "QTextElementPool.h"
#include "QTextElementType.h"

int QSingletonParamGroup::type() const
{
    return etSingletonGroup;
}

int QSingletonParamGroup::subType() const
{
    return section;
}

void QSingletonParamGroup::release()
{
    releaseParams();
    QGroupHeader::release();
    section = 0;
    QTextElementPool<QSingletonParamGroup>::release(this);
}

void QSingletonParamGroup::parse(const QList<QTextToken*>&) {}
