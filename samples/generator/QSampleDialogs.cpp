#include "QSampleDialogs.h"

#include <cstdio>

QUserDialogs::Button QSampleDialogs::message(QMessageBox::Icon, QWidget*, const QString& title,
                                             const QString& text, Buttons, Button defaultButton)
{
    ++shown;
    std::fprintf(stderr, "tavrel-make-sample: %s: %s\n", qPrintable(title), qPrintable(text));
    return defaultButton;
}
