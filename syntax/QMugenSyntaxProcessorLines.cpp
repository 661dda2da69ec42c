#include "QMugenSyntaxProcessor.h"

#include "QMugenParamIndex.h"
#include "QMugenSyntaxProperties.h"
#include "QMugenSyntaxText.h"
#include "QSyntaxFormats.h"

#include <QRegularExpression>

// A line alone does not say what it means: its reader is chosen by the section the block state names.

using namespace QMugenSyntaxText;

namespace {

// "trigger" followed by at least one digit, in any case.
bool isNumberedTrigger(QStringView text)
{
    if (text.size() < 8 || !text.startsWith(QLatin1String("trigger"), Qt::CaseInsensitive)) return false;
    for (qsizetype i = 7; i < text.size(); ++i)
        if (!isDigit(text[i])) return false;
    return true;
}

// The groups of the sections with fixed keys, by block state.
int groupOfState(int state)
{
    switch (state) {
    case MugenStateData:
        return QMugenSyntaxProperties::Data;
    case MugenStateSize:
        return QMugenSyntaxProperties::Size;
    case MugenStateVelocity:
        return QMugenSyntaxProperties::Velocity;
    case MugenStateMovement:
        return QMugenSyntaxProperties::Movement;
    case MugenStateFiles:
        return QMugenSyntaxProperties::Files;
    case MugenStateArcade:
        return QMugenSyntaxProperties::Arcade;
    case MugenStateCamera:
        return QMugenSyntaxProperties::Camera;
    case MugenStatePlayerInfo:
        return QMugenSyntaxProperties::PlayerInfo;
    case MugenStateBound:
        return QMugenSyntaxProperties::Bound;
    case MugenStateScaling:
        return QMugenSyntaxProperties::Scaling;
    case MugenStateStageInfo:
        return QMugenSyntaxProperties::StageInfo;
    case MugenStateShadow:
        return QMugenSyntaxProperties::Shadow;
    case MugenStateReflection:
        return QMugenSyntaxProperties::Reflection;
    case MugenStateMusic:
        return QMugenSyntaxProperties::Music;
    case MugenStateBGDef:
        return QMugenSyntaxProperties::BGDef;
    case MugenStateBGCtrlDef:
        return QMugenSyntaxProperties::BGCtrlDef;
    case MugenStateFnt:
        return QMugenSyntaxProperties::Fnt;
    case MugenStateSceneDef:
        return QMugenSyntaxProperties::SceneDef;
    case MugenStateScene:
        return QMugenSyntaxProperties::Scene;
    default:
        return -1;
    }
}

} // namespace

void QMugenSyntaxProcessor::sectionLine(int previousState)
{
    switch (previousState) {
    case -1:
    case MugenStateState:
    case MugenStateInvalidType:
        triggerLine();
        return;
    case MugenStateBG:
        backgroundLine();
        return;
    case MugenStateRemap:
        remapLine();
        return;
    case MugenStateDefaults:
        defaultsLine();
        return;
    case MugenStateCommand:
        commandLine();
        return;
    case MugenStateStateDef:
        stateDefLine();
        return;
    case MugenStateQuotes:
        quotesLine();
        return;
    case MugenStateAction:
        actionLine();
        return;
    case MugenStateInfo:
        infoLine();
        return;
    case MugenStatePaletteKeymap:
        keymapLine();
        return;
    case MugenStateNone:
    case MugenStateBGCtrl:
    case MugenStateDef:
        return;
    case TextSectionState:
        skipToEnd();
        return;
    default:
        break;
    }
    const int group = groupOfState(previousState);
    if (group >= 0) {
        if (m_vocabulary) parameter(m_vocabulary->group(group), QMugenSyntaxProperties::groupLabel(group));
        return;
    }
    if (!m_vocabulary) return;
    if (previousState >= MugenStateController && previousState < MugenStateBGType) {
        const int index = previousState - MugenStateController;
        if (index < m_vocabulary->stateControllers().size())
            controllerLine(m_vocabulary->stateControllers().at(index));
    } else if (previousState >= MugenStateBGType && previousState < MugenStateBGCtrlType) {
        const int index = previousState - MugenStateBGType;
        if (index < m_vocabulary->bgControllers().size()) {
            const QMugenController* controller = m_vocabulary->bgControllers().at(index);
            parameter(controller->params, controller->name);
        }
    } else if (previousState >= MugenStateBGCtrlType && previousState < MugenStateDefType) {
        bgControlLine(previousState);
    } else if (previousState >= ScreenSectionState) {
        const int index = previousState - ScreenSectionState;
        if (index < m_vocabulary->screens().size()) {
            const QMugenController* screen = m_vocabulary->screens().at(index);
            parameter(screen->params, screen->name);
        }
    } else if (previousState >= MugenStateDefType) {
        const int index = previousState - MugenStateDefType;
        if (index < m_vocabulary->fntDefs().size()) {
            const QMugenController* controller = m_vocabulary->fntDefs().at(index);
            parameter(controller->params, controller->name);
        }
    }
}

