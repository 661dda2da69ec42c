#include "SoundInsert.h"

#include "QSounds.h"

SoundInsert::SoundInsert(QSounds* sounds, uint index, uint group, uint sample, const QByteArray& bytes)
    : SoundUndoCommand(sounds, QObject::tr("Insert sound")), index(index), group(group), sample(sample),
      bytes(bytes)
{}

void SoundInsert::redo()
{
    const Applying applying(sounds);
    sounds->insert(index, group, sample, bytes);
}

void SoundInsert::undo()
{
    const Applying applying(sounds);
    sounds->remove(index);
}
