#pragma once

#include "QParamGroup.h"

// A fixed section such as "[Info]" or "[Files]"; its sub type says which (QTextElementSubType).
class QSingletonParamGroup : public QParamGroup
{
    Q_OBJECT
public:
    // Set by the recogniser that made it.
    int section = 0;

    int type() const override;
    int subType() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;
};
