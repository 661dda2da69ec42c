#include "QSampleAnimations.h"

#include "QSampleSprites.h"

#include <QRect>
#include <QString>

#include <algorithm>

namespace {

using Action = QSampleAnimations::Action;
using Frame = QSampleAnimations::Frame;

// A get-hit action of the stand and crouch kinds: the first two sprites of a group while hit, the
// group backwards when recovering.
Action hit(int number, const char* title, int group, QList<int> indices)
{
    Action action{number, title, {}};
    for (int index : indices)
        action.frames.append({group, index, 4});
    return action;
}

QString box(const char* kind, int slot, const QRect& area)
{
    return QStringLiteral(" %1[%2] = %3, %4, %5, %6\r\n")
        .arg(QLatin1String(kind))
        .arg(slot)
        .arg(area.left())
        .arg(area.top())
        .arg(area.right() + 1)
        .arg(area.bottom() + 1);
}

} // namespace

QList<QSampleAnimations::Action> QSampleAnimations::actions()
{
    const Strike fist = Fist;
    const Strike foot = Foot;
    QList<Action> list{
        {0, "Standing", {{0, 0, 12}, {0, 1, 8}, {0, 2, 8}, {0, 3, 12}, {0, 2, 8}, {0, 1, 8}}},
        {5, "Turning", {{5, 0, 6}}},
        {6, "Turning while crouching", {{6, 0, 6}}},
        {10, "Standing to crouching", {{10, 0, 4}}},
        {11, "Crouching", {{11, 0, -1}}},
        {12, "Crouching to standing", {{10, 0, 4}}},
        {20, "Walking forward", {{20, 0, 8}, {20, 1, 8}, {20, 2, 8}, {20, 3, 8}}},
        {21, "Walking back", {{20, 3, 8}, {20, 2, 8}, {20, 1, 8}, {20, 0, 8}}},
        {40, "Jump start", {{40, 0, 3}}},
        {41, "Jumping up", {{41, 0, 8}, {41, 1, 10}, {41, 2, -1}}},
        {42, "Jumping forward", {{41, 0, 8}, {41, 1, 10}, {41, 2, -1}}},
        {43, "Jumping back", {{41, 0, 8}, {41, 1, 10}, {41, 2, -1}}},
        {44, "Falling", {{41, 2, -1}}},
        {45, "Falling forward", {{41, 2, -1}}},
        {46, "Falling back", {{41, 2, -1}}},
        {47, "Landing", {{40, 0, 4}}},
        {100, "Running", {{100, 0, 5}, {100, 1, 5}, {100, 2, 5}, {100, 3, 5}}},
        {105, "Hopping back", {{41, 0, 4}, {41, 1, 4}, {41, 2, -1}}},
        {120, "Guard start, standing", {{120, 0, 3}}},
        {121, "Guard start, crouching", {{121, 0, 3}}},
        {122, "Guard start, in the air", {{122, 0, 3}}},
        {130, "Guarding, standing", {{120, 0, -1}}},
        {131, "Guarding, crouching", {{121, 0, -1}}},
        {132, "Guarding in the air", {{122, 0, -1}}},
        {140, "Guard end, standing", {{120, 0, 3}}},
        {141, "Guard end, crouching", {{121, 0, 3}}},
        {142, "Guard end, in the air", {{122, 0, 3}}},
        {150, "Guarding a hit, standing", {{120, 0, -1}}},
        {151, "Guarding a hit, crouching", {{121, 0, -1}}},
        {152, "Guarding a hit in the air", {{122, 0, -1}}},
        {200, "Punch", {{200, 0, 3}, {200, 1, 5, fist}, {200, 2, 6}, {200, 0, 3}}},
        {210, "Kick", {{210, 0, 4}, {210, 1, 6, foot}, {210, 2, 6}, {210, 0, 4}}},
        {400, "Crouching punch", {{400, 0, 3}, {400, 1, 5, fist}, {400, 0, 5}}},
        {600, "Jump kick", {{600, 0, 3}, {600, 1, -1, foot}}},
        {1000, "Rushing punch", {{1000, 0, 6}, {1000, 1, 8, fist}, {1000, 2, 8}, {200, 2, 6}}},
        hit(5000, "Hit high, light", 5000, {0, 10}),
        hit(5001, "Hit high, medium", 5001, {0, 10}),
        hit(5002, "Hit high, hard", 5002, {0, 10}),
        hit(5005, "Recovering from a light high hit", 5000, {10, 0}),
        hit(5006, "Recovering from a medium high hit", 5001, {20, 10, 0}),
        hit(5007, "Recovering from a hard high hit", 5002, {20, 10, 0}),
        hit(5010, "Hit low, light", 5010, {0, 10}),
        hit(5011, "Hit low, medium", 5011, {0, 10}),
        hit(5012, "Hit low, hard", 5012, {0, 10}),
        hit(5015, "Recovering from a light low hit", 5010, {10, 0}),
        hit(5016, "Recovering from a medium low hit", 5011, {20, 10, 0}),
        hit(5017, "Recovering from a hard low hit", 5012, {20, 10, 0}),
        hit(5020, "Hit crouching, light", 5020, {0, 10}),
        hit(5021, "Hit crouching, medium", 5020, {10, 20}),
        hit(5022, "Hit crouching, hard", 5020, {20}),
        hit(5025, "Recovering from a light crouching hit", 5020, {10, 0}),
        hit(5026, "Recovering from a medium crouching hit", 5020, {20, 10, 0}),
        hit(5027, "Recovering from a hard crouching hit", 5020, {20, 0}),
        {5030, "Hit in the air", {{5030, 0, 4}, {5030, 10, -1}}},
        {5035, "Hit in the air, turning", {{5031, 0, 3}, {5031, 10, 3}}},
        {5040, "Recovering in the air", {{41, 0, 4}, {41, 1, -1}}},
        {5050, "Falling", {{5030, 20, 6}, {5030, 30, 6}, {5030, 40, -1}}},
        {5051, "Falling, hit upwards", {{5031, 20, 6}, {5031, 30, -1}}},
        {5060, "Falling, coming down", {{5032, 40, 6}, {5032, 50, -1}}},
        {5061, "Falling, coming down after an upward hit", {{5031, 40, 6}, {5031, 50, -1}}},
        {5070, "Tripped", {{5070, 0, 4}, {5070, 10, 4}, {5070, 20, -1}}},
        {5071, "Tripped hard", {{5071, 0, 4}, {5071, 10, 4}, {5072, 20, -1}}},
        {5080, "Hit lying down", {{5060, 0, 4}, {5060, 10, -1}}},
        {5081, "Hit lying down, hard", {{5061, 0, 4}, {5062, 10, -1}}},
        {5090, "Hit lying down, into the air", {{5030, 30, -1}}},
        {5100, "Hitting the ground", {{5040, 20, 4}, {5040, 0, -1}}},
        {5101, "Bouncing off the ground", {{5041, 0, 4}, {5042, 0, -1}}},
        {5160, "Bouncing off the ground, defeated", {{5030, 30, -1}}},
        {5170, "Hitting the ground, defeated", {{5040, 0, -1}}},
        {5200, "Recovering near the ground", {{41, 2, 6}, {40, 0, -1}}},
        {5210, "Recovering in the air", {{41, 1, 6}, {41, 2, -1}}},
    };
    Action lyingDown{5110, "Lying down", {{5040, 10, -1}}};
    lyingDown.vulnerable = false;
    Action gettingUp{5120, "Getting up", {{5041, 20, 8}, {5042, 20, 8}, {11, 0, 6}, {10, 0, 6}}};
    gettingUp.vulnerable = false;
    Action defeated{5150, "Lying defeated", {{5040, 10, -1}}};
    defeated.vulnerable = false;
    list << lyingDown << gettingUp << defeated;
    std::sort(list.begin(), list.end(), [](const Action& a, const Action& b) { return a.number < b.number; });
    return list;
}

