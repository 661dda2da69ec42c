#include "QViewSettings.h"

#include "QMugenModel.h"

QVariant QViewSettings::value(const char* key, const QVariant& fallback)
{
    if (!mugenModel) return fallback;
    const auto found = mugenModel->settings.constFind(QLatin1String(key));
    return found == mugenModel->settings.constEnd() || !found->isValid() ? fallback : *found;
}

void QViewSettings::setValue(const char* key, const QVariant& value)
{
    if (mugenModel) (*mugenModel)[QLatin1String(key)] = value;
}
