#include "QActionInfo.h"

#include <QAction>
#include <QVariant>

void QActionInfo::setScopes(const QList<int>& list)
{
    scopes.fill(0);
    for (int scope : list) {
        if (scope < 0) break;
        if (scope < ScopeCount) scopes[size_t(scope)] = 1;
    }
}

bool QActionInfo::conflictsWith(const QActionInfo& other) const
{
    if (scopes[Everywhere] || other.scopes[Everywhere]) return true;
    for (int i = 1; i < ScopeCount; ++i)
        if (scopes[size_t(i)] && other.scopes[size_t(i)]) return true;
    return false;
}

bool QActionInfo::has(const QAction* action)
{
    return action && action->data().metaType() == QMetaType::fromType<QActionInfo>();
}

QActionInfo QActionInfo::of(const QAction* action)
{
    return has(action) ? action->data().value<QActionInfo>() : QActionInfo();
}

void QActionInfo::attachTo(QAction* action) const
{
    if (action) action->setData(QVariant::fromValue(*this));
}