// The name of a "name = value" line of a built-in section. A known name is coloured and passed; an
// unknown one is reported and stays current, so that the '=' missing in its place is reported on it too.
// A line whose '=' is missing is not read further.
bool QMugenSyntaxProcessor::namedLine(bool known, const QString& unknownText)
{
    if (known) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
    } else {
        errorAtToken(unknownText);
    }
    if (!expect(MugenTkEqual)) {
        skipToEnd();
        return false;
    }
    return true;
}

void QMugenSyntaxProcessor::remapLine()
{
    static const std::initializer_list<const char*> keys = {"x", "y", "z", "a", "b", "c", "s"};
    const bool known = m_token.is(MugenTkIdentifier) && isOneOf(tokenText(), keys);
    if (!namedLine(known, tr("Unknown 'Remap' parameter"))) return;
    if (m_token.is(MugenTkIdentifier) && isOneOf(tokenText(), keys)) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
    } else {
        errorAtToken(tr("Unknown 'Remap' value"));
        if (m_token.is(MugenTkEnd)) return;
    }
    next();
}

void QMugenSyntaxProcessor::defaultsLine()
{
    const bool known =
        m_token.is(MugenTkIdentifier) && isOneOf(tokenText(), {"command.time", "command.buffer.time"});
    if (!namedLine(known, tr("Unknown 'Defaults' parameter"))) return;
    expect(MugenTkInteger, QSyntaxFormats::Number);
}

void QMugenSyntaxProcessor::commandLine()
{
    const bool isIdentifier = m_token.is(MugenTkIdentifier);
    const bool name = isIdentifier && tokenIs("name");
    const bool command = isIdentifier && tokenIs("command");
    const bool time = isIdentifier && isOneOf(tokenText(), {"time", "buffer.time"});
    if (!namedLine(name || command || time, tr("Unknown 'Command' parameter"))) return;
    if (name)
        expect(MugenTkString, QSyntaxFormats::String);
    else if (command)
        commandKeys();
    else if (time)
        expect(MugenTkInteger, QSyntaxFormats::Number);
}

void QMugenSyntaxProcessor::stateDefLine()
{
    const QStringView name = tokenText();
    const bool isIdentifier = m_token.is(MugenTkIdentifier);
    static const char* const typeValues[] = {"s", "c", "a", "l", "u", nullptr};
    static const char* const moveTypeValues[] = {"a", "i", "h", "u", nullptr};
    static const char* const physicsValues[] = {"s", "c", "a", "n", "u", nullptr};
    static const char* const* const valueLists[] = {typeValues, moveTypeValues, physicsValues};
    int which = -1;
    if (isIdentifier && equalsWord(name, "type"))
        which = 0;
    else if (isIdentifier && equalsWord(name, "movetype"))
        which = 1;
    else if (isIdentifier && equalsWord(name, "physics"))
        which = 2;
    if (which >= 0) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        if (!expect(MugenTkEqual)) return skipToEnd();
        if (!m_token.is(MugenTkIdentifier)) {
            expect(MugenTkIdentifier);
            return;
        }
        bool known = false;
        for (const char* const* value = valueLists[which]; *value && !known; ++value)
            known = tokenIs(*value);
        if (known)
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
        else if (which == 0)
            errorAtToken(tr("Unknown 'StateDef type' value '%1'").arg(tokenText()));
        else if (which == 1)
            errorAtToken(tr("Unknown 'StateDef movetype' value '%1'").arg(tokenText()));
        else
            errorAtToken(tr("Unknown 'StateDef physics' value '%1'").arg(tokenText()));
        next();
        return;
    }
    const bool single =
        isIdentifier && isOneOf(name, {"anim", "ctrl", "poweradd", "juggle", "facep2", "hitdefpersist",
                                       "movehitpersist", "hitcountpersist", "sprpriority"});
    const bool velset = isIdentifier && equalsWord(name, "velset");
    if (single || velset) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        if (!expect(MugenTkEqual)) return skipToEnd();
        expression();
        if (velset) {
            expect(MugenTkComma);
            expression();
        }
        return;
    }
    // The unknown name is passed; its value isn't looked at.
    errorAtToken(tr("Unknown 'StateDef' parameter '%1'").arg(tokenText()));
    next();
    expect(MugenTkEqual);
    skipToEnd();
}

