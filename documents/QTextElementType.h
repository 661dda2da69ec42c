#pragma once

// The kinds of lines that carry an element. They are bit flags so that searches along the element
// list can mask them; the low bits of QTextElement::flags() are taken by etPlain, etSection and
// etParamSection.
enum QTextElementType : int
{
    etPlain = 1,
    etSection = 2,
    etParamSection = 4,
    etNameComment = 8,
    etGroupParam = 16,
    etUnknownGroup = 32,
    etSingletonGroup = 64,
    etAnimation = 128,
    etFrame = 256,
    etCollisionBoxes = 512,
    etCollisionBox = 1024,
    etInterFrame = 2048,
    etCommand = 4096
};
