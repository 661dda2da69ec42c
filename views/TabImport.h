#pragma once

#include "QProjectImportDlg.h"

#include <QList>
#include <QPair>

class QSounds;

// Asks from which open project sounds are imported, and which of its sounds: all, or a group with an
// optional run of sample numbers.
class TabImport : public QProjectImportDlg
{
    Q_OBJECT

public:
    using Source = QPair<QString, QSounds*>;

    explicit TabImport(const QList<Source>& sources, QWidget* parent = nullptr);

    // The chosen project's sounds; null when none is chosen.
    QSounds* source() const;
    // The rows of the chosen project that are taken, in list order.
    QList<uint> rows() const;

private:
    QList<Source> sources;
};