void QMugenSyntaxProcessor::quotesLine()
{
    static const QRegularExpression victory(
        QRegularExpression::anchoredPattern(QStringLiteral("victory\\d{1,2}")),
        QRegularExpression::CaseInsensitiveOption);
    const bool known = m_token.is(MugenTkIdentifier) && victory.match(tokenText()).hasMatch();
    if (!namedLine(known, tr("Unknown 'Quotes' parameter"))) return;
    expect(MugenTkString, QSyntaxFormats::String);
}

void QMugenSyntaxProcessor::keymapLine()
{
    const bool known =
        m_token.is(MugenTkIdentifier) &&
        isOneOf(tokenText(), {"x", "y", "z", "a", "b", "c", "x2", "y2", "z2", "a2", "b2", "c2"});
    if (!namedLine(known, tr("Unknown 'Palette Keymap' parameter"))) return;
    expect(MugenTkInteger, QSyntaxFormats::Number);
}

void QMugenSyntaxProcessor::infoLine()
{
    const QStringView name = tokenText();
    const bool isIdentifier = m_token.is(MugenTkIdentifier);
    const bool text = isIdentifier && isOneOf(name, {"name", "displayname", "author"});
    const bool localcoord = isIdentifier && equalsWord(name, "localcoord");
    const bool versiondate = isIdentifier && equalsWord(name, "versiondate");
    const bool palDefaults = isIdentifier && equalsWord(name, "pal.defaults");
    const bool mugenversion = isIdentifier && equalsWord(name, "mugenversion");
    if (!namedLine(text || localcoord || versiondate || palDefaults || mugenversion,
                   tr("Unknown 'Info'' parameter")))
        return;
    if (text) {
        expect(MugenTkString, QSyntaxFormats::String);
    } else if (localcoord) {
        expect(MugenTkInteger, QSyntaxFormats::Number);
        expect(MugenTkComma);
        expect(MugenTkInteger, QSyntaxFormats::Number);
    } else if (versiondate) {
        expect(MugenTkInteger, QSyntaxFormats::Number);
        for (int i = 0; i < 2; ++i) {
            if (m_token.is(MugenTkComma) || m_token.is(MugenTkSlash))
                next();
            else
                expect(MugenTkComma);
            expect(MugenTkInteger, QSyntaxFormats::Number);
        }
    } else if (palDefaults) {
        expect(MugenTkInteger, QSyntaxFormats::Number);
        while (m_token.is(MugenTkComma)) {
            next();
            expect(MugenTkInteger, QSyntaxFormats::Number);
        }
    } else if (m_token.is(MugenTkFloat)) {
        expect(MugenTkFloat, QSyntaxFormats::Number);
    } else {
        expect(MugenTkInteger, QSyntaxFormats::Number);
        expect(MugenTkComma);
        expect(MugenTkInteger, QSyntaxFormats::Number);
        expect(MugenTkComma);
        expect(MugenTkInteger, QSyntaxFormats::Number);
    }
}

