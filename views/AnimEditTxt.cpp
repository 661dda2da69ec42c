#include "AnimEditTxt.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

AnimEditTxt::AnimEditTxt(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("AnimEditTxt"));
    setWindowTitle(tr("Action text"));
    auto* layout = new QVBoxLayout(this);
    edit = new QPlainTextEdit(this);
    edit->setObjectName(QStringLiteral("anim_text"));
    edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    layout->addWidget(edit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(520, 420);
}

QString AnimEditTxt::text() const
{
    return edit->toPlainText();
}

void AnimEditTxt::setText(const QString& text)
{
    edit->setPlainText(text.trimmed());
}
