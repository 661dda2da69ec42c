#pragma once

#include "QProjectImportDlg.h"

#include <QList>
#include <QPair>

class QSprites;

// Asks from which open project sprites are imported, and which of its sprites: all, or a group with an
// optional run of numbers.
class sprimport : public QProjectImportDlg
{
    Q_OBJECT

public:
    using Source = QPair<QString, QSprites*>;

    explicit sprimport(const QList<Source>& sources, QWidget* parent = nullptr);

    // The chosen project's sprites; null when none is chosen.
    QSprites* source() const;
    // The rows of the chosen project that are taken, in list order.
    QList<uint> rows() const;

private:
    QList<Source> sources;
};
