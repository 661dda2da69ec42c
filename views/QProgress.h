#pragma once

#include <QProgressDialog>

// The progress window of long project operations (loading, saving, backups). It answers a project's
// progress() signal and stops the operation when the user presses Cancel.
class QProgress : public QProgressDialog
{
    Q_OBJECT
public:
    QProgress(QWidget* parent, const QString& title);

public Q_SLOTS:
    void onProgress(uint pos, uint max, bool& allow);
};
