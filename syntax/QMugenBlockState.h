#pragma once

// The block state of M.U.G.E.N. text: the kind of section a line stands in, written on the header line
// and on the type line and inherited by every other line. -1 is the text before any section.
enum QMugenBlockState : int
{
    MugenStateNone = 0,
    MugenStateRemap = 1,
    MugenStateDefaults = 2,
    MugenStateCommand = 3,
    MugenStateStateDef = 4,
    MugenStateData = 5,
    MugenStateSize = 6,
    MugenStateVelocity = 7,
    MugenStateMovement = 8,
    MugenStateQuotes = 9,
    MugenStateAction = 10,
    MugenStateInfo = 11,
    MugenStateFiles = 12,
    MugenStatePaletteKeymap = 13,
    MugenStateArcade = 14,
    MugenStateState = 15,
    MugenStateCamera = 16,
    MugenStatePlayerInfo = 17,
    MugenStateBound = 18,
    MugenStateScaling = 19,
    MugenStateStageInfo = 20,
    MugenStateShadow = 21,
    MugenStateReflection = 22,
    MugenStateMusic = 23,
    MugenStateBGDef = 24,
    MugenStateBG = 25,
    MugenStateBGCtrlDef = 26,
    MugenStateBGCtrl = 27,
    MugenStateFnt = 28,
    MugenStateDef = 29,
    MugenStateSceneDef = 30,
    MugenStateScene = 31,
    MugenStateInvalidType = 32,
    // A [State] with a controller: 33 plus the controller's place in the state controller list.
    MugenStateController = 33,
    // A [BG] with a type: 200 plus the place in the BG controller list.
    MugenStateBGType = 200,
    // A [BGCtrl] with a type: 210 plus the place in the BG control list.
    MugenStateBGCtrlType = 210,
    // A [Def] with a type: 250 plus the place in the font definition list.
    MugenStateDefType = 250
};
