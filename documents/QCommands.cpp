#include "QCommands.h"

#include "CmdReg.h"
#include "ParamReg.h"
#include "QCommand.h"
#include "QCommandParam.h"
#include "QCommandsOrg.h"
#include "QGroupParamID.h"
#include "QTextElementType.h"

#include <QSet>
#include <QTextBlock>

QCommands::QCommands(QObject* parent)
    : QSyntaxTextEditor(pftCommands, nullptr, false, 0x1010000, true, parent),
      organizer(new QCommandsOrg(this))
{
    setTypeEnabled(true, etNameComment);
    setTypeEnabled(true, etCommand);
    setTypeEnabled(true, etGroupParam, pkString);
    setTypeEnabled(true, etGroupParam, pkCommand);
}

QCommands::~QCommands() = default;

QString QCommands::spanText(const QCommand* command) const
{
    QElementCursor span = command->selectSpan();
    return span.selectedText().replace(QChar(0x2029), QLatin1Char('\n'));
}

void QCommands::insertLines(int position, QString text)
{
    const int end = document->characterCount() - 1;
    position = qBound(0, position, end);
    if (position > 0 && document->characterAt(position - 1) != QChar(0x2029)) text.prepend(QLatin1Char('\n'));
    if (position < end && !text.endsWith(QLatin1Char('\n'))) text += QLatin1Char('\n');
    cursor.setPosition(position);
    cursor.insertText(text);
}

QCommand* QCommands::add()
{
    insertLines(document->characterCount() - 1, QStringLiteral("[Command]\n"));
    return commands.isEmpty() ? nullptr : commands.last();
}

QCommand* QCommands::insert(uint index)
{
    if (index >= uint(count())) return add();
    insertLines(commands.at(int(index))->startPosition(), QStringLiteral("[Command]\n"));
    return commands.value(int(index));
}

void QCommands::remove(uint index)
{
    if (QCommand* command = at(index)) command->remove(true);
}

void QCommands::move(int from, uint to)
{
    const int total = count();
    if (from < 0 || from >= total || to >= uint(total) || uint(from) == to) return;
    beginEdit();
    QCommand* command = commands.at(from);
    const QString text = spanText(command);
    command->remove(true);
    if (int(to) < total - 1)
        insertLines(commands.at(int(to))->startPosition(), text);
    else
        insertLines(document->characterCount() - 1, text);
    endEdit();
}

QCommand* QCommands::duplicate(uint index)
{
    QCommand* command = at(index);
    if (!command) return nullptr;
    const QString text = spanText(command);
    if (QCommand* following = at(index + 1))
        insertLines(following->startPosition(), text);
    else
        insertLines(command->endPosition(), text);
    return at(index + 1);
}

int QCommands::find(int from, const QString& name) const
{
    for (int i = qMax(0, from); i < count(); ++i)
        if (commands.at(i)->name() == name) return i;
    return -1;
}

void QCommands::autoOrganize()
{
    beginEdit();
    for (int i = 1; i < count(); ++i)
        for (int j = 0; j < i; ++j)
            if (commands.at(i)->name().compare(commands.at(j)->name(), Qt::CaseInsensitive) < 0) {
                move(i, uint(j));
                break;
            }
    endEdit();
}

int QCommands::uniqueCount() const
{
    QSet<QString> names;
    for (const QCommand* command : commands)
        names.insert(command->name());
    return int(names.size());
}

QString QCommands::summary() const
{
    return tr("%1, Unique commands: %2").arg(count()).arg(uniqueCount());
}

QString QCommands::discardQuestion() const
{
    return tr("Do you really want to discard the changes made in the commands?");
}

void QCommands::emitUpdate(QList<QTextElementChange>& changes)
{
    QSyntaxTextEditor::emitUpdate(changes);
    // Which commands the list holds, so that the walk below a new command looks up each command it passes
    // at no cost: a file loading thousands of commands would otherwise search the list at every step.
    QSet<const QTextElement*> listed(commands.cbegin(), commands.cend());
    for (const QTextElementChange& change : std::as_const(changes)) {
        if (change.element->type() != etCommand) continue;
        auto* command = static_cast<QCommand*>(change.element);
        if (change.type == ElementRemoved) {
            if (!listed.remove(command)) continue;
            const int row = int(commands.indexOf(command));
            organizer->beginRemoveRows(QModelIndex(), row, row);
            commands.removeAt(row);
            organizer->endRemoveRows();
        } else if (change.type == ElementAdded && command->valid) {
            int row = count();
            // The list is in line order: when its last command stands above, none stands below.
            const bool last = row == 0 || commands.last()->block.blockNumber() < command->block.blockNumber();
            for (QTextElement* below = last ? nullptr : command->next; below; below = below->next) {
                if (!below->valid || !listed.contains(below)) continue;
                row = int(commands.indexOf(static_cast<QCommand*>(below)));
                break;
            }
            organizer->beginInsertRows(QModelIndex(), row, row);
            commands.insert(row, command);
            listed.insert(command);
            organizer->endInsertRows();
        }
    }
    QSet<QCommand*> touched;
    for (const QTextElementChange& change : std::as_const(changes))
        if (change.type == ElementChanged && change.element->type() == etGroupParam)
            if (auto* param = static_cast<QGroupParam*>(change.element);
                param->group && param->group->type() == etCommand)
                touched.insert(static_cast<QCommand*>(param->group));
    for (int row = 0; row < count(); ++row) {
        QCommand* command = commands.at(row);
        if (!command->paramsChanged && !touched.contains(command)) continue;
        command->paramsChanged = false;
        const QModelIndex index = organizer->index(row);
        emit organizer->dataChanged(index, index);
    }
}

void registerCommandElements()
{
    for (const QTextElementReg* reg : QTextElementReg::registered())
        if (dynamic_cast<const CmdReg*>(reg)) return;
    QTextElementReg::add(new CmdReg);
    QTextElementReg::add(new ParamReg<QCommandParam>(QStringLiteral("command"), gpCommand, pkCommand));
}
