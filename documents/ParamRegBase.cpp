#include "ParamReg.h"

#include "QGroupParamID.h"
#include "QTextElementType.h"

ParamRegBase::ParamRegBase(const QString& key, int id, int kind)
    : key(key), id(id), kind(kind), charClassValue(0)
{
    const QChar first = key.isEmpty() ? QChar() : key.at(0).toUpper();
    if (first.isDigit())
        charClassValue = charClass(2);
    else if (first.unicode() > 0 && first.unicode() < 256)
        charClassValue = charClass(6, char(first.unicode()));
}

int ParamRegBase::type() const
{
    return etGroupParam;
}

int ParamRegBase::subType() const
{
    return kind;
}

int ParamRegBase::firstCharClass() const
{
    return charClassValue;
}

namespace {

bool isNumber(int kind)
{
    return kind == tkInteger || kind == tkReal;
}

} // namespace

bool ParamRegBase::match(int index, const QTextToken& token)
{
    if (index == 0) return token.kind == tkIdentifier && token.text.compare(key, Qt::CaseInsensitive) == 0;
    if (index == 1) return token.kind == tkEqual;
    const bool end = token.kind == tkEndOfLine;
    const bool first = index == 2;
    switch (kind) {
    case pkString:
        return first ? token.kind == tkString : end;
    case pkIdentifier:
        return first ? token.kind == tkIdentifier : end;
    case pkInteger:
        return first ? token.kind == tkInteger : end;
    case pkNumber:
        return first ? isNumber(token.kind) : end;
    case pkIntegers:
    case pkNumbers:
        if (first) return kind == pkIntegers ? token.kind == tkInteger : isNumber(token.kind);
        if (index % 2 == 1) return token.kind == tkComma || end;
        return isNumber(token.kind) || end;
    default:
        return true;
    }
}

const ParamRegBase* ParamRegBase::find(const QString& key, int kind)
{
    for (const QTextElementReg* reg : QTextElementReg::registered()) {
        if (reg->type() != etGroupParam || reg->subType() != kind) continue;
        const auto* param = dynamic_cast<const ParamRegBase*>(reg);
        if (param && param->key.compare(key, Qt::CaseInsensitive) == 0) return param;
    }
    return nullptr;
}
