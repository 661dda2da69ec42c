#include "QMugenSyntaxProperties.h"

#include "QXmlParser.h"

#include <QHash>
#include <QRegularExpression>

#include <iterator>

namespace {

struct GroupName
{
    const char* element;
    const char* label;
};

const GroupName groupNames[QMugenSyntaxProperties::GroupCount] = {
    {"files", "Files"},
    {"arcade", "Arcade"},
    {"data", "Data"},
    {"size", "Size"},
    {"velocity", "Velocity"},
    {"movement", "Movement"},
    {"camera", "Camera"},
    {"playerinfo", "PlayerInfo"},
    {"bound", "Bound"},
    {"scaling", "Scaling"},
    {"stageinfo", "StageInfo"},
    {"shadow", "Shadow"},
    {"reflection", "Reflection"},
    {"music", "Music"},
    {"bgdef", "BGDef"},
    {"bg_control_def", "BGCtrlDef"},
    {"fnt", "FNT v2"},
    {"scene_def", "SceneDef"},
    {"scene", "Scene"},
};

// Parameter kinds by their type attribute, numbered from 0.
const char* const paramTypeNames[] = {
    "int",    "int2",   "int3",    "intn",       "intfloat3", "intfloat3opt", "float", "float2",  "float2opt",
    "float3", "exp",    "exp2",    "exp2value",  "exp3",      "exp4",         "expn",  "exp2opt", "exp3nil",
    "string", "strexp", "strexp2", "strexp2nil", "expstr",    "expstrexp2",   "value",
};

struct TriggerTypeName
{
    const char* name;
    int type;
};

const TriggerTypeName triggerTypeNames[] = {
    {"exp", MugenExp},         {"exp2", MugenExp2},     {"exp3", MugenExp3},       {"value", MugenValue},
    {"nilexp", MugenNilExp},   {"expopt", MugenExpOpt}, {"opint", MugenOpInt},     {"opint2", MugenOpInt2},
    {"op2int2", MugenOp2Int2}, {"opStr", MugenOpStr},   {"valueeq", MugenValueEq}, {"const", MugenConst},
};

bool paramTypeTakesPattern(int type)
{
    switch (type) {
    case MugenExp2Value:
    case MugenStrExp:
    case MugenStrExp2:
    case MugenStrExp2Nil:
    case MugenExpStrExp2:
    case MugenExpStr:
    case MugenValue:
        return true;
    default:
        return false;
    }
}

bool triggerTypeTakesPattern(int type)
{
    return type == MugenValue || type == MugenValueEq || type == MugenConst;
}

// A name with brace groups stands for every name it spells: "p{1,2}.{bg0,mid}" for p1.bg0, p1.mid,
// p2.bg0 and p2.mid, "round{1..9}" for round1 to round9. A group without a comma or a range is text, and
// so is a group that would make the name spell more names than any screen has keys.
QStringList expandBraces(const QString& name)
{
    constexpr qsizetype maxNames = 4096;
    struct Group
    {
        QString head;
        QStringList choices;
    };
    static const QRegularExpression range(QStringLiteral("^(\\d+)\\.\\.(\\d+)$"));
    QList<Group> groups;
    QString head;
    qsizetype count = 1;
    qsizetype from = 0;
    while (true) {
        const qsizetype open = name.indexOf(QLatin1Char('{'), from);
        const qsizetype close = open < 0 ? -1 : name.indexOf(QLatin1Char('}'), open);
        if (close < 0) break;
        const QString inner = name.mid(open + 1, close - open - 1);
        QStringList choices;
        const QRegularExpressionMatch match = range.match(inner);
        if (match.hasMatch()) {
            const qint64 first = match.captured(1).toLongLong();
            const qint64 last = match.captured(2).toLongLong();
            // An empty range spells no name at all.
            if (last < first) return {};
            if (last - first < maxNames / count)
                for (qint64 i = first; i <= last; ++i)
                    choices << QString::number(i);
        } else if (inner.contains(QLatin1Char(','))) {
            choices = inner.split(QLatin1Char(','));
        }
        head += QStringView(name).mid(from, open - from);
        from = close + 1;
        if (choices.size() < 2 || choices.size() > maxNames / count) {
            // One choice is text: only groups of several are multiplied out, so that a long name of
            // single groups costs no more than its length.
            head += choices.size() == 1 ? choices.first() : QLatin1Char('{') + inner + QLatin1Char('}');
            continue;
        }
        count *= choices.size();
        groups.append({head, choices});
        head.clear();
    }
    // The first group varies fastest.
    QStringList names{head + name.mid(from)};
    for (auto group = groups.crbegin(); group != groups.crend(); ++group) {
        QStringList longer;
        longer.reserve(names.size() * group->choices.size());
        for (const QString& tail : std::as_const(names))
            for (const QString& choice : group->choices)
                longer << group->head + choice + tail;
        names = longer;
    }
    return names;
}

// A component of a screen: key prefixes and the display elements they take, made into parameters once
// the whole file is read, so that the elements may stand anywhere in it.
struct Component
{
    QMugenController* screen;
    QStringList prefixes;
    QStringList elements;
    unsigned minver;
};

void expand(const Component& component, const QMap<QString, QMugenParamInfo>& elements)
{
    const QStringList names = component.elements.isEmpty() ? elements.keys() : component.elements;
    for (const QString& element : names) {
        const auto it = elements.constFind(element);
        if (it == elements.cend()) continue;
        QMugenParamInfo info = *it;
        info.minver = qMax(info.minver, component.minver);
        // A key the screen lists itself keeps its own record.
        for (const QString& prefix : component.prefixes) {
            const QString key = prefix + QLatin1Char('.') + element;
            if (!component.screen->params.contains(key)) component.screen->params.insert(key, info);
        }
    }
}

void deleteAll(QList<QMugenController*>& list)
{
    qDeleteAll(list);
    list.clear();
}

} // namespace

