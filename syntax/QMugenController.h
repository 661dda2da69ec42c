#pragma once

#include "QMugenParamInfo.h"

#include <QMap>
#include <QString>

// A state controller, BG element type, BG controller type or font definition type, with its parameters.
struct QMugenController
{
    unsigned minver = 0;
    unsigned deprecatedVersion = 0;
    QString name;
    // The deprecation version as written in the file; empty when never deprecated.
    QString deprecated;
    QMap<QString, QMugenParamInfo> params;
};
