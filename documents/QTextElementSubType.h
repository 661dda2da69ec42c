#pragma once

// The sub type of a section element: which fixed section it is. The names are also those that scripts
// see.
enum QTextElementSubType : int
{
    StageBG = 10,
    TitleBG = 11,
    SelectBG = 12,
    VersusBG = 13,
    VictoryBG = 14,
    OptionBG = 15,
    Info = 16,
    Files = 17,
    Arcade = 18,
    BGDef = 19,
    StageInfo = 20,
    PlayerInfo = 21,
    Camera = 22,
    TitleBGDef = 23,
    SelectBGDef = 24,
    VersusBGDef = 25,
    VictoryBGDef = 26,
    OptionBGDef = 27,
    SceneDef = 28,
    Def = 29
};
