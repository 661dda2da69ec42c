#include "QAirDocument.h"

// No outline: nothing outside a project shows one.
QAirDocument::QAirDocument() : editor(pftAnimations, nullptr, false, 0x1010000, false)
{
    model.setEditor(&editor);
}

QAirDocument::QAirDocument(const QString& text) : QAirDocument()
{
    model.fromText(text);
}

QAirDocument::~QAirDocument()
{
    model.setEditor(nullptr);
}
