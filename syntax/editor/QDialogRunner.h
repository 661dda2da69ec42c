#pragma once

#include <functional>

class QDialog;

// Runs the program's own dialogs modally. Tests install a runner that fills a dialog's fields and
// accepts or rejects it, so that no test waits on a window; without one, QDialog::exec() runs.
class QDialogRunner
{
public:
    using Runner = std::function<int(QDialog*)>;

    // QDialog::Accepted or QDialog::Rejected.
    static int run(QDialog* dialog);
    // Installs a runner; an empty one goes back to exec(). Answers the one it replaces.
    static Runner install(Runner runner);
};
