#include "QTrace.h"

#include <QFile>
#include <QTextStream>

namespace {
const QString& tracePath()
{
    static const QString path = qEnvironmentVariable("TAVREL_TRACE");
    return path;
}
} // namespace

bool QTrace::enabled()
{
    return !tracePath().isEmpty();
}

void QTrace::write(const QString& category, const QString& text)
{
    if (!enabled()) return;
    // Opened per line and flushed at once: the reader is another process that may look at any time.
    QFile file(tracePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) return;
    QTextStream out(&file);
    out << category << ' ' << text << '\n';
}
