#include "SoundUndoCommand.h"

#include "QSounds.h"

SoundUndoCommand::SoundUndoCommand(QSounds* sounds, const QString& text) : QUndoCommand(text), sounds(sounds)
{}

SoundUndoCommand::~SoundUndoCommand() = default;

SoundUndoCommand::Applying::Applying(QSounds* sounds) : model(sounds), wasEnabled(sounds->isUndoEnabled())
{
    model->setUndoEnabled(false);
}

SoundUndoCommand::Applying::~Applying()
{
    model->setUndoEnabled(wasEnabled);
}
