#include "QMugenSyntaxProcessor.h"

#include "QMugenSyntaxProperties.h"
#include "QMugenSyntaxText.h"
#include "QSyntaxFormats.h"

#include <QRegularExpression>

// Section headers and type lines are the only lines that write the block state; all others read it.

using namespace QMugenSyntaxText;

namespace {

const QMugenController* findController(const QList<QMugenController*>& list, QStringView name, int* index)
{
    for (int i = 0; i < list.size(); ++i) {
        if (list.at(i)->name.compare(name, Qt::CaseInsensitive) == 0) {
            *index = i;
            return list.at(i);
        }
    }
    return nullptr;
}

} // namespace

void QMugenSyntaxProcessor::sectionHeader(int)
{
    const int headerStart = m_token.start();
    auto scanToClose = [this] {
        while (!m_token.is(MugenTkBracketClose) && !m_token.is(MugenTkEnd))
            next();
    };
    next();
    if (m_token.is(MugenTkIdentifier)) {
        const QStringView word = tokenText();
        if (equalsWord(word, "begin")) {
            next();
            if (m_token.is(MugenTkIdentifier) && tokenIs("action")) {
                next();
                if (m_token.is(MugenTkInteger)) m_state = MugenStateAction;
            }
        } else if (equalsWord(word, "state")) {
            const int wordEnd = m_token.end();
            const bool blank = wordEnd < m_length && isBlank(m_text[wordEnd]);
            scanToClose();
            if (m_token.is(MugenTkBracketClose)) {
                if (!blank) errorAtToken(tr("Space required after State"));
            } else {
                errorAtToken(tr("Wrong State"));
            }
            m_state = MugenStateState;
        } else if (equalsWord(word, "statedef")) {
            next();
            if (m_token.is(MugenTkInteger)) {
                m_state = MugenStateStateDef;
                next();
                if (!m_token.is(MugenTkComma) && !m_token.is(MugenTkBracketClose))
                    errorAtToken(tr("Wrong StateDef"));
                scanToClose();
            }
        } else if (equalsWord(word, "command")) {
            m_state = MugenStateCommand;
        } else if (equalsWord(word, "data")) {
            m_state = MugenStateData;
        } else if (equalsWord(word, "size")) {
            m_state = MugenStateSize;
        } else if (equalsWord(word, "velocity")) {
            m_state = MugenStateVelocity;
        } else if (equalsWord(word, "movement")) {
            m_state = MugenStateMovement;
        } else if (equalsWord(word, "palette")) {
            next();
            if (m_token.is(MugenTkIdentifier) && tokenIs("keymap")) m_state = MugenStatePaletteKeymap;
        } else if (equalsWord(word, "bg")) {
            scanToClose();
            m_state = MugenStateBG;
        } else if (equalsWord(word, "bgctrl")) {
            scanToClose();
            m_state = MugenStateBGCtrl;
        } else if (equalsWord(word, "bgctrldef")) {
            scanToClose();
            m_state = MugenStateBGCtrlDef;
        } else if (equalsWord(word, "camera")) {
            m_state = MugenStateCamera;
        } else if (equalsWord(word, "playerinfo")) {
            m_state = MugenStatePlayerInfo;
        } else if (equalsWord(word, "bound")) {
            m_state = MugenStateBound;
        } else if (equalsWord(word, "scaling")) {
            m_state = MugenStateScaling;
        } else if (equalsWord(word, "shadow")) {
            m_state = MugenStateShadow;
        } else if (equalsWord(word, "reflection")) {
            m_state = MugenStateReflection;
        } else if (equalsWord(word, "scene")) {
            next();
            m_state = MugenStateScene;
        } else {
            namedHeader(word.toString());
        }
    }
    if (!m_token.is(MugenTkBracketClose) && !m_token.is(MugenTkEnd)) next();
    if (!m_token.is(MugenTkBracketClose) || m_state == 0) errorAtToken(tr("Invalid group"));
    const int headerEnd = m_token.is(MugenTkEnd) ? qMax(m_lastEnd, headerStart + 1) : m_token.end();
    setSlot(headerStart, headerEnd - headerStart, QSyntaxFormats::Block);
    next();
}