QMugenSyntaxProperties::~QMugenSyntaxProperties()
{
    clear();
}

void QMugenSyntaxProperties::clear()
{
    deleteAll(m_stateControllers);
    deleteAll(m_bgControllers);
    deleteAll(m_bgControls);
    deleteAll(m_fntDefs);
    deleteAll(m_screens);
    m_textSections.clear();
    for (auto& group : m_groups)
        group.clear();
    m_triggers.clear();
    m_constants.clear();
}

bool QMugenSyntaxProperties::load(const QString& path)
{
    clear();
    QXmlParser xml(path);
    if (!xml.findRoot(QStringLiteral("syntax"))) return false;

    QHash<QString, int> groupsByElement;
    for (int group = 0; group < GroupCount; ++group)
        groupsByElement.insert(groupElement(group), group);

    QMap<QString, QMugenParamInfo> elements;
    QList<Component> components;
    while (xml.nextElement()) {
        const QString element = xml.name();
        const QString name = xml.attribute(QStringLiteral("name"));
        if (element == QLatin1String("consts")) {
            QStringList values;
            const int parent = xml.depth();
            while (xml.nextElement(parent))
                if (xml.name() == QLatin1String("const")) values << xml.attribute(QStringLiteral("name"));
            m_constants.insert(name, values);
        } else if (element == QLatin1String("state_controller")) {
            putController(m_stateControllers, readController(xml));
        } else if (element == QLatin1String("bg_controller")) {
            putController(m_bgControllers, readController(xml));
        } else if (element == QLatin1String("bg_control")) {
            putController(m_bgControls, readController(xml));
        } else if (element == QLatin1String("fnt_def")) {
            putController(m_fntDefs, readController(xml));
        } else if (element == QLatin1String("screen_element")) {
            elements.insert(name, readParam(xml, false));
        } else if (element == QLatin1String("screen")) {
            // A screen named again starts afresh in its place.
            QMugenController* screen = nullptr;
            for (QMugenController* existing : std::as_const(m_screens))
                if (existing->name.compare(name, Qt::CaseInsensitive) == 0) screen = existing;
            if (screen) {
                screen->params.clear();
                components.removeIf(
                    [screen](const Component& component) { return component.screen == screen; });
            } else {
                screen = new QMugenController;
                m_screens.append(screen);
            }
            screen->name = name;
            const int parent = xml.depth();
            while (xml.nextElement(parent)) {
                const QString child = xml.attribute(QStringLiteral("name"));
                if (xml.name() == QLatin1String("param")) {
                    const QMugenParamInfo info = readParam(xml, false);
                    for (const QString& key : expandBraces(child))
                        screen->params.insert(key, info);
                } else if (xml.name() == QLatin1String("component")) {
                    const QString taken = xml.attribute(QStringLiteral("elements"));
                    components.append(Component{
                        screen, expandBraces(child), taken.split(QLatin1Char(' '), Qt::SkipEmptyParts),
                        QMugenParamInfo::parseVersion(xml.attribute(QStringLiteral("minver")))});
                }
            }
        } else if (element == QLatin1String("text_section")) {
            if (!m_textSections.contains(name, Qt::CaseInsensitive)) m_textSections << name;
        } else if (element == QLatin1String("trigger")) {
            m_triggers.insert(name, readParam(xml, true));
        } else if (groupsByElement.contains(element)) {
            m_groups[groupsByElement.value(element)].insert(name, readParam(xml, false));
        }
    }
    for (const Component& component : std::as_const(components))
        expand(component, elements);
    return true;
}

