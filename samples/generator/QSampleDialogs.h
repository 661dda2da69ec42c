#pragma once

#include "QSilentDialogs.h"

// The dialog seam while the sample is made: no one is there to answer, and a model that wants to tell
// something means that the sample went wrong. Each box is printed to standard error and counted.
class QSampleDialogs : public QSilentDialogs
{
public:
    Button message(QUserDialogs::Icon icon, const QString& title, const QString& text, Buttons buttons,
                   Button defaultButton) override;
};
