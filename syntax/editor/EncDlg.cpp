#include "EncDlg.h"

#include "QCodecList.h"
#include "QSyntaxTextEditor.h"
#include "QTextEncoding.h"
#include "QUserDialogs.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QVBoxLayout>

EncDlg::EncDlg(int codec, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("EncDlg"));
    setWindowTitle(tr("Encoding"));
    auto* layout = new QVBoxLayout(this);
    m_codePage = new QComboBox(this);
    m_codePage->setObjectName(QStringLiteral("codePage"));
    // The table is built at start; a bare list still offers "System".
    const int count = qMax(1, int(codecList().size()));
    for (int index = 0; index < count; ++index)
        m_codePage->addItem(QTextEncoding::codecName(index));
    layout->addWidget(m_codePage);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setCodec(codec);
}

int EncDlg::codec() const
{
    return qMax(0, m_codePage->currentIndex());
}

void EncDlg::setCodec(int codec)
{
    m_codePage->setCurrentIndex(codec >= 0 && codec < m_codePage->count() ? codec : 0);
}

EncDlg* EncDlg::openFor(QSyntaxTextEditor* text, QWidget* parent)
{
    auto* dialog = new EncDlg(text ? text->codec() : 0, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<QSyntaxTextEditor> target(text);
    connect(dialog, &QDialog::accepted, dialog, [dialog, target]() {
        if (target) apply(target, dialog->codec());
    });
    dialog->open();
    return dialog;
}

bool EncDlg::apply(QSyntaxTextEditor* text, int codec)
{
    if (!text) return false;
    text->setCodec(codec);
    const QString path = text->filePath();
    if (path.isEmpty() || !QFileInfo(path).isFile()) return false;
    if (QUserDialogs::question(tr("Reload"),
                               tr("Do you want to reload the file using the specified encoding?"),
                               QUserDialogs::Yes | QUserDialogs::No) != QUserDialogs::Yes)
        return false;
    // A file that can't be read leaves the text as it was; the codec still holds for the next save.
    return text->reload(path);
}
