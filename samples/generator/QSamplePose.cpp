#include "QSamplePose.h"

#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;

// Arms raised in front of the face.
void coverUp(QSamplePose& pose)
{
    pose.frontUpperArm = 75;
    pose.frontForearm = 172;
    pose.backUpperArm = 55;
    pose.backForearm = 165;
}

// Arms thrown back by a blow.
void flingArms(QSamplePose& pose, double strength)
{
    pose.frontUpperArm = 15 - 10 * strength;
    pose.frontForearm = 55 - 12 * strength;
    pose.backUpperArm = -30 - 10 * strength;
    pose.backForearm = -15 - 10 * strength;
}

QSamplePose airborne()
{
    QSamplePose pose;
    pose.grounded = false;
    pose.hipHeight = 40;
    return pose;
}

} // namespace

QSamplePose QSamplePose::stand(int phase)
{
    // Breathing: the chest sinks a pixel at a time; the action plays the phases there and back.
    const int depth = phase;
    QSamplePose pose;
    pose.shiftY = -depth;
    pose.lean += depth;
    pose.frontForearm -= 3 * depth;
    pose.backForearm -= 3 * depth;
    return pose;
}

QSamplePose QSamplePose::turn(bool crouching)
{
    QSamplePose pose;
    pose.facingViewer = true;
    pose.lean = 0;
    pose.nod = 0;
    pose.frontUpperArm = 12;
    pose.frontForearm = 6;
    pose.backUpperArm = -12;
    pose.backForearm = -6;
    pose.frontThigh = crouching ? 55 : 8;
    pose.frontShin = crouching ? -8 : 2;
    pose.backThigh = -pose.frontThigh;
    pose.backShin = -pose.frontShin;
    return pose;
}

QSamplePose QSamplePose::crouch(double depth)
{
    QSamplePose pose;
    pose.lean = 4 + 16 * depth;
    pose.frontThigh = 14 + 66 * depth;
    pose.frontShin = -2 - 28 * depth;
    pose.backThigh = -16 + 56 * depth;
    pose.backShin = -12 - 58 * depth;
    return pose;
}

QSamplePose QSamplePose::walk(int phase)
{
    QSamplePose pose;
    const double swing = std::cos(phase * Pi / 2);
    pose.lean = 6;
    pose.frontThigh = 22 * swing;
    pose.backThigh = -22 * swing;
    pose.frontShin = pose.frontThigh - 8 - (phase == 3 ? 28 : 0);
    pose.backShin = pose.backThigh - 8 - (phase == 1 ? 28 : 0);
    pose.frontUpperArm = 35 - 10 * swing;
    pose.backUpperArm = 15 + 10 * swing;
    return pose;
}

QSamplePose QSamplePose::run(int phase)
{
    QSamplePose pose;
    const double swing = std::cos(phase * Pi / 2);
    pose.lean = 20;
    pose.nod = -14;
    pose.frontThigh = 10 + 38 * swing;
    pose.backThigh = 10 - 38 * swing;
    pose.frontShin = pose.frontThigh - 20 - (phase == 3 ? 45 : 0);
    pose.backShin = pose.backThigh - 20 - (phase == 1 ? 45 : 0);
    pose.frontUpperArm = 40 - 35 * swing;
    pose.frontForearm = 120;
    pose.backUpperArm = 40 + 35 * swing;
    pose.backForearm = 120;
    return pose;
}

QSamplePose QSamplePose::jump(int phase)
{
    if (phase == 0) return crouch(0.45);
    QSamplePose pose = airborne();
    switch (phase) {
    case 1: // rising, reaching up
        pose.frontUpperArm = 140;
        pose.frontForearm = 170;
        pose.frontThigh = 35;
        pose.frontShin = -10;
        pose.backThigh = 5;
        pose.backShin = -30;
        break;
    case 2: // tucked at the top
        pose.lean = 12;
        pose.frontThigh = 75;
        pose.frontShin = -40;
        pose.backThigh = 50;
        pose.backShin = -60;
        break;
    default: // falling, legs reaching for the ground
        pose.frontUpperArm = 90;
        pose.frontForearm = 110;
        pose.backUpperArm = 60;
        pose.backForearm = 90;
        pose.frontThigh = 20;
        pose.frontShin = 0;
        pose.backThigh = -10;
        pose.backShin = -22;
        break;
    }
    return pose;
}

QSamplePose QSamplePose::guard(int kind)
{
    QSamplePose pose = kind == 1 ? crouch(1) : kind == 2 ? jump(3) : QSamplePose();
    coverUp(pose);
    pose.lean = kind == 1 ? 14 : -2;
    return pose;
}

QSamplePose QSamplePose::punch(int phase)
{
    QSamplePose pose;
    switch (phase) {
    case 0: // the fist drawn back to the chest
        pose.lean = 2;
        pose.frontUpperArm = 10;
        pose.frontForearm = 125;
        break;
    case 1: // full reach
        pose.lean = 12;
        pose.frontUpperArm = 90;
        pose.frontForearm = 90;
        pose.backUpperArm = -20;
        pose.backForearm = 110;
        pose.frontThigh = 24;
        pose.backThigh = -24;
        break;
    default:
        pose.lean = 8;
        pose.frontUpperArm = 60;
        pose.frontForearm = 115;
        break;
    }
    return pose;
}

