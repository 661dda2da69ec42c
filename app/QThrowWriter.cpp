#include "QThrowWriter.h"

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 10);
}

} // namespace

QString QThrowWriter::code() const
{
    const QString grab = QString::number(stateDef);
    const QString throwing = QString::number(stateDef + 1);
    const QString held = QString::number(stateDef + 10);
    const QString thrown = QString::number(stateDef + 11);
    const QString front = QString::number(sprPriority + 1);
    QString text;
    // The grab: a throw HitDef that only hits a standing opponent who is not being hit, and that sends
    // both into the throw states. p2getp1state lets the opponent run the thrower's custom states.
    text += QStringLiteral("; Throw\n[Statedef %1]\ntype = S\nmovetype = A\nphysics = S\nanim = %2\n"
                           "ctrl = 0\nvelset = 0,0\nsprpriority = %3\n\n")
                .arg(grab, QString::number(p1AnimStart), front);
    text += QStringLiteral("[State %1, Grab]\ntype = HitDef\ntrigger1 = AnimElem = 2\nattr = S, NT\n"
                           "hitflag = M-\npriority = 1, Miss\nsparkno = -1\nguard.dist = 0\nfall = 1\n"
                           "p1facing = 1\np2facing = 1\np1stateno = %2\np2stateno = %3\np2getp1state = 1\n\n")
                .arg(grab, throwing, held);
    text += QStringLiteral("[State %1, Missed]\ntype = ChangeState\ntrigger1 = AnimTime = 0\nvalue = 0\n"
                           "ctrl = 1\n\n")
                .arg(grab);
    // The throw: holds the opponent in front for bindCount ticks, then lets go into the thrown state.
    text += QStringLiteral("; Throw - holding\n[Statedef %1]\ntype = S\nmovetype = A\nphysics = N\n"
                           "anim = %2\nctrl = 0\nvelset = 0,0\nsprpriority = %3\n\n")
                .arg(throwing, QString::number(p1Anim), front);
    // The bind lasts a tick and is renewed each tick up to the release, so that the opponent's check
    // for a lost bind never sees a gap, whichever of the two runs first in a tick.
    text += QStringLiteral("[State %1, Hold]\ntype = TargetBind\ntrigger1 = Time <= %2\ntime = 1\n"
                           "pos = 30, 0\n\n")
                .arg(throwing, QString::number(bindCount));
    text += QStringLiteral("[State %1, Damage]\ntype = TargetLifeAdd\ntrigger1 = Time = %2\nvalue = -60\n\n")
                .arg(throwing, QString::number(bindCount));
    text += QStringLiteral("[State %1, Release]\ntype = TargetState\ntrigger1 = Time = %2\nvalue = %3\n\n")
                .arg(throwing, QString::number(bindCount), thrown);
    // Without a target (the opponent got away or was hit by someone else) there is nothing to throw.
    text += QStringLiteral("[State %1, Lost]\ntype = ChangeState\ntrigger1 = !NumTarget\n"
                           "trigger2 = AnimTime = 0\nvalue = 0\nctrl = 1\n\n")
                .arg(throwing);
    // The opponent, held: the thrower's animation, and back to the opponent's own states as soon as
    // the bind is gone without a release, so that nobody is left stuck in a custom state.
    text += QStringLiteral("; Thrown - held (custom state of the opponent)\n[Statedef %1]\ntype = A\n"
                           "movetype = H\nphysics = N\nvelset = 0,0\n\n")
                .arg(held);
    text += QStringLiteral("[State %1, Anim]\ntype = ChangeAnim2\ntrigger1 = Time = 0\nvalue = %2\n\n")
                .arg(held, QString::number(p2Anim));
    text += QStringLiteral("[State %1, Priority]\ntype = SprPriority\ntrigger1 = Time = 0\nvalue = %2\n\n")
                .arg(held, QString::number(sprPriority));
    text += QStringLiteral("[State %1, Not held]\ntype = SelfState\ntrigger1 = Time > 0\n"
                           "trigger1 = !GetHitVar(isbound)\nvalue = 5050\nctrl = 0\n\n")
                .arg(held);
    // The opponent, thrown: facing the thrower, so away from him is backward; the common falling
    // state takes over once the rise is over and lands the opponent.
    text += QStringLiteral("; Thrown - flying (custom state of the opponent)\n[Statedef %1]\ntype = A\n"
                           "movetype = H\nphysics = N\nvelset = %2, %3\n\n")
                .arg(thrown, number(xVelocity == 0 ? 0 : -xVelocity), number(yVelocity));
    text += QStringLiteral("[State %1, Gravity]\ntype = Gravity\ntrigger1 = 1\n\n").arg(thrown);
    text += QStringLiteral("[State %1, Fall]\ntype = SelfState\ntrigger1 = Vel Y > 0\n"
                           "trigger2 = Pos Y >= 0 && Time > 0\nvalue = 5050\nctrl = 0\n")
                .arg(thrown);
    return text;
}
