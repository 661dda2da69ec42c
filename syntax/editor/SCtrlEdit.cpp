#include "SCtrlEdit.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

SCtrlEdit::SCtrlEdit(const QString& text, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("State controller"));
    resize(480, 360);
    auto* layout = new QVBoxLayout(this);
    edit = new QPlainTextEdit(this);
    edit->setObjectName(QStringLiteral("sctrlText"));
    edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setPlainText(text);
    edit->moveCursor(QTextCursor::End);
    layout->addWidget(edit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

QString SCtrlEdit::text() const
{
    return edit->toPlainText();
}

QString SCtrlEdit::newText()
{
    return QStringLiteral("[State ]\ntype = ");
}
