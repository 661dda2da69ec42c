#pragma once

#include "QTextElementPool.h"
#include "QTextElementReg.h"

// Recognises "key = value" for one key, ignoring case, with the value rule of its kind (see match()).
class ParamRegBase : public QTextElementReg
{
public:
    ParamRegBase(const QString& key, int id, int kind);

    const QString key;
    const int id;
    const int kind;

    int type() const override;
    int subType() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;

    // The registered recogniser of a key with this value kind, or null.
    static const ParamRegBase* find(const QString& key, int kind);

private:
    int charClassValue;
};

// The recogniser that makes parameters of class T.
template <class T>
class ParamReg : public ParamRegBase
{
public:
    using ParamRegBase::ParamRegBase;

    QTextElement* create() override
    {
        T* param = QTextElementPool<T>::create();
        param->name = key;
        param->id = id;
        param->kind = kind;
        return param;
    }
};
