#include "QCommand.h"

#include "QCommandParam.h"
#include "QElementTextEditor.h"
#include "QStringParam.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

namespace {

const QString nameKey = QStringLiteral("name");
const QString commandKey = QStringLiteral("command");

} // namespace

int QCommand::type() const
{
    return etCommand;
}

void QCommand::release()
{
    releaseParams();
    QGroupHeader::release();
    paramsChanged = false;
    QTextElementPool<QCommand>::release(this);
}

void QCommand::paramsAdded(QList<QGroupParam*>&)
{
    paramsChanged = true;
}

void QCommand::paramsRemoved(QList<QGroupParam*>&)
{
    paramsChanged = true;
}

void QCommand::parse(const QList<QTextToken*>&) {}

QStringParam* QCommand::nameParam() const
{
    QGroupParam* param = find(nameKey);
    return param && param->kind == 1 ? static_cast<QStringParam*>(param) : nullptr;
}

QCommandParam* QCommand::commandParam() const
{
    QGroupParam* param = find(commandKey);
    return param && param->kind == 7 ? static_cast<QCommandParam*>(param) : nullptr;
}

QString QCommand::name() const
{
    const QStringParam* param = nameParam();
    return param ? param->text : QString();
}

void QCommand::setName(const QString& name)
{
    if (QStringParam* param = nameParam()) {
        param->setValue(name);
        return;
    }
    editor->insertLineAfter(this, QStringLiteral("name = \"%1\"").arg(name), true);
}

QString QCommand::command(bool raw) const
{
    const QCommandParam* param = commandParam();
    if (!param) return QString();
    if (!raw) return QCommandParam::stepsText(param->steps);
    const QString line = param->block.text();
    QString value = line.mid(line.indexOf(QLatin1Char('=')) + 1);
    const int comment = int(value.indexOf(QLatin1Char(';')));
    if (comment >= 0) value.truncate(comment);
    return value.trimmed();
}

void QCommand::setCommand(const QString& text, bool reparse)
{
    const QString line = QStringLiteral("command = ") + text;
    if (QCommandParam* param = commandParam()) {
        if (!reparse) param->steps = QCommandParam::parseSteps(text);
        param->setLine(line, reparse);
        return;
    }
    QTextElement* after = nameParam();
    editor->insertLineAfter(after ? after : this, line, true);
}

int QCommand::length() const
{
    const QCommandParam* param = commandParam();
    return param ? int(param->steps.size()) : 0;
}
