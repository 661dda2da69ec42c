#pragma once

#include <QString>

// A line-based trace of what the program does at its edges (instance kind, files handed over, files
// opened). It is written only when the environment variable TAVREL_TRACE names a file, so that
// end-to-end tests can watch a running editor that has no console; otherwise it costs one check.
class QTrace
{
public:
    static bool enabled();
    static void write(const QString& category, const QString& text);
};
