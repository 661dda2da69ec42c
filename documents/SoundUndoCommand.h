#pragma once

#include <QUndoCommand>

class QSounds;

// The base of the undo commands of a sound file. Pushing a command applies it: redo() and undo() call
// the model's own operations with undo switched off, so that applying a command pushes nothing. Sounds
// are addressed by position.
class SoundUndoCommand : public QUndoCommand
{
public:
    explicit SoundUndoCommand(QSounds* sounds, const QString& text = QString());
    ~SoundUndoCommand() override;

protected:
    // Switches the model's undo off for its lifetime.
    class Applying
    {
    public:
        explicit Applying(QSounds* sounds);
        ~Applying();
        Applying(const Applying&) = delete;
        Applying& operator=(const Applying&) = delete;

    private:
        QSounds* model;
        bool wasEnabled;
    };

    QSounds* sounds;
};
