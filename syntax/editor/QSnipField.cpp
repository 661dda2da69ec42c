#include "QSnipField.h"

#include "QComboSnipField.h"
#include "QRegularSnipField.h"
#include "QSnippetManager.h"

#include <QWidget>

QSnipField::~QSnipField() = default;

QString QSnipField::title() const
{
    return QSnippetManager::translate(m_field.title.isEmpty() ? m_field.name : m_field.title);
}

QWidget* QSnipField::createWidget(QWidget* parent)
{
    m_widget = makeWidget(parent);
    return m_widget;
}

QSnipField* QSnipField::create(const QSnippetField& field)
{
    if (field.type == QLatin1String("items")) return new QComboSnipField(field);
    return new QRegularSnipField(field);
}
