#include "QSampleTexts.h"

namespace {

QByteArray withCrLf(const char* text)
{
    QByteArray bytes(text);
    bytes.replace("\n", "\r\n");
    return bytes;
}

} // namespace

QByteArray QSampleTexts::definitions()
{
    return withCrLf(R"(; Roan, the sample character of Tavrel. Every file of this character is made by
; tavrel-make-sample from the editor's own code: nothing is copied from elsewhere.

[Info]
name = "Roan"
displayname = "Roan"
versiondate = 01,01,2025
mugenversion = 1.1
author = "Tavrel"
pal.defaults = 1,2,3
localcoord = 320,240

[Files]
cmd = Roan.cmd
cns = Roan.cns
st = Roan.cns
stcommon = common1.cns
sprite = Roan.sff
anim = Roan.air
sound = Roan.snd
pal1 = Roan1.act
pal2 = Roan2.act
pal3 = Roan3.act

[Palette Keymap]
x = 1
y = 2
z = 3
a = 1
b = 2
c = 3
)");
}

QByteArray QSampleTexts::commands()
{
    return withCrLf(R"(; Roan's commands, made by tavrel-make-sample.
; x punches, a kicks; down and x punches low, a in the air kicks,
; down, down-forward, forward and x rushes in with a punch.

[Remap]
x = x
y = y
z = z
a = a
b = b
c = c
s = s

[Defaults]
command.time = 15
command.buffer.time = 1

[Command]
name = "QCF_x"
command = ~D, DF, F, x

[Command]
name = "FF"
command = F, F
time = 10

[Command]
name = "BB"
command = B, B
time = 10

[Command]
name = "x"
command = x
time = 1

[Command]
name = "a"
command = a
time = 1

[Command]
name = "holdfwd"
command = /$F
time = 1

[Command]
name = "holdback"
command = /$B
time = 1

[Command]
name = "holdup"
command = /$U
time = 1

[Command]
name = "holddown"
command = /$D
time = 1

[Statedef -1]

[State -1, Rushing punch]
type = ChangeState
value = 1000
triggerall = command = "QCF_x"
trigger1 = statetype = S
trigger1 = ctrl

[State -1, Run]
type = ChangeState
value = 100
trigger1 = command = "FF"
trigger1 = statetype = S
trigger1 = ctrl

[State -1, Hop back]
type = ChangeState
value = 105
trigger1 = command = "BB"
trigger1 = statetype = S
trigger1 = ctrl

[State -1, Crouching punch]
type = ChangeState
value = 400
triggerall = command = "x"
triggerall = command = "holddown"
trigger1 = statetype = C
trigger1 = ctrl

[State -1, Punch]
type = ChangeState
value = 200
triggerall = command = "x"
triggerall = command != "holddown"
trigger1 = statetype = S
trigger1 = ctrl

[State -1, Kick]
type = ChangeState
value = 210
triggerall = command = "a"
trigger1 = statetype = S
trigger1 = ctrl

[State -1, Jump kick]
type = ChangeState
value = 600
triggerall = command = "a"
trigger1 = statetype = A
trigger1 = ctrl
)");
}

