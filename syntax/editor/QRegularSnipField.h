#pragma once

#include "QSnipField.h"

// A field typed in: a line edit for "string", a spin box for "int", a decimal spin box for "float".
class QRegularSnipField : public QSnipField
{
public:
    using QSnipField::QSnipField;
    QString value() const override;

protected:
    QWidget* makeWidget(QWidget* parent) override;
};
