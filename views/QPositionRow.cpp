#include "QPositionRow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

QPositionRow QPositionRow::make(QWidget* owner, const char* prefix)
{
    QPositionRow row;
    row.slider = new QSlider(Qt::Horizontal, owner);
    row.slider->setObjectName(QLatin1String(prefix) + QStringLiteral("_sel"));
    row.label = new QLabel(QStringLiteral("0 / 0"), owner);
    row.label->setObjectName(QLatin1String(prefix) + QStringLiteral("_pos_text"));
    row.layout = new QHBoxLayout;
    row.layout->addWidget(row.slider, 1);
    row.layout->addWidget(row.label);
    return row;
}
