#pragma once

#include "QSyntaxTextEditor.h"

class QCommand;
class QCommandsOrg;

// The command file (CMD). Each "[Command]" section is a QCommand; the file's other sections stay
// plain text. The organizer sees the commands through organizer.
class QCommands : public QSyntaxTextEditor
{
    Q_OBJECT
public:
    explicit QCommands(QObject* parent = nullptr);
    ~QCommands() override;

    QCommandsOrg* const organizer;
    // In text order.
    QList<QCommand*> commands;

    int count() const { return int(commands.size()); }
    QCommand* at(uint index) const { return commands.value(int(index)); }

    // Appends a "[Command]" line at the end of the text; the new command.
    QCommand* add();
    // Inserts a "[Command]" line before the command at index; beyond the last one, as add().
    QCommand* insert(uint index);
    // Removes the command's lines.
    void remove(uint index);
    // Moves the lines of a command before the command at to, or to the end of the text.
    void move(int from, uint to);
    // Copies the lines of a command to the start of the next command (or behind itself); the copy.
    QCommand* duplicate(uint index);
    // The index of the first command from on with exactly this name, or -1.
    int find(int from, const QString& name) const;
    // Sorts the commands by name, ignoring case, in one edit; equal names keep their order.
    void autoOrganize();

    // The number of different names among the commands.
    int uniqueCount() const;
    // "%1, Unique commands: %2" with the number of commands and of different names.
    QString summary() const;

protected:
    void emitUpdate(QList<QTextElementChange>& changes) override;
    QString discardQuestion() const override;

private:
    QString spanText(const QCommand* command) const;
    // Inserts lines at a position, adding the line ends that keep them lines of their own.
    void insertLines(int position, QString text);
};

// Registers the recognisers of command files, in their fixed order. Once per process; a second call
// does nothing.
void registerCommandElements();
