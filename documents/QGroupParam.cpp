#include "QGroupParam.h"

#include "ParamReg.h"
#include "QParamGroup.h"
#include "QTextElementType.h"

int QGroupParam::type() const
{
    return etGroupParam;
}

int QGroupParam::subType() const
{
    return kind;
}

void QGroupParam::release()
{
    if (group) group->params.removeOne(this);
    group = nullptr;
    boundId = 0;
    name.clear();
    kind = 0;
    id = 0;
    clearValue();
    releaseToPool();
}

void QGroupParam::parse(const QList<QTextToken*>& tokens)
{
    // A line keeps its element while its key is retyped into another key of the same kind, so the
    // key is looked up again whenever it no longer reads as the one this element was made for.
    const QString& key = tokens.at(0)->text;
    if (key.compare(name, Qt::CaseInsensitive) != 0)
        if (const ParamRegBase* reg = ParamRegBase::find(key, kind)) {
            name = reg->key;
            id = reg->id;
        }
    parseValue(tokens);
}
