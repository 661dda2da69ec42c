#pragma once

#include <QUndoCommand>

class QSprites;

// The base of every undo command of a sprite file. The model applies a change itself and pushes the
// command in the same call, so the redo() that QUndoStack::push makes does nothing; later redo() calls
// apply(). Subclasses implement undo() and apply(), and address sprites and palettes by position.
class SpriteUndoCommand : public QUndoCommand
{
public:
    explicit SpriteUndoCommand(QSprites* sprites, const QString& text = QString());
    ~SpriteUndoCommand() override;

    void redo() final;
    virtual void apply() = 0;

protected:
    // Raises the model's no-undo counter for its lifetime, so that applying a command pushes nothing.
    class Applying
    {
    public:
        explicit Applying(QSprites* sprites);
        ~Applying();
        Applying(const Applying&) = delete;
        Applying& operator=(const Applying&) = delete;

    private:
        QSprites* model;
    };

    QSprites* sprites;

private:
    bool firstRedo = true;
};
