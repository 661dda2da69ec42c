#include "QNaturalOrder.h"

#include <QStringView>

bool QNaturalOrder::less(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (a.at(i).isDigit() && b.at(j).isDigit()) {
            int endA = i;
            int endB = j;
            while (endA < a.size() && a.at(endA).isDigit())
                ++endA;
            while (endB < b.size() && b.at(endB).isDigit())
                ++endB;
            // Leading zeros don't count; then the longer run is the larger number.
            int startA = i;
            int startB = j;
            while (startA + 1 < endA && a.at(startA) == QLatin1Char('0'))
                ++startA;
            while (startB + 1 < endB && b.at(startB) == QLatin1Char('0'))
                ++startB;
            const QStringView runA = QStringView(a).mid(startA, endA - startA);
            const QStringView runB = QStringView(b).mid(startB, endB - startB);
            if (runA.size() != runB.size()) return runA.size() < runB.size();
            if (const int order = runA.compare(runB)) return order < 0;
            i = endA;
            j = endB;
            continue;
        }
        const QChar left = a.at(i).toCaseFolded();
        const QChar right = b.at(j).toCaseFolded();
        if (left != right) return left < right;
        ++i;
        ++j;
    }
    return a.size() - i < b.size() - j;
}
