#pragma once

// The ids of the keys that definitions and commands files recognise. A state file's id has 10 in its
// low byte and a palette's 11, with the slot in the upper half: "st3" is 0x3000a, "pal2" 0x1000b.
enum QGroupParamID : int
{
    gpName = 1,
    gpLocalCoord = 2,
    gpMugenVersion = 3,
    gpSprite = 4,
    gpSpr = 5,
    gpSff = 6,
    gpAnim = 7,
    gpSound = 8,
    gpCmd = 9,
    gpStates = 10,
    gpPalette = 11,
    gpFile = 12,
    gpCommand = 31,
    gpSt = 0xd000a,
    gpCns = 0xe000a,
    gpStCommon = 0xf000a
};

// What a parameter's value is; the value rule of its recogniser and the sub type of its element.
enum QGroupParamKind : int
{
    pkString = 1,
    pkIdentifier = 2,
    pkInteger = 3,
    pkIntegers = 4,
    pkNumber = 5,
    pkNumbers = 6,
    pkCommand = 7,
    pkVersion = 8,
    pkFile = 9
};

// The id of the state file in a slot (0 to 15) or of the palette with a number (1 to 12).
constexpr int statesParamId(int slot)
{
    return (slot << 16) + gpStates;
}
constexpr int paletteParamId(int number)
{
    return ((number - 1) << 16) + gpPalette;
}
