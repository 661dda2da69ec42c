#pragma once

#include "QGroupParam.h"

// key = n1, n2, ...: up to ten integers.
class QIntNParam : public QGroupParam
{
    Q_OBJECT
public:
    static constexpr int maxCount = 10;

    int count = 0;
    int numbers[maxCount] = {};

    // One number: an int; two: a QPoint; otherwise a QVariantList.
    QVariant value() const override;

protected:
    void parseValue(const QList<QTextToken*>& tokens) override;
    void clearValue() override;
    void releaseToPool() override;
};
