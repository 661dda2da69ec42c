#include "QParamGroup.h"

#include "QGroupParam.h"
#include "QTextElementType.h"

#include <QHash>

namespace {

QGroupParam* paramOf(QTextElement* element)
{
    return element && element->type() == etGroupParam ? static_cast<QGroupParam*>(element) : nullptr;
}

bool isHeader(const QTextElement* element)
{
    return element->flags() & etSection;
}

QParamGroup* paramGroupOf(QTextElement* element)
{
    return element && (element->flags() & etParamSection) == etParamSection
               ? static_cast<QParamGroup*>(element)
               : nullptr;
}

// The nearest valid header above an element, or null.
QTextElement* headerAbove(const QTextElement* element)
{
    for (QTextElement* above = element->previous; above; above = above->previous)
        if (above->valid && isHeader(above)) return above;
    return nullptr;
}

// headerAbove for many elements of one list. The list stands still while a change list is bound, so the
// header found for one element answers for every element below it up to the next header: a reload of a
// long section costs one walk instead of one per line.
class QHeaderFinder
{
public:
    QTextElement* above(const QTextElement* element)
    {
        QTextElement* found = nullptr;
        for (QTextElement* e = element->previous; e; e = e->previous) {
            if (e->valid && isHeader(e)) {
                found = e;
                break;
            }
            if (e == known) {
                found = knownHeader;
                break;
            }
        }
        known = element;
        knownHeader = found;
        return found;
    }

private:
    const QTextElement* known = nullptr;
    QTextElement* knownHeader = nullptr;
};

// What one change list did to each section.
struct QBindingLog
{
    QList<QParamGroup*> order;
    QHash<QParamGroup*, QList<QGroupParam*>> added;
    QHash<QParamGroup*, QList<QGroupParam*>> removed;

    void note(QParamGroup* group)
    {
        if (!added.contains(group) && !removed.contains(group)) order.append(group);
    }
    void joined(QParamGroup* group, QGroupParam* param)
    {
        note(group);
        added[group].append(param);
    }
    void left(QParamGroup* group, QGroupParam* param)
    {
        note(group);
        removed[group].append(param);
    }
};

// Puts a parameter into its section's list at its place in line order.
void join(QParamGroup* group, QGroupParam* param, QBindingLog& log)
{
    const int line = param->block.blockNumber();
    int at = int(group->params.size());
    while (at > 0 && group->params.at(at - 1)->block.blockNumber() > line)
        --at;
    group->params.insert(at, param);
    param->group = group;
    param->boundId = param->id;
    log.joined(group, param);
}

// Takes a parameter out of its section; the next valid duplicate below it in the section, if any,
// becomes the live one.
void leave(QGroupParam* param, QBindingLog& log)
{
    QParamGroup* group = param->group;
    const int id = param->boundId;
    group->params.removeOne(param);
    param->group = nullptr;
    param->boundId = 0;
    log.left(group, param);
    // A section that is going away takes no replacement: its parameters move to the section above.
    // Nor does one that the parameter no longer stands in, since a header came between them.
    if (!group->valid || headerAbove(param) != group) return;
    for (QTextElement* below = param->next; below; below = below->next) {
        if (!below->valid) continue;
        if (isHeader(below)) break;
        QGroupParam* candidate = paramOf(below);
        if (candidate && !candidate->group && candidate->id == id) {
            // In line order, like every parameter of a section, so that a file list read from the
            // section keeps the order of the file.
            join(group, candidate, log);
            break;
        }
    }
}

// Binds an unbound parameter to the section it stands in, when that holds no earlier one of its id.
// A parameter above the live one of its id takes over, so the first of duplicates is always live.
void bindToSection(QGroupParam* param, QTextElement* header, QBindingLog& log)
{
    QParamGroup* group = paramGroupOf(header);
    if (!group || param->group) return;
    QGroupParam* live = group->find(param->id);
    if (live) {
        if (live->block.blockNumber() < param->block.blockNumber()) return;
        const int at = int(group->params.indexOf(live));
        group->params.removeAt(at);
        live->group = nullptr;
        live->boundId = 0;
        log.left(group, live);
    }
    join(group, param, log);
}

// The parameters below a header, up to the next valid header.
template <class Visit>
void forSection(QTextElement* header, Visit visit)
{
    for (QTextElement* below = header->next; below; below = below->next) {
        if (!below->valid) continue;
        if (isHeader(below)) break;
        if (QGroupParam* param = paramOf(below)) visit(param);
    }
}

} // namespace

int QParamGroup::flags() const
{
    return type() | etSection | etParamSection;
}

void QParamGroup::paramsAdded(QList<QGroupParam*>&) {}

void QParamGroup::paramsRemoved(QList<QGroupParam*>&) {}

QGroupParam* QParamGroup::find(const QString& name) const
{
    for (QGroupParam* param : params)
        if (param->name == name) return param;
    return nullptr;
}

QGroupParam* QParamGroup::find(int id) const
{
    for (QGroupParam* param : params)
        if (param->id == id) return param;
    return nullptr;
}

QString QParamGroup::value(int id, const QString& fallback) const
{
    const QGroupParam* param = find(id);
    if (!param) return fallback;
    switch (param->kind) {
    case 1:
    case 2:
    case 9:
        return param->value().toString();
    default:
        return fallback;
    }
}

void QParamGroup::releaseParams()
{
    for (QGroupParam* param : std::as_const(params)) {
        param->group = nullptr;
        param->boundId = 0;
    }
    params.clear();
}

void QParamGroup::bindParams(const QList<QTextElementChange>& changes)
{
    QBindingLog log;
    QHeaderFinder headers;
    for (const QTextElementChange& change : changes) {
        QTextElement* element = change.element;
        if (QGroupParam* param = paramOf(element)) {
            switch (change.type) {
            case ElementRemoved:
                if (param->group) leave(param, log);
                break;
            case ElementAdded:
                if (param->valid) bindToSection(param, headers.above(param), log);
                break;
            case ElementChanged:
                // A retyped key of the same kind changes the id the parameter stands for.
                if (param->group && param->boundId != param->id) leave(param, log);
                if (param->valid && !param->group) bindToSection(param, headers.above(param), log);
                break;
            }
            continue;
        }
        if (!isHeader(element)) continue;
        if (change.type == ElementRemoved) {
            QTextElement* above = headers.above(element);
            forSection(element, [&](QGroupParam* param) {
                if (param->group) leave(param, log);
                bindToSection(param, above, log);
            });
        } else if (change.type == ElementAdded && element->valid) {
            forSection(element, [&](QGroupParam* param) {
                if (param->group && param->group != element) leave(param, log);
                bindToSection(param, element, log);
            });
        }
    }
    for (QParamGroup* group : std::as_const(log.order)) {
        QList<QGroupParam*> added = log.added.value(group);
        QList<QGroupParam*> removed = log.removed.value(group);
        if (!added.isEmpty()) group->paramsAdded(added);
        if (!removed.isEmpty()) group->paramsRemoved(removed);
    }
}
