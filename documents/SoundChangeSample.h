#pragma once

#include "SoundUndoCommand.h"

#include <QByteArray>

// A sound was given other bytes; the old ones are kept to give them back.
class SoundChangeSample : public SoundUndoCommand
{
public:
    SoundChangeSample(QSounds* sounds, uint index, const QByteArray& bytes);
    void redo() override;
    void undo() override;

private:
    uint index;
    QByteArray bytes;
    QByteArray oldBytes;
};
