#include "QScopeColors.h"

#include <QtGlobal>

namespace {

QColor shifted(const QColor& base, int amount)
{
    return QColor(qBound(0, base.red() + amount, 255), qBound(0, base.green() + amount, 255),
                  qBound(0, base.blue() + amount, 255));
}

QColor blended(const QColor& a, const QColor& b, int weight)
{
    return QColor((a.red() * (256 - weight) + b.red() * weight) / 256,
                  (a.green() * (256 - weight) + b.green() * weight) / 256,
                  (a.blue() * (256 - weight) + b.blue() * weight) / 256);
}

} // namespace

QColor QScopeColors::color(const QColor& base, int level, int count)
{
    const bool dark = base.value() < 129;
    const QColor light = shifted(base, dark ? 40 : -30);
    const QColor darker = shifted(base, dark ? 20 : -15);
    if (level >= count) return base;
    if (level <= 0) return light;
    if (level == count - 1) return darker;
    // Here 0 < level < count - 1, so count is at least 3.
    return blended(light, darker, level * (256 / (count - 2)));
}
