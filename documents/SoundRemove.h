#pragma once

#include "SoundUndoCommand.h"

#include <QByteArray>

// A sound was removed; its numbers and bytes are kept to bring it back.
class SoundRemove : public SoundUndoCommand
{
public:
    SoundRemove(QSounds* sounds, uint index);
    void redo() override;
    void undo() override;

private:
    uint index;
    uint group = 0;
    uint sample = 0;
    QByteArray bytes;
};
