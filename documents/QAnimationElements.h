#pragma once

// Registers the recognisers of animation text, in their order: AnimReg, FrameReg, InterFrameReg,
// CLSNDeclReg, CLSNReg. Called once, after the definitions family and before the commands family.
void registerAnimationElements();
// Takes back what registerAnimationElements() registered, the last first.
void unregisterAnimationElements();
