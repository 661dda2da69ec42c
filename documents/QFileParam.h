#pragma once

#include "QGroupParam.h"

// key = a file name: the raw text from the first value token to the end of the last one, so that
// blanks and any characters of the name stay as written, and a trailing comment stays out.
class QFileParam : public QGroupParam
{
    Q_OBJECT
public:
    QString path;

    QVariant value() const override;
    // Stores the name and writes the line as: key = name.
    void setValue(const QString& value);

protected:
    void parseValue(const QList<QTextToken*>& tokens) override;
    void clearValue() override;
    void releaseToPool() override;
};
