#include "SoundRemove.h"

#include "QSound.h"
#include "QSounds.h"

SoundRemove::SoundRemove(QSounds* sounds, uint index)
    : SoundUndoCommand(sounds, QObject::tr("Remove sound")), index(index)
{
    if (const QSound* sound = sounds->at(index)) {
        group = sound->group;
        sample = sound->sample;
        bytes = sounds->bytes(index);
    }
}

void SoundRemove::redo()
{
    const Applying applying(sounds);
    sounds->remove(index);
}

void SoundRemove::undo()
{
    const Applying applying(sounds);
    sounds->insert(index, group, sample, bytes);
}
