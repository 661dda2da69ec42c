#pragma once

#include "QProjectTypes.h"

#include <QtGlobal>

class QMessageList;

// What a file model may ask of the project that owns it. The project implements this; models keep a
// pointer to it (null when a model stands alone) and never see the project class itself, which lives
// above them.
class QProjectContext
{
public:
    virtual ~QProjectContext();
    virtual QProjectType projectType() const = 0;
    // The encoded M.U.G.E.N. version the project targets (0x1010000 is 1.1).
    virtual quint32 mugenVersion() const = 0;
    virtual QMessageList* messageList() const = 0;
};
