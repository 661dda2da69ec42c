#include "SpriteUndoCommand.h"

#include "QSprites.h"

SpriteUndoCommand::SpriteUndoCommand(QSprites* sprites, const QString& text)
    : QUndoCommand(text), sprites(sprites)
{}

SpriteUndoCommand::~SpriteUndoCommand() = default;

void SpriteUndoCommand::redo()
{
    if (firstRedo) {
        firstRedo = false;
        return;
    }
    const Applying applying(sprites);
    apply();
}

SpriteUndoCommand::Applying::Applying(QSprites* sprites) : model(sprites)
{
    model->beginNoUndo();
}

SpriteUndoCommand::Applying::~Applying()
{
    model->endNoUndo();
}
