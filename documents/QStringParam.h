#pragma once

#include "QGroupParam.h"

// key = "text": the text without its quotes.
class QStringParam : public QGroupParam
{
    Q_OBJECT
public:
    QString text;

    QVariant value() const override;
    // Stores the text and writes the line as: key = "text".
    void setValue(const QString& value);

protected:
    void parseValue(const QList<QTextToken*>& tokens) override;
    void clearValue() override;
    void releaseToPool() override;
};
