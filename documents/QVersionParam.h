#pragma once

#include "QGroupParam.h"

// key = major.minor, packed as major << 24 | minor << 16. Anything else, such as the date form
// "04,14,2002" of old files, gives 0.
class QVersionParam : public QGroupParam
{
    Q_OBJECT
public:
    uint version = 0;

    QVariant value() const override;

protected:
    void parseValue(const QList<QTextToken*>& tokens) override;
    void clearValue() override;
    void releaseToPool() override;
};