void QMugenSyntaxProcessor::actionLine()
{
    if (m_token.is(MugenTkInteger)) {
        // group, image, x, y, time, then the optional flip, transparency and scale and angle.
        expect(MugenTkInteger, QSyntaxFormats::Number);
        for (int i = 0; i < 4; ++i) {
            expect(MugenTkComma);
            expect(MugenTkInteger, QSyntaxFormats::Number);
        }
        if (!m_token.is(MugenTkComma)) return;
        next();
        if (m_token.is(MugenTkIdentifier)) {
            if (isOneOf(tokenText(), {"h", "v", "hv", "vh"}))
                setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
            else
                errorAtToken(tr("Unknown flip type"));
            next();
        }
        if (!m_token.is(MugenTkComma)) return;
        next();
        if (m_token.is(MugenTkIdentifier)) {
            static const QRegularExpression subtractive(
                QRegularExpression::anchoredPattern(QStringLiteral("as\\d{1,3}d\\d{1,3}")),
                QRegularExpression::CaseInsensitiveOption);
            if (isOneOf(tokenText(), {"a", "a1", "s"}) || subtractive.match(tokenText()).hasMatch())
                setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
            else
                errorAtToken(tr("Unknown transparency"));
            next();
        }
        for (int i = 0; i < 3 && m_token.is(MugenTkComma); ++i) {
            next();
            if (m_token.is(MugenTkInteger) || m_token.is(MugenTkFloat)) {
                setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Number);
                next();
            }
        }
        return;
    }
    if (!m_token.is(MugenTkIdentifier)) return;
    const QStringView name = tokenText();
    if (isOneOf(name, {"clsn2default", "clsn1default"})) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        expect(MugenTkColon);
        expect(MugenTkInteger, QSyntaxFormats::Number);
    } else if (isOneOf(name, {"clsn2", "clsn1"})) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        if (m_token.is(MugenTkColon)) {
            next();
            expect(MugenTkInteger, QSyntaxFormats::Number);
            return;
        }
        expect(MugenTkBracketOpen);
        expect(MugenTkInteger, QSyntaxFormats::Number);
        expect(MugenTkBracketClose);
        expect(MugenTkEqual);
        expect(MugenTkInteger, QSyntaxFormats::Number);
        for (int i = 0; i < 3; ++i) {
            expect(MugenTkComma);
            expect(MugenTkInteger, QSyntaxFormats::Number);
        }
    } else if (equalsWord(name, "loopstart")) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
    } else if (equalsWord(name, "interpolate")) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        if (m_token.is(MugenTkIdentifier) && isOneOf(tokenText(), {"offset", "blend", "scale", "angle"})) {
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
            next();
        } else {
            errorAtToken(tr("Unknown interpolation"));
            if (!m_token.is(MugenTkEnd)) next();
        }
    }
}

void QMugenSyntaxProcessor::triggerLine()
{
    if (!m_token.is(MugenTkIdentifier) || !(tokenIs("triggerall") || isNumberedTrigger(tokenText()))) return;
    setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
    next();
    if (!expect(MugenTkEqual)) return skipToEnd();
    expression();
}

// A line of a background element above its type line: the engine takes the keys in any order, so a key
// that some element type knows is read as that type reads it.
void QMugenSyntaxProcessor::backgroundLine()
{
    if (m_vocabulary && m_token.is(MugenTkIdentifier) && !tokenIs("triggerall") &&
        !isNumberedTrigger(tokenText())) {
        const QString& lowerName = lowerTokenText();
        for (const QMugenController* controller : m_vocabulary->bgControllers()) {
            if (QMugenParamIndex::of(controller->params).contains(lowerName)) {
                parameter(controller->params, controller->name);
                return;
            }
        }
    }
    triggerLine();
}

void QMugenSyntaxProcessor::controllerLine(const QMugenController* controller)
{
    if (m_token.is(MugenTkIdentifier) &&
        (isOneOf(tokenText(), {"ignorehitpause", "persistent", "triggerall"}) ||
         isNumberedTrigger(tokenText()))) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
        next();
        if (!expect(MugenTkEqual)) return skipToEnd();
        expression();
        return;
    }
    // The Null controller does nothing, whatever it is given.
    if (controller->name.compare(QLatin1String("null"), Qt::CaseInsensitive) == 0) return skipToEnd();
    parameter(controller->params, controller->name);
}

void QMugenSyntaxProcessor::bgControlLine(int state)
{
    const int index = state - MugenStateBGCtrlType;
    if (index >= m_vocabulary->bgControls().size()) return;
    const QMugenController* controller = m_vocabulary->bgControls().at(index);
    // The first control of the list takes both names as its own parameters.
    if (index > 0 && m_token.is(MugenTkIdentifier)) {
        int more = -1;
        if (tokenIs("time"))
            more = 2;
        else if (tokenIs("ctrlid"))
            more = 10;
        if (more >= 0) {
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Keyword);
            next();
            if (!expect(MugenTkEqual)) return skipToEnd();
            expect(MugenTkInteger, QSyntaxFormats::Number);
            for (int i = 0; i < more && m_token.is(MugenTkComma); ++i) {
                next();
                expect(MugenTkInteger, QSyntaxFormats::Number);
            }
            return;
        }
    }
    parameter(controller->params, controller->name);
}
