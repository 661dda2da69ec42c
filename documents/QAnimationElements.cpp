#include "QAnimationElements.h"

#include "AnimReg.h"
#include "CLSNDeclReg.h"
#include "CLSNReg.h"
#include "FrameReg.h"
#include "InterFrameReg.h"

#include <QList>

namespace {

QList<QTextElementReg*>& registeredHere()
{
    static QList<QTextElementReg*> list;
    return list;
}

} // namespace

void registerAnimationElements()
{
    if (!registeredHere().isEmpty()) return;
    registeredHere() = {new AnimReg, new FrameReg, new InterFrameReg, new CLSNDeclReg, new CLSNReg};
    for (QTextElementReg* reg : std::as_const(registeredHere()))
        QTextElementReg::add(reg);
}

void unregisterAnimationElements()
{
    const QList<QTextElementReg*> list = registeredHere();
    registeredHere().clear();
    for (auto reg = list.crbegin(); reg != list.crend(); ++reg)
        if (QTextElementReg::registered().contains(*reg)) QTextElementReg::remove(*reg);
}
