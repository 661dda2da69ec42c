#include "QSampleDialogs.h"

#include <cstdio>

QUserDialogs::Button QSampleDialogs::message(QUserDialogs::Icon icon, const QString& title,
                                             const QString& text, Buttons buttons, Button defaultButton)
{
    std::fprintf(stderr, "tavrel-make-sample: %s: %s\n", qPrintable(title), qPrintable(text));
    return QSilentDialogs::message(icon, title, text, buttons, defaultButton);
}
