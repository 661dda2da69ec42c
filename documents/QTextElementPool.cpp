#include "QTextElementPool.h"

namespace {

QList<std::function<void()>>& pools()
{
    static QList<std::function<void()>> list;
    return list;
}

} // namespace

void QTextElementPools::add(std::function<void()> deleteAll)
{
    pools().append(std::move(deleteAll));
}

void QTextElementPools::deleteAll()
{
    const QList<std::function<void()>> list = pools();
    pools().clear();
    for (const auto& deleteAll : list)
        deleteAll();
}
