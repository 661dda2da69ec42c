#pragma once

// Shared by the definitions and commands tests: a description of a parameter document's model, and the
// checks of parameter binding that hold after any edit.

#include "FileBytes.h"
#include "QCommand.h"
#include "QCommandParam.h"
#include "QCommands.h"
#include "QDefinitions.h"
#include "QFileParam.h"
#include "QGroupParamID.h"
#include "QIntNParam.h"
#include "QSingletonParamGroup.h"
#include "QStringParam.h"
#include "QSyntaxTextEditor.h"
#include "QTextElementRegistry.h"
#include "QTextElementSubType.h"
#include "QTextElementType.h"
#include "QTextEncoding.h"
#include "QVersionParam.h"

#include <QStringList>

inline QString describeParam(const QGroupParam* param)
{
    QString value;
    switch (param->kind) {
    case 4: {
        const auto* numbers = static_cast<const QIntNParam*>(param);
        QStringList list;
        for (int i = 0; i < numbers->count; ++i)
            list << QString::number(numbers->numbers[i]);
        value = list.join(QLatin1Char(','));
        break;
    }
    case 7:
        value = static_cast<const QCommandParam*>(param)->value().toString();
        break;
    case 8:
        value = QString::number(static_cast<const QVersionParam*>(param)->version, 16);
        break;
    default:
        value = param->value().toString();
        break;
    }
    return param->name + QLatin1Char('=') + value;
}

// Every element but name comments, in list order: sections with the parameters bound to them, and
// unbound parameters marked with "!". Name comments are left out because whether a comment line counts
// depends on lines below it that an edit need not have touched.
inline QString describeModel(const QElementTextEditor& editor)
{
    QStringList parts;
    for (const QTextElement* element = editor.firstElement; element; element = element->next) {
        if (element->type() == etNameComment) continue;
        if (element->type() == etGroupParam) {
            const auto* param = static_cast<const QGroupParam*>(element);
            if (!param->group) parts << QLatin1Char('!') + describeParam(param);
            continue;
        }
        QString header = QStringLiteral("[%1.%2").arg(element->type()).arg(element->subType());
        if (element->flags() & etParamSection)
            for (const QGroupParam* param : static_cast<const QParamGroup*>(element)->params)
                header += QLatin1Char(' ') + describeParam(param);
        parts << header + QLatin1Char(']');
    }
    return parts.join(QLatin1Char(' '));
}

// The binding that the element list calls for, against what the sections hold: the first parameter of
// each id in a parameter section is live, every other one is unbound, and each fixed section kind maps
// to its first section.
inline QString checkParamBinding(const QSyntaxTextEditor& editor)
{
    QList<QGroupParam*> expected;
    QTextElement* header = nullptr;
    QMap<int, QSingletonParamGroup*> firstGroups;
    auto checkSection = [&]() -> QString {
        if (!header || !(header->flags() & etParamSection)) return QString();
        const auto* group = static_cast<const QParamGroup*>(header);
        if (group->params != expected) {
            QStringList held;
            QStringList wanted;
            for (const QGroupParam* param : group->params)
                held << QStringLiteral("%1@%2").arg(param->name).arg(param->block.blockNumber());
            for (const QGroupParam* param : std::as_const(expected))
                wanted << QStringLiteral("%1@%2").arg(param->name).arg(param->block.blockNumber());
            return QStringLiteral("section at line %1 holds %2 instead of %3")
                .arg(header->block.blockNumber())
                .arg(held.join(QLatin1Char(' ')), wanted.join(QLatin1Char(' ')));
        }
        return QString();
    };
    for (QTextElement* element = editor.firstElement; element; element = element->next) {
        if (element->flags() & etSection) {
            const QString problem = checkSection();
            if (!problem.isEmpty()) return problem;
            header = element;
            expected.clear();
            if (element->type() == etSingletonGroup && !firstGroups.contains(element->subType()))
                firstGroups[element->subType()] = static_cast<QSingletonParamGroup*>(element);
            continue;
        }
        if (element->type() != etGroupParam) continue;
        auto* param = static_cast<QGroupParam*>(element);
        const bool inGroup = header && (header->flags() & etParamSection);
        bool live = inGroup;
        for (const QGroupParam* other : std::as_const(expected))
            if (other->id == param->id) live = false;
        if (live) expected << param;
        if ((live && param->group != header) || (!live && param->group))
            return QStringLiteral("parameter %1 at line %2 is bound wrongly")
                .arg(param->name)
                .arg(param->block.blockNumber());
    }
    const QString problem = checkSection();
    if (!problem.isEmpty()) return problem;
    if (firstGroups != editor.groups) return QStringLiteral("the map of fixed sections is wrong");
    return QString();
}
