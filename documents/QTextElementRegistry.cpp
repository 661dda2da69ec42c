#include "QTextElementRegistry.h"

#include "NameCmmReg.h"
#include "QAnimationElements.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QTextElementPool.h"
#include "QTextElementReg.h"
#include "UnknownGrpReg.h"

#include <QList>

namespace {

// One family as registered here: the recognisers it added, and the function that takes them back when
// the family keeps a list of its own.
struct QRegisteredFamily
{
    QList<QTextElementReg*> added;
    void (*takeBack)() = nullptr;
};

QList<QRegisteredFamily>& families()
{
    static QList<QRegisteredFamily> list;
    return list;
}

void addFamily(void (*build)(), void (*takeBack)() = nullptr)
{
    const qsizetype before = QTextElementReg::registered().size();
    build();
    families().append({QTextElementReg::registered().mid(before), takeBack});
}

void registerFallbacks()
{
    QTextElementReg::add(new NameCmmReg);
    QTextElementReg::add(new UnknownGrpReg);
}

} // namespace

void registerTextElements()
{
    if (!families().isEmpty()) return;
    addFamily(&registerDefinitionElements);
    addFamily(&registerAnimationElements, &unregisterAnimationElements);
    addFamily(&registerCommandElements);
    addFamily(&registerFallbacks);
}

void unregisterTextElements()
{
    if (families().isEmpty()) return;
    const QList<QRegisteredFamily> list = families();
    families().clear();
    for (auto family = list.crbegin(); family != list.crend(); ++family) {
        if (family->takeBack) {
            family->takeBack();
            continue;
        }
        for (auto reg = family->added.crbegin(); reg != family->added.crend(); ++reg)
            QTextElementReg::remove(*reg);
    }
    QTextElementPools::deleteAll();
}
