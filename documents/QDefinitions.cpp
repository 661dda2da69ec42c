#include "QDefinitions.h"

#include "ParamReg.h"
#include "QFileParam.h"
#include "QGroupParamID.h"
#include "QIntNParam.h"
#include "QSingletonParamGroup.h"
#include "QStringParam.h"
#include "QTextElementSubType.h"
#include "QTextElementType.h"
#include "QTextEncoding.h"
#include "QVersionParam.h"
#include "SingletonGroupReg.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTextBlock>

namespace {

// The name of the section that a header line opens, lower case: "[Select Info]" gives "select info".
QString sectionName(const QString& line)
{
    const int open = int(line.indexOf(QLatin1Char('[')));
    if (open < 0) return QString();
    int close = int(line.indexOf(QLatin1Char(']'), open + 1));
    if (close < 0) close = int(line.size());
    return line.mid(open + 1, close - open - 1).trimmed().toLower();
}

bool isHeaderLine(const QString& line)
{
    return line.trimmed().startsWith(QLatin1Char('['));
}

QString slashes(QString path)
{
    return path.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

const int singletonSections[] = {Info,        Files,       Arcade,       BGDef,       TitleBGDef,
                                 SelectBGDef, VersusBGDef, VictoryBGDef, OptionBGDef, StageInfo,
                                 PlayerInfo,  Camera,      SceneDef,     Def};

const int paramKinds[] = {pkString, pkVersion, pkIntegers, pkFile};

} // namespace

QDefinitions::QDefinitions(QObject* parent)
    : QSyntaxTextEditor(pftDefinitions, nullptr, false, defaultVersion, true, parent)
{
    // Storyboards and fonts name their sprite file in [SceneDef] and [Def], so both are read as well.
    for (int section : singletonSections)
        setTypeEnabled(true, etSingletonGroup, section);
    for (int kind : paramKinds)
        setTypeEnabled(true, etGroupParam, kind);
    versionTimer.setSingleShot(true);
    versionTimer.setInterval(250);
}

QDefinitions::~QDefinitions() = default;

QString QDefinitions::displayName() const
{
    if (!projectName.isEmpty()) return projectName;
    return QFileInfo(filePath()).completeBaseName();
}

QDefinitionFiles QDefinitions::files() const
{
    QDefinitionFiles result;
    result.baseDirectory = base;
    switch (projectKind) {
    case Storyboard:
        if (const QSingletonParamGroup* scene = singletonGroup(SceneDef))
            result.sprite = slashes(scene->value(gpSpr));
        return result;
    case Stage:
        if (const QSingletonParamGroup* stage = singletonGroup(BGDef)) {
            static const QRegularExpression folder(QStringLiteral("^/?stages/"),
                                                   QRegularExpression::CaseInsensitiveOption);
            result.sprite = slashes(stage->value(gpSpr)).remove(folder);
        }
        return result;
    case Font:
        if (const QSingletonParamGroup* font = singletonGroup(Def))
            result.sprite = slashes(font->value(gpFile));
        return result;
    default:
        break;
    }
    const QSingletonParamGroup* files = singletonGroup(Files);
    if (!files) return result;
    for (const QGroupParam* param : files->params) {
        if (param->kind != pkFile) continue;
        const QString path = slashes(static_cast<const QFileParam*>(param)->path);
        switch (param->id & 0xff) {
        case gpSprite:
        case gpSpr:
        case gpSff:
            result.sprite = path;
            break;
        case gpAnim:
            result.animation = path;
            break;
        case gpSound:
            result.sound = path;
            break;
        case gpCmd:
            result.commands = path;
            break;
        case gpPalette:
            if ((param->id >> 16) < int(result.palettes.size())) result.palettes[param->id >> 16] = path;
            break;
        case gpStates:
            if (!result.states.contains(path)) result.states.append(path);
            break;
        default:
            break;
        }
    }
    return result;
}

QByteArray QDefinitions::fileNameBytes(const QString& name) const
{
    static const QRegularExpression stages(QStringLiteral("^/?stages/"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (!QTextFileLines::isLineSafe(QTextEncoding::codec(codec()))) return QByteArray();
    for (const int subType : {Files, BGDef, SceneDef, Def}) {
        const QSingletonParamGroup* group = singletonGroup(subType);
        if (!group) continue;
        for (const QGroupParam* param : group->params) {
            if (param->kind != pkFile) continue;
            const QString path = slashes(static_cast<const QFileParam*>(param)->path);
            if (path != name && QString(path).remove(stages) != name) continue;
            // The value follows the first "=" up to a comment: bytes below 0x40 that no character of the
            // pages of this content holds inside it.
            QByteArray line = lineBytes(param->block);
            line = line.mid(line.indexOf('=') + 1);
            const qsizetype comment = line.indexOf(';');
            if (comment >= 0) line.truncate(comment);
            return line.trimmed();
        }
    }
    return QByteArray();
}

bool QDefinitions::sectionExists(const QString& section) const
{
    const QString wanted = section.trimmed().toLower();
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next())
        if (isHeaderLine(block.text()) && sectionName(block.text()) == wanted) return true;
    return false;
}

QString QDefinitions::findValue(const QString& section, const QString& key) const
{
    const QString wanted = section.trimmed().toLower();
    bool inside = false;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        QString line = block.text();
        if (isHeaderLine(line)) {
            if (inside) break;
            inside = sectionName(line) == wanted;
            continue;
        }
        if (!inside) continue;
        const int comment = int(line.indexOf(QLatin1Char(';')));
        if (comment >= 0) line.truncate(comment);
        const int equal = int(line.indexOf(QLatin1Char('=')));
        if (equal < 0) continue;
        if (line.left(equal).trimmed().compare(key, Qt::CaseInsensitive) == 0)
            return line.mid(equal + 1).trimmed();
    }
    return QString();
}

bool QDefinitions::fromFile(const QString& path, uint codepage, bool copy)
{
    if (!QSyntaxTextEditor::fromFile(path, codepage, copy)) return false;
    base = QFileInfo(path).absolutePath();
    return true;
}

bool QDefinitions::toFile(const QString& path, bool copy)
{
    if (!QSyntaxTextEditor::toFile(path, copy)) return false;
    // Saved as another file, the project now lives beside it.
    if (!copy) base = QFileInfo(path).absolutePath();
    return true;
}

void QDefinitions::clear()
{
    QSyntaxTextEditor::clear();
    base.clear();
}

void QDefinitions::emitUpdate(QList<QTextElementChange>& changes)
{
    QSyntaxTextEditor::emitUpdate(changes);
    for (const QTextElementChange& change : std::as_const(changes))
        if (change.element->flags() & etSection) {
            refreshType();
            break;
        }
    refreshInfo();
}

QString QDefinitions::discardQuestion() const
{
    return tr("Do you really want to discard the changes made in the definitions?");
}

void QDefinitions::refreshType()
{
    // The first kind of section found, in this order of precedence, decides.
    static const QPair<const char*, QProjectType> kinds[] = {{"bgdef", Stage},
                                                             {"scenedef", Storyboard},
                                                             {"def", Font},
                                                             {"titlebgdef", SystemScreen},
                                                             {"lifebar", FightFX}};
    int found = int(std::size(kinds));
    for (QTextElement* element = firstElement; element && found > 0; element = element->next) {
        if (!element->valid || !(element->flags() & etSection)) continue;
        const QString name = sectionName(element->block.text());
        for (int i = 0; i < found; ++i)
            if (name == QLatin1String(kinds[i].first)) found = i;
    }
    const QProjectType kind = found < int(std::size(kinds)) ? kinds[found].second : Character;
    if (kind == projectKind) return;
    projectKind = kind;
    emit typeChanged(project());
}

void QDefinitions::refreshInfo()
{
    QString newName;
    quint32 newVersion = defaultVersion;
    QPoint newCoordinates(320, 240);
    if (const QSingletonParamGroup* info = singletonGroup(Info)) {
        if (const QGroupParam* param = info->find(gpName); param && param->kind == pkString)
            newName = static_cast<const QStringParam*>(param)->text;
        if (const QGroupParam* param = info->find(gpMugenVersion); param && param->kind == pkVersion)
            newVersion = static_cast<const QVersionParam*>(param)->version;
        if (const QGroupParam* param = info->find(gpLocalCoord); param && param->kind == pkIntegers) {
            const auto* numbers = static_cast<const QIntNParam*>(param);
            if (numbers->count == 2) newCoordinates = QPoint(numbers->numbers[0], numbers->numbers[1]);
        }
    }
    coordinates = newCoordinates;
    if (newName != projectName) {
        projectName = newName;
        emit nameChanged(project(), projectName);
    }
    if (newVersion != targetVersion) {
        targetVersion = newVersion;
        emit versionChanged(project());
        versionTimer.start();
    }
}

void registerDefinitionElements()
{
    for (const QTextElementReg* reg : QTextElementReg::registered())
        if (dynamic_cast<const SingletonGroupReg*>(reg)) return;
    QTextElementReg::add(new SingletonGroupReg(QStringLiteral("info"), Info));
    QTextElementReg::add(new ParamReg<QStringParam>(QStringLiteral("name"), gpName, pkString));
    QTextElementReg::add(new ParamReg<QIntNParam>(QStringLiteral("localcoord"), gpLocalCoord, pkIntegers));
    QTextElementReg::add(
        new ParamReg<QVersionParam>(QStringLiteral("mugenversion"), gpMugenVersion, pkVersion));
    QTextElementReg::add(new SingletonGroupReg(QStringLiteral("files"), Files));
    const QPair<const char*, int> files[] = {{"sprite", gpSprite}, {"spr", gpSpr},           {"sff", gpSff},
                                             {"anim", gpAnim},     {"sound", gpSound},       {"cmd", gpCmd},
                                             {"cns", gpCns},       {"stcommon", gpStCommon}, {"st", gpSt}};
    for (const auto& file : files)
        QTextElementReg::add(new ParamReg<QFileParam>(QLatin1String(file.first), file.second, pkFile));
    for (int slot = 0; slot <= 12; ++slot)
        QTextElementReg::add(
            new ParamReg<QFileParam>(QStringLiteral("st%1").arg(slot), statesParamId(slot), pkFile));
    for (int number = 1; number <= 12; ++number)
        QTextElementReg::add(
            new ParamReg<QFileParam>(QStringLiteral("pal%1").arg(number), paletteParamId(number), pkFile));
    QTextElementReg::add(new SingletonGroupReg(QStringLiteral("bgdef"), BGDef));
    const QPair<const char*, int> sections[] = {{"titlebgdef", TitleBGDef},
                                                {"selectbgdef", SelectBGDef},
                                                {"versusbgdef", VersusBGDef},
                                                {"victorybgdef", VictoryBGDef},
                                                {"optionbgdef", OptionBGDef},
                                                {"scenedef", SceneDef},
                                                {"def", Def}};
    for (const auto& section : sections)
        QTextElementReg::add(new SingletonGroupReg(QLatin1String(section.first), section.second));
    QTextElementReg::add(new ParamReg<QFileParam>(QStringLiteral("file"), gpFile, pkFile));
}