QByteArray QSampleAnimations::text(const QSampleSprites& sprites)
{
    QString out =
        QStringLiteral("; Roan's animations, made by tavrel-make-sample.\r\n"
                       "; Each action has a body box (Clsn2Default) from the extent of its first\r\n"
                       "; sprite; striking frames add an attack box (Clsn1) at the fist or foot.\r\n");
    for (const Action& action : actions()) {
        out += QStringLiteral("\r\n; %1\r\n[Begin Action %2]\r\n")
                   .arg(QLatin1String(action.title))
                   .arg(action.number);
        const Frame& first = action.frames.first();
        if (action.vulnerable) {
            out += QStringLiteral("Clsn2Default: 1\r\n");
            out += box("Clsn2", 0, sprites.drawing(first.group, first.index).bounds);
        }
        for (const Frame& frame : action.frames) {
            if (frame.strike != NoStrike) {
                const QSampleDrawing drawing = sprites.drawing(frame.group, frame.index);
                const QPoint point = frame.strike == Fist ? drawing.frontFist : drawing.frontFoot;
                out += QStringLiteral("Clsn2: 1\r\n") + box("Clsn2", 0, drawing.bounds);
                out += QStringLiteral("Clsn1: 1\r\n") +
                       box("Clsn1", 0, QRect(point - QPoint(6, 6), QSize(13, 13)));
            }
            out += QStringLiteral("%1,%2, 0,0, %3\r\n").arg(frame.group).arg(frame.index).arg(frame.time);
        }
    }
    return out.toLatin1();
}
