#pragma once

// One drawing of the sample fighter, as the angles of its limbs. Angles are degrees. A limb's angle is
// taken from straight down, positive towards the front (the fighter faces right); the torso's from
// straight up, positive when it leans forward. The whole body can then be turned about the hip, for
// the poses in the air and on the ground.
struct QSamplePose
{
    double lean = 4;
    // The head's tilt against the torso.
    double nod = -4;
    double frontUpperArm = 35;
    double frontForearm = 150;
    double backUpperArm = 15;
    double backForearm = 140;
    double frontThigh = 14;
    double frontShin = -2;
    double backThigh = -16;
    double backShin = -12;
    // Turns the whole figure about its hip; positive turns the head forward.
    double rotation = 0;
    // Moves the hip from where the legs put it: x forward, y up.
    double shiftX = 0;
    double shiftY = 0;
    // Grounded figures stand on the axis with the lower foot; the others hang at hipHeight.
    bool grounded = true;
    double hipHeight = 40;
    // Seen from the front, for the turning poses: both arms hang, the head looks at the player.
    bool facingViewer = false;

    // The poses the character is drawn in. phase runs over the frames of a movement, strength over the
    // weights of a hit, from 0 up.
    static QSamplePose stand(int phase);
    static QSamplePose turn(bool crouching);
    static QSamplePose crouch(double depth);
    static QSamplePose walk(int phase);
    static QSamplePose run(int phase);
    static QSamplePose jump(int phase);
    static QSamplePose guard(int kind);
    static QSamplePose punch(int phase);
    static QSamplePose kick(int phase);
    static QSamplePose crouchPunch(int phase);
    static QSamplePose airKick(int phase);
    static QSamplePose rush(int phase);
    static QSamplePose hitHigh(double strength);
    static QSamplePose hitLow(double strength);
    static QSamplePose hitCrouching(int strength);
    static QSamplePose hitInAir(int step, int variant);
    static QSamplePose lying(int step, int variant);
    static QSamplePose fallen(int step, int variant);
    static QSamplePose tripped(int step, int variant);
};
