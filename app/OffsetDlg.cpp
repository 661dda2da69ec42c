#include "OffsetDlg.h"

#include "QOffsetView.h"
#include "QSprite.h"
#include "QSprites.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

OffsetDlg::OffsetDlg(QSprites* sprites, QWidget* parent) : QDialog(parent), sprites(sprites)
{
    setWindowTitle(tr("Offsets"));
    const QSprite* first = sprites && sprites->count() > 0 ? sprites->at(0) : nullptr;
    group = new QSpinBox(this);
    group->setObjectName(QStringLiteral("group"));
    group->setRange(0, 65535);
    group->setValue(first ? first->itemGroup() : 0);
    number = new QSpinBox(this);
    number->setObjectName(QStringLiteral("number"));
    number->setRange(0, 65535);
    number->setValue(first ? first->itemIndex() : 0);
    m_view = new QOffsetView(this);
    offsetLabel = new QLabel(this);
    offsetLabel->setObjectName(QStringLiteral("offset"));
    connect(group, qOverload<int>(&QSpinBox::valueChanged), this, &OffsetDlg::showSprite);
    connect(number, qOverload<int>(&QSpinBox::valueChanged), this, &OffsetDlg::showSprite);
    connect(m_view, &QOffsetView::offsetChanged, this,
            [this]() { offsetLabel->setText(tr("Offset: %1").arg(offsetText())); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(tr("Insert"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(tr("Sprite:"), this));
    top->addWidget(group);
    top->addWidget(number);
    top->addStretch(1);
    top->addWidget(offsetLabel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_view, 1);
    layout->addWidget(buttons);
    offsetLabel->setText(tr("Offset: %1").arg(offsetText()));
    showSprite();
}

QString OffsetDlg::offsetText() const
{
    return QStringLiteral("%1,%2").arg(m_view->offset().x()).arg(m_view->offset().y());
}

void OffsetDlg::showSprite()
{
    const int at = sprites ? sprites->find(0, group->value(), number->value()) : -1;
    const QSprite* sprite = at >= 0 ? sprites->at(uint(at)) : nullptr;
    if (sprite)
        m_view->setSprite(sprite->image(QSpriteImagePalette::Default),
                          QPoint(sprite->offsetX(), sprite->offsetY()));
    else
        m_view->setSprite(QImage(), QPoint());
}
