#include "QRegularSnipField.h"

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>

QWidget* QRegularSnipField::makeWidget(QWidget* parent)
{
    if (m_field.type == QLatin1String("int")) {
        auto* box = new QSpinBox(parent);
        // State, animation and sound numbers run far past the default range of a spin box.
        box->setRange(-2147483647, 2147483647);
        return box;
    }
    if (m_field.type == QLatin1String("float")) {
        auto* box = new QDoubleSpinBox(parent);
        box->setRange(-1e9, 1e9);
        box->setDecimals(3);
        return box;
    }
    return new QLineEdit(parent);
}

QString QRegularSnipField::value() const
{
    if (auto* box = qobject_cast<QSpinBox*>(widget())) return QString::number(box->value());
    // The shortest text that gives the number back: 0.5, not 0.500.
    if (auto* box = qobject_cast<QDoubleSpinBox*>(widget())) return QString::number(box->value(), 'g', 12);
    if (auto* line = qobject_cast<QLineEdit*>(widget())) return line->text();
    return QString();
}