QByteArray QSampleTexts::states()
{
    return withCrLf(R"(; Roan's constants and states, made by tavrel-make-sample.
; Moving, jumping, guarding and getting hit come from the common states.

[Data]
life = 1000
power = 3000
attack = 100
defence = 100
fall.defence_up = 50
liedown.time = 60
airjuggle = 15
sparkno = 2
guard.sparkno = 40
KO.echo = 0
volume = 0
IntPersistIndex = 60
FloatPersistIndex = 40

[Size]
xscale = 1
yscale = 1
ground.back = 14
ground.front = 15
air.back = 12
air.front = 12
height = 58
attack.dist = 150
proj.attack.dist = 90
proj.doscale = 0
head.pos = -4, -84
mid.pos = -4, -56
shadowoffset = 0
draw.offset = 0, 0

[Velocity]
walk.fwd = 2.3
walk.back = -2.1
run.fwd = 4.4, 0
run.back = -4.2, -3.6
jump.neu = 0, -8.2
jump.back = -2.4
jump.fwd = 2.4
runjump.back = -2.4, -8
runjump.fwd = 3.8, -8
airjump.neu = 0, -8
airjump.back = -2.4
airjump.fwd = 2.4
air.gethit.groundrecover = -0.15, -3.5
air.gethit.airrecover.mul = 0.5, 0.2
air.gethit.airrecover.add = 0, -4.5
air.gethit.airrecover.back = -1
air.gethit.airrecover.fwd = 0
air.gethit.airrecover.up = -2
air.gethit.airrecover.down = 1.5

[Movement]
airjump.num = 1
airjump.height = 35
yaccel = 0.44
stand.friction = 0.85
crouch.friction = 0.82
stand.friction.threshold = 2
crouch.friction.threshold = 0.05
air.gethit.groundlevel = 25
air.gethit.groundrecover.ground.threshold = -20
air.gethit.groundrecover.groundlevel = 10
air.gethit.airrecover.threshold = -1
air.gethit.airrecover.yaccel = 0.35
air.gethit.trip.groundlevel = 15
down.bounce.offset = 0, 20
down.bounce.yaccel = 0.4
down.bounce.groundlevel = 12
down.friction.threshold = 0.05

;---------------------------------------------------------------------------
; Punch
[Statedef 200]
type = S
movetype = A
physics = S
juggle = 1
velset = 0, 0
ctrl = 0
anim = 200
poweradd = 20
sprpriority = 2

[State 200, Swing]
type = PlaySnd
trigger1 = Time = 1
value = 0, 0

[State 200, Hit]
type = HitDef
trigger1 = Time = 0
attr = S, NA
animtype = Light
damage = 22, 0
guardflag = MA
hitflag = MAF
priority = 3, Hit
pausetime = 8, 8
sparkno = 0
sparkxy = -8, -62
hitsound = S5, 0
guardsound = 6, 0
ground.type = High
ground.slidetime = 6
ground.hittime = 10
ground.velocity = -4
air.velocity = -2.5, -3

[State 200, End]
type = ChangeState
trigger1 = AnimTime = 0
value = 0
ctrl = 1

;---------------------------------------------------------------------------
; Kick
[Statedef 210]
type = S
movetype = A
physics = S
juggle = 2
velset = 0, 0
ctrl = 0
anim = 210
poweradd = 30
sprpriority = 2

[State 210, Swing]
type = PlaySnd
trigger1 = Time = 2
value = 0, 1

[State 210, Hit]
type = HitDef
trigger1 = Time = 0
attr = S, NA
animtype = Medium
damage = 32, 0
guardflag = MA
hitflag = MAF
priority = 4, Hit
pausetime = 10, 10
sparkno = 1
sparkxy = -10, -48
hitsound = S5, 0
guardsound = 6, 0
ground.type = Low
ground.slidetime = 8
ground.hittime = 14
ground.velocity = -5
air.velocity = -3, -3.5

[State 210, End]
type = ChangeState
trigger1 = AnimTime = 0
value = 0
ctrl = 1

;---------------------------------------------------------------------------
; Crouching punch
[Statedef 400]
type = C
movetype = A
physics = C
juggle = 1
ctrl = 0
anim = 400
poweradd = 20
sprpriority = 2

[State 400, Swing]
type = PlaySnd
trigger1 = Time = 1
value = 0, 0

[State 400, Hit]
type = HitDef
trigger1 = Time = 0
attr = C, NA
animtype = Light
damage = 20, 0
guardflag = L
hitflag = MAF
priority = 3, Hit
pausetime = 8, 8
sparkno = 0
sparkxy = -8, -34
hitsound = S5, 0
guardsound = 6, 0
ground.type = Low
ground.slidetime = 6
ground.hittime = 10
ground.velocity = -4
air.velocity = -2.5, -3

[State 400, End]
type = ChangeState
trigger1 = AnimTime = 0
value = 11
ctrl = 1

;---------------------------------------------------------------------------
; Jump kick: the common states land it.
[Statedef 600]
type = A
movetype = A
physics = A
juggle = 2
ctrl = 0
anim = 600
poweradd = 30
sprpriority = 2

[State 600, Swing]
type = PlaySnd
trigger1 = Time = 1
value = 0, 1

[State 600, Hit]
type = HitDef
trigger1 = Time = 0
attr = A, NA
animtype = Medium
damage = 30, 0
guardflag = HA
hitflag = MAF
priority = 4, Hit
pausetime = 10, 10
sparkno = 1
sparkxy = -10, -40
hitsound = S5, 0
guardsound = 6, 0
ground.type = High
ground.slidetime = 8
ground.hittime = 14
ground.velocity = -5
air.velocity = -3, -3

;---------------------------------------------------------------------------
; Rushing punch: a lunge that knocks down.
[Statedef 1000]
type = S
movetype = A
physics = S
juggle = 4
velset = 0, 0
ctrl = 0
anim = 1000
poweradd = 60
sprpriority = 2

[State 1000, Shout]
type = PlaySnd
trigger1 = Time = 0
value = 1, 0

[State 1000, Lunge]
type = VelSet
trigger1 = AnimElem = 2
x = 6

[State 1000, Hit]
type = HitDef
trigger1 = AnimElem = 2
attr = S, SA
animtype = Hard
damage = 70, 6
guardflag = MA
hitflag = MAF
priority = 5, Hit
pausetime = 12, 12
sparkno = 2
sparkxy = -10, -62
hitsound = S5, 1
guardsound = 6, 0
ground.type = High
ground.slidetime = 12
ground.hittime = 18
ground.velocity = -7, -4
air.velocity = -5, -5
fall = 1

[State 1000, Stop]
type = VelSet
trigger1 = AnimElem = 3
x = 0

[State 1000, End]
type = ChangeState
trigger1 = AnimTime = 0
value = 0
ctrl = 1
)");
}
