#pragma once

#include "QTextElementReg.h"

#include <QString>

// Recognises "[word]" or "[word1 word2]", ignoring case, and makes a QSingletonParamGroup of one sub
// type. Anything may follow the closing bracket.
class SingletonGroupReg : public QTextElementReg
{
public:
    SingletonGroupReg(const QString& first, const QString& second, int subType);
    SingletonGroupReg(const QString& first, int subType) : SingletonGroupReg(first, QString(), subType) {}

    int type() const override;
    int subType() const override;
    int firstCharClass() const override;
    bool match(int index, const QTextToken& token) override;
    QTextElement* create() override;

private:
    QString first;
    QString second;
    int section;
};