QSamplePose QSamplePose::kick(int phase)
{
    QSamplePose pose;
    coverUp(pose);
    pose.backThigh = -6;
    pose.backShin = -6;
    if (phase == 1) {
        pose.lean = -18;
        pose.frontThigh = 95;
        pose.frontShin = 95;
    } else {
        pose.lean = -8;
        pose.frontThigh = phase == 0 ? 80 : 65;
        pose.frontShin = phase == 0 ? -10 : 0;
    }
    return pose;
}

QSamplePose QSamplePose::crouchPunch(int phase)
{
    QSamplePose pose = crouch(1);
    if (phase == 0) {
        pose.frontUpperArm = 10;
        pose.frontForearm = 125;
    } else {
        pose.lean = 24;
        pose.frontUpperArm = 85;
        pose.frontForearm = 88;
    }
    return pose;
}

QSamplePose QSamplePose::airKick(int phase)
{
    QSamplePose pose = airborne();
    pose.lean = -10;
    coverUp(pose);
    pose.frontThigh = phase == 0 ? 60 : 70;
    pose.frontShin = phase == 0 ? -20 : 70;
    pose.backThigh = phase == 0 ? 20 : 10;
    pose.backShin = phase == 0 ? -40 : -50;
    return pose;
}

QSamplePose QSamplePose::rush(int phase)
{
    if (phase == 0) {
        QSamplePose pose = crouch(0.5);
        pose.lean = 26;
        pose.frontUpperArm = -15;
        pose.frontForearm = 100;
        return pose;
    }
    QSamplePose pose;
    pose.lean = phase == 1 ? 30 : 22;
    pose.nod = -24;
    pose.frontUpperArm = phase == 1 ? 96 : 80;
    pose.frontForearm = phase == 1 ? 96 : 100;
    pose.backUpperArm = -40;
    pose.backForearm = 60;
    pose.frontThigh = 50;
    pose.frontShin = 8;
    pose.backThigh = -45;
    pose.backShin = -45;
    return pose;
}

QSamplePose QSamplePose::hitHigh(double strength)
{
    QSamplePose pose;
    pose.lean = -10 - 7 * strength;
    pose.nod = -14 - 5 * strength;
    flingArms(pose, strength);
    pose.frontThigh = 18;
    pose.frontShin = 6;
    pose.backThigh = -18;
    pose.backShin = -20;
    pose.shiftX = -2 * strength;
    return pose;
}

QSamplePose QSamplePose::hitLow(double strength)
{
    QSamplePose pose;
    pose.lean = 24 + 8 * strength;
    pose.nod = 12;
    pose.frontUpperArm = 20 + 4 * strength;
    pose.frontForearm = 10;
    pose.backUpperArm = 0;
    pose.backForearm = -5;
    pose.frontThigh = 10;
    pose.frontShin = 0;
    pose.backThigh = -20;
    pose.backShin = -30 - 5 * strength;
    pose.shiftX = -strength;
    return pose;
}

QSamplePose QSamplePose::hitCrouching(int strength)
{
    QSamplePose pose = crouch(1);
    pose.lean = -6 - 6 * strength;
    pose.nod = -15;
    flingArms(pose, strength / 2.0);
    return pose;
}

QSamplePose QSamplePose::hitInAir(int step, int variant)
{
    QSamplePose pose = airborne();
    pose.rotation = -(25 + 22 * step + 6 * variant);
    pose.hipHeight = 42 - 3 * step;
    pose.nod = -20;
    pose.frontUpperArm = 120 - 10 * variant;
    pose.frontForearm = 150;
    pose.backUpperArm = 160;
    pose.backForearm = 190;
    pose.frontThigh = 30 + 5 * variant;
    pose.frontShin = 10;
    pose.backThigh = 10;
    pose.backShin = -10;
    return pose;
}

QSamplePose QSamplePose::lying(int step, int variant)
{
    QSamplePose pose = airborne();
    pose.nod = 0;
    pose.rotation = step == 0 ? -80 : step == 1 ? -90 : -72;
    pose.hipHeight = step == 0 ? 14 : step == 1 ? 8 : 18;
    pose.frontUpperArm = 150 - 20 * step;
    pose.frontForearm = 170 - 20 * step;
    pose.backUpperArm = 170;
    pose.backForearm = 180;
    pose.frontThigh = 12 + 14 * variant;
    pose.frontShin = -4;
    pose.backThigh = 4 + 8 * variant;
    pose.backShin = -6;
    return pose;
}

QSamplePose QSamplePose::fallen(int step, int variant)
{
    QSamplePose pose = airborne();
    pose.rotation = -80 + 4 * variant;
    pose.hipHeight = 18 - 6 * step;
    pose.nod = -10;
    pose.frontUpperArm = 100;
    pose.frontForearm = 125;
    pose.backUpperArm = 140;
    pose.backForearm = 160;
    pose.frontThigh = 40 - 20 * step;
    pose.frontShin = 10;
    pose.backThigh = 25 - 15 * step;
    pose.backShin = 0;
    return pose;
}

QSamplePose QSamplePose::tripped(int step, int variant)
{
    QSamplePose pose = airborne();
    pose.rotation = -30 - 28 * step - 5 * variant;
    pose.hipHeight = 32 - 7 * step;
    pose.nod = -10;
    pose.frontUpperArm = 100;
    pose.frontForearm = 125;
    pose.backUpperArm = 70;
    pose.backForearm = 100;
    pose.frontThigh = 50;
    pose.frontShin = 30;
    pose.backThigh = 30;
    pose.backShin = 10;
    return pose;
}
