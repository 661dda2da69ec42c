#include "QTextElementReg.h"

namespace {

QList<QTextElementReg*>& registry()
{
    static QList<QTextElementReg*> list;
    return list;
}

int& registryGeneration()
{
    static int value = 0;
    return value;
}

bool eitherCase(ushort c, int packedChar)
{
    return packedChar != 0 && (c == packedChar || c == packedChar + 32);
}

} // namespace

QTextElementReg::~QTextElementReg() = default;

int QTextElementReg::subType() const
{
    return 0;
}

int QTextElementReg::charClass(int cls, char c1, char c2, char c3)
{
    return (cls & 0xff) | (int(uchar(c1)) << 8) | (int(uchar(c2)) << 16) | (int(uchar(c3)) << 24);
}

bool QTextElementReg::passes(int packed, QChar c)
{
    const ushort u = c.unicode();
    const int c1 = (packed >> 8) & 0xff;
    const int c2 = (packed >> 16) & 0xff;
    const int c3 = (packed >> 24) & 0xff;
    switch (packed & 0xff) {
    case 1:
        return true;
    case 2:
        return (u >= '0' && u <= '9') || u == '-';
    case 3:
        return u == c1;
    case 4:
        return u == c1 || u == c2;
    case 5:
        return u == c1 || u == c2 || u == c3;
    case 6:
        return u == c1 || u == c1 + 32;
    case 7:
        return eitherCase(u, c1) || eitherCase(u, c2);
    case 8:
        return eitherCase(u, c1) || eitherCase(u, c2) || eitherCase(u, c3);
    default:
        return false;
    }
}

void QTextElementReg::add(QTextElementReg* reg)
{
    registry().append(reg);
    ++registryGeneration();
}

void QTextElementReg::remove(QTextElementReg* reg)
{
    if (registry().removeOne(reg)) {
        delete reg;
        ++registryGeneration();
    }
}

const QList<QTextElementReg*>& QTextElementReg::registered()
{
    return registry();
}

void QTextElementReg::deleteAll()
{
    const QList<QTextElementReg*> list = registry();
    registry().clear();
    ++registryGeneration();
    qDeleteAll(list);
}

int QTextElementReg::generation()
{
    return registryGeneration();
}
