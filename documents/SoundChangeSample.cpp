#include "SoundChangeSample.h"

#include "QSound.h"
#include "QSounds.h"

SoundChangeSample::SoundChangeSample(QSounds* sounds, uint index, const QByteArray& bytes)
    : SoundUndoCommand(sounds, QObject::tr("Replace sound")), index(index), bytes(bytes)
{
    oldBytes = sounds->bytes(index);
}

void SoundChangeSample::redo()
{
    const Applying applying(sounds);
    sounds->setSample(index, bytes);
}

void SoundChangeSample::undo()
{
    const Applying applying(sounds);
    sounds->setSample(index, oldBytes);
}