QMugenParamInfo QMugenSyntaxProperties::readParam(const QXmlParser& xml, bool trigger)
{
    QMugenParamInfo info;
    const QString type = xml.attribute(QStringLiteral("type"));
    info.type = trigger ? triggerType(type) : paramType(type);
    if (!trigger && info.type == MugenIntN)
        info.pattern = xml.attribute(QStringLiteral("max"));
    else if (trigger ? triggerTypeTakesPattern(info.type) : paramTypeTakesPattern(info.type))
        info.pattern = xml.attribute(QStringLiteral("reg_exp"));

    const QString format = xml.attribute(QStringLiteral("format"));
    if (format == QLatin1String("idexp"))
        info.format = MugenFormatIdExp;
    else if (format == QLatin1String("regexp"))
        info.format = MugenFormatRegExp;
    if (xml.hasAttribute(QStringLiteral("fmt_reg_exp")))
        info.pattern = xml.attribute(QStringLiteral("fmt_reg_exp"));

    info.minver = QMugenParamInfo::parseVersion(xml.attribute(QStringLiteral("minver")));
    info.deprecated = xml.attribute(QStringLiteral("deprecated"));
    info.deprecatedVersion = QMugenParamInfo::parseVersion(info.deprecated);
    return info;
}

QMugenController* QMugenSyntaxProperties::readController(QXmlParser& xml)
{
    auto* controller = new QMugenController;
    controller->name = xml.attribute(QStringLiteral("name"));
    controller->minver = QMugenParamInfo::parseVersion(xml.attribute(QStringLiteral("minver")));
    controller->deprecated = xml.attribute(QStringLiteral("deprecated"));
    controller->deprecatedVersion = QMugenParamInfo::parseVersion(controller->deprecated);
    const int parent = xml.depth();
    while (xml.nextElement(parent))
        if (xml.name() == QLatin1String("param"))
            controller->params.insert(xml.attribute(QStringLiteral("name")), readParam(xml, false));
    return controller;
}

// A controller named again replaces the earlier one in its place, so that the list keeps file order and
// the checker never finds a stale record first.
void QMugenSyntaxProperties::putController(QList<QMugenController*>& list, QMugenController* controller)
{
    for (auto& existing : list) {
        if (existing->name.compare(controller->name, Qt::CaseInsensitive) == 0) {
            delete existing;
            existing = controller;
            return;
        }
    }
    list.append(controller);
}

QStringList QMugenSyntaxProperties::completionWords() const
{
    // Keyed by the lower case word, so that one spelling of each word is offered, in case blind order.
    QMap<QString, QString> words;
    auto addWord = [&words](const QString& word) {
        if (!word.isEmpty() && !words.contains(word.toLower())) words.insert(word.toLower(), word);
    };
    auto addNames = [&addWord](const QMap<QString, QMugenParamInfo>& map) {
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            if (it->format != MugenFormatRegExp) addWord(it.key());
    };
    for (const auto* list : {&m_stateControllers, &m_bgControllers, &m_bgControls, &m_fntDefs}) {
        for (const QMugenController* controller : *list) {
            addWord(controller->name);
            addNames(controller->params);
        }
    }
    for (const QMugenController* screen : m_screens)
        addNames(screen->params);
    for (const auto& group : m_groups)
        addNames(group);
    addNames(m_triggers);
    for (const QStringList& values : m_constants)
        for (const QString& value : values)
            addWord(value);
    return words.values();
}

QString QMugenSyntaxProperties::groupElement(int group)
{
    return QString::fromLatin1(groupNames[group].element);
}

QString QMugenSyntaxProperties::groupLabel(int group)
{
    return QString::fromLatin1(groupNames[group].label);
}

int QMugenSyntaxProperties::paramType(const QString& text)
{
    for (int type = 0; type < int(std::size(paramTypeNames)); ++type)
        if (text == QLatin1String(paramTypeNames[type])) return type;
    return MugenUnchecked;
}

int QMugenSyntaxProperties::triggerType(const QString& text)
{
    for (const TriggerTypeName& entry : triggerTypeNames)
        if (text == QLatin1String(entry.name)) return entry.type;
    return MugenUnchecked;
}
