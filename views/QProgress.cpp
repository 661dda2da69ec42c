#include "QProgress.h"

#include <QCoreApplication>

QProgress::QProgress(QWidget* parent, const QString& title) : QProgressDialog(parent)
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    // Short operations finish before the window would be worth showing.
    setMinimumDuration(500);
    setAutoClose(false);
    setAutoReset(false);
}

void QProgress::onProgress(uint pos, uint max, bool& allow)
{
    setMaximum(int(max));
    setValue(int(qMin(pos, max)));
    QCoreApplication::processEvents();
    allow = !wasCanceled();
}
