#pragma once

#include "QSnipField.h"

// A field chosen from a list: each entry shows a value's title and puts the value into the code.
class QComboSnipField : public QSnipField
{
public:
    using QSnipField::QSnipField;
    QString value() const override;

protected:
    QWidget* makeWidget(QWidget* parent) override;
};
