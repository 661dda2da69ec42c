#pragma once

#include <QtGlobal>

// How a frame is drawn over what lies below it.
enum class QAnimationFrameBlend : int
{
    None = 0,
    Addition = 1,
    Subtraction = 2
};

// Mirroring of a frame's sprite, as bits: 1 vertical, 2 horizontal.
enum class QAnimationFrameFlip : int
{
    None = 0,
    Vertically = 1,
    Horizontally = 2,
    Both = 3
};

// The four box slots of a frame. An odd number is a collision box ("Clsn2"), an even one an attack box
// ("Clsn1"); 2 and 3 are the default sets.
enum class QCollisionBoxType : int
{
    Attack = 0,
    Collision = 1,
    AttackDefault = 2,
    CollisionDefault = 3
};

// The marks that stand on lines of their own above a frame.
enum class QInterFrameElementType : int
{
    LoopStart = 0,
    InterpolateBlend = 1,
    InterpolateOffset = 2,
    InterpolateScale = 3,
    InterpolateAngle = 4
};

// The source and destination factors of an additive blend, out of 256.
struct QBlendTarget
{
    ushort source = 256;
    ushort destination = 256;

    bool operator==(const QBlendTarget& other) const
    {
        return source == other.source && destination == other.destination;
    }
    bool operator!=(const QBlendTarget& other) const { return !(*this == other); }
};
