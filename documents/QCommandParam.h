#pragma once

#include "QCommandStep.h"
#include "QGroupParam.h"

#include <QList>

// "command = ~D, DF, F, x": the steps of a command.
class QCommandParam : public QGroupParam
{
    Q_OBJECT
public:
    QList<QCommandStep> steps;

    // The steps as text.
    QVariant value() const override;

    // Reads the steps of a command's text (the part after "=").
    static QList<QCommandStep> parseSteps(const QString& text);
    // Writes steps as text: steps joined by ", "; in a step "/" with the time when not 0, "~", "$",
    // ">", the direction letters U, D, B, F, and the buttons joined to them by "+". The time read after
    // "~" is written only after "/", so "~30a" comes back as "~a".
    static QString stepsText(const QList<QCommandStep>& steps);

protected:
    void parseValue(const QList<QTextToken*>& tokens) override;
    void clearValue() override;
    void releaseToPool() override;
};
