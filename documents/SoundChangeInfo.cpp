#include "SoundChangeInfo.h"

#include "QSound.h"
#include "QSounds.h"

SoundChangeInfo::SoundChangeInfo(QSounds* sounds, uint index, uint group, uint sample)
    : SoundUndoCommand(sounds, QObject::tr("Change sound")), index(index), group(group), sample(sample)
{
    if (const QSound* sound = sounds->at(index)) {
        oldGroup = sound->group;
        oldSample = sound->sample;
    }
}

void SoundChangeInfo::redo()
{
    const Applying applying(sounds);
    sounds->setInfo(index, group, sample);
}

void SoundChangeInfo::undo()
{
    const Applying applying(sounds);
    sounds->setInfo(index, oldGroup, oldSample);
}
