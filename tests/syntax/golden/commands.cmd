[Remap]
x = x
y = q
q = y

[Defaults]
command.time = 15
command.buffer.time = 1

[Command]
name = "QCF_x"
command = ~D, DF, F, x
time = 15

[Command]
name = "charge"
command = ~30$B, $F, a+b
buffer.time = 2

[Command]
name = "broken"
command = ~F, //x
time = "15"

[Statedef -1]

[State -1, Run Fwd]
type = ChangeState
value = 100
triggerall = command = "QCF_x"
trigger1 = statetype = S
trigger1 = ctrl
