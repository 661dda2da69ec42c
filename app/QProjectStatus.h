#pragma once

#include "QProjectTypes.h"

#include <QCoreApplication>
#include <QString>

// The words of the status bar's project label.
class QProjectStatus
{
    Q_DECLARE_TR_FUNCTIONS(QProjectStatus)

public:
    // "Project: Character, Version: M.U.G.E.N. 1.1"
    static QString text(QProjectType type, quint32 version);
    static QString typeName(QProjectType type);
    // "Beta" for content older than 1.0 (no version stated), else the two high bytes as "1.1".
    static QString versionName(quint32 version);
};
