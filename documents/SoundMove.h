#pragma once

#include "SoundUndoCommand.h"

// A sound was moved from one position so that it stands at another.
class SoundMove : public SoundUndoCommand
{
public:
    SoundMove(QSounds* sounds, uint from, uint to);
    void redo() override;
    void undo() override;

private:
    uint from;
    uint to;
};
