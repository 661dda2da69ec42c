#pragma once

#include "SoundUndoCommand.h"

#include <QByteArray>

// A sound was given another group and sample number.
class SoundChangeInfo : public SoundUndoCommand
{
public:
    SoundChangeInfo(QSounds* sounds, uint index, uint group, uint sample);
    void redo() override;
    void undo() override;

private:
    uint index;
    uint group;
    uint sample;
    uint oldGroup = 0;
    uint oldSample = 0;
};
