#include "SoundMove.h"

#include "QSounds.h"

SoundMove::SoundMove(QSounds* sounds, uint from, uint to)
    : SoundUndoCommand(sounds, QObject::tr("Move sound")), from(from), to(to)
{}

void SoundMove::redo()
{
    const Applying applying(sounds);
    sounds->move(from, to);
}

void SoundMove::undo()
{
    const Applying applying(sounds);
    sounds->move(to, from);
}
