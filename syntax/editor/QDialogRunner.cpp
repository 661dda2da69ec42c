#include "QDialogRunner.h"

#include <QDialog>

namespace {

QDialogRunner::Runner& installed()
{
    static QDialogRunner::Runner runner;
    return runner;
}

} // namespace

int QDialogRunner::run(QDialog* dialog)
{
    if (installed()) return installed()(dialog);
    return dialog->exec();
}

QDialogRunner::Runner QDialogRunner::install(Runner runner)
{
    Runner old = std::move(installed());
    installed() = std::move(runner);
    return old;
}