// A header whose first word is none of the fixed ones: a section with a fixed name, a background of a
// stage, screen or storyboard, or a section the vocabulary names.
void QMugenSyntaxProcessor::namedHeader(const QString& word)
{
    // A two letter language prefix with a dot is dropped: "en.Quotes" is "Quotes".
    QString name = word;
    if (name.size() > 3 && name[2] == QLatin1Char('.') && name[0].isLetter() && name[1].isLetter() &&
        name[0].unicode() < 128 && name[1].unicode() < 128)
        name = name.mid(3);
    if (!name.contains(QLatin1Char('.'))) {
        static const struct
        {
            const char* word;
            int state;
        } named[] = {
            {"quotes", MugenStateQuotes},       {"info", MugenStateInfo},   {"files", MugenStateFiles},
            {"arcade", MugenStateArcade},       {"remap", MugenStateRemap}, {"defaults", MugenStateDefaults},
            {"stageinfo", MugenStateStageInfo}, {"music", MugenStateMusic}, {"bgdef", MugenStateBGDef},
            {"scenedef", MugenStateSceneDef},   {"def", MugenStateDef},
        };
        for (const auto& entry : named) {
            if (equalsWord(name, entry.word)) {
                m_state = entry.state;
                return;
            }
        }
        if (equalsWord(name, "fnt")) {
            next();
            if (m_token.is(MugenTkIdentifier) && tokenIs("v2")) m_state = MugenStateFnt;
            return;
        }
    }

    // Backgrounds are named after their definition: [TitleBGdef] with [TitleBG 0] or [Title BG 0] on a
    // screen, [BG0Def] with [BG0 Wall], [BG0CtrlDef ...] and [BG0Ctrl ...] for a storyboard's
    // "bg.name = BG0". A background's name is known only where it is defined, so any word ending in "BG"
    // and a number may name one.
    static const QRegularExpression background(QStringLiteral("^\\w*bg\\d*(def|ctrldef|ctrl)?$"),
                                               QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = background.match(name);
    if (match.hasMatch()) {
        const QString kind = match.captured(1).toLower();
        if (kind == QLatin1String("def")) {
            m_state = MugenStateBGDef;
            return;
        }
        m_state = kind.isEmpty()                  ? MugenStateBG
                  : kind == QLatin1String("ctrl") ? MugenStateBGCtrl
                                                  : MugenStateBGCtrlDef;
        while (!m_token.is(MugenTkBracketClose) && !m_token.is(MugenTkEnd))
            next();
        return;
    }

    // The words up to the bracket, one blank between each, name a screen or a text section.
    QString words = name;
    next();
    const QRegularExpressionMatch spaced = background.match(name + tokenText().toString());
    if (m_token.is(MugenTkIdentifier) && spaced.hasMatch() && spaced.captured(1).isEmpty()) {
        m_state = MugenStateBG;
        while (!m_token.is(MugenTkBracketClose) && !m_token.is(MugenTkEnd))
            next();
        return;
    }
    while (!m_token.is(MugenTkBracketClose) && !m_token.is(MugenTkEnd)) {
        words += QLatin1Char(' ');
        words += tokenText();
        next();
    }
    if (!m_vocabulary) return;
    const QList<QMugenController*>& screens = m_vocabulary->screens();
    for (int i = 0; i < screens.size(); ++i) {
        if (screens.at(i)->name.compare(words, Qt::CaseInsensitive) == 0) {
            m_state = ScreenSectionState + i;
            return;
        }
    }
    if (m_vocabulary->textSections().contains(words, Qt::CaseInsensitive)) m_state = TextSectionState;
}

void QMugenSyntaxProcessor::typeLine(int previousState)
{
    if (previousState < 0) previousState = MugenStateState;
    expect(MugenTkIdentifier, QSyntaxFormats::Keyword);
    expect(MugenTkEqual);
    if (!m_vocabulary) previousState = MugenStateNone;
    const QStringView name = tokenText();
    int index = -1;
    const QMugenController* controller = nullptr;
    int base = 0;
    switch (previousState) {
    case MugenStateState:
        controller = findController(m_vocabulary->stateControllers(), name, &index);
        if (controller) {
            if (mugenVersion() < controller->minver) {
                errorAtToken(tr("Controller invalid for the M.U.G.E.N. version of the current project"));
                m_state = MugenStateInvalidType;
                next();
                return;
            }
            if (!controller->deprecated.isEmpty() && controller->deprecatedVersion <= mugenVersion())
                warning(m_token.start(), m_token.end(),
                        tr("State controller deprecated in the M.U.G.E.N %1").arg(controller->deprecated));
            expect(MugenTkIdentifier, QSyntaxFormats::Controller);
            m_state = MugenStateController + index;
            return;
        }
        break;
    case MugenStateBG:
        controller = findController(m_vocabulary->bgControllers(), name, &index);
        base = MugenStateBGType;
        break;
    case MugenStateBGCtrl:
        controller = findController(m_vocabulary->bgControls(), name, &index);
        base = MugenStateBGCtrlType;
        break;
    case MugenStateDef:
        controller = findController(m_vocabulary->fntDefs(), name, &index);
        base = MugenStateDefType;
        break;
    default:
        break;
    }
    if (controller) {
        expect(MugenTkIdentifier, QSyntaxFormats::Controller);
        m_state = base + index;
        return;
    }
    switch (previousState) {
    case MugenStateDef:
        errorAtToken(tr("Unknown 'Def' type"));
        break;
    case MugenStateBG:
        errorAtToken(tr("Unknown 'BG' type"));
        break;
    case MugenStateBGCtrl:
        errorAtToken(tr("Unknown 'BG Ctrl' type"));
        break;
    default:
        errorAtToken(tr("Unknown 'State' type"));
        break;
    }
    // The word stays current: the rest of the line is reported as well.
    m_state = MugenStateInvalidType;
}
