#include "QComboSnipField.h"

#include "QSnippetManager.h"

#include <QComboBox>

QWidget* QComboSnipField::makeWidget(QWidget* parent)
{
    auto* box = new QComboBox(parent);
    for (int i = 0; i < m_field.values.size(); ++i) {
        const QString title = m_field.valueTitles.value(i);
        box->addItem(title.isEmpty() ? m_field.values.at(i) : QSnippetManager::translate(title),
                     m_field.values.at(i));
    }
    return box;
}

QString QComboSnipField::value() const
{
    auto* box = qobject_cast<QComboBox*>(widget());
    return box ? box->currentData().toString() : QString();
}
