#pragma once

#include "SoundUndoCommand.h"

#include <QByteArray>

// A sound was inserted at a position.
class SoundInsert : public SoundUndoCommand
{
public:
    SoundInsert(QSounds* sounds, uint index, uint group, uint sample, const QByteArray& bytes);
    void redo() override;
    void undo() override;

private:
    uint index;
    uint group;
    uint sample;
    QByteArray bytes;
};
