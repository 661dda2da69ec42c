#pragma once

class QTextElement;

enum QTextElementChangeType : int
{
    ElementRemoved = 0,
    ElementAdded = 1,
    ElementChanged = 2
};

// One entry of the list that a document hands to its models after an edit.
struct QTextElementChange
{
    QTextElementChangeType type = ElementChanged;
    QTextElement* element = nullptr;
};
