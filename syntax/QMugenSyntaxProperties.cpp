#include "QMugenSyntaxProperties.h"

#include "QXmlParser.h"

#include <QHash>

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
        } else if (element == QLatin1String("trigger")) {
            m_triggers.insert(name, readParam(xml, true));
        } else if (groupsByElement.contains(element)) {
            m_groups[groupsByElement.value(element)].insert(name, readParam(xml, false));
        }
    }
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
