#include "QMugenSyntaxProcessor.h"

#include "QMugenParamIndex.h"
#include "QMugenSyntaxProperties.h"
#include "QSyntaxFormats.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>

namespace {

// The colours when the program made no table of its own (the command line and tests).
const QSyntaxFormats& formats()
{
    if (syntaxFormats) return *syntaxFormats;
    static const QSyntaxFormats fallback;
    return fallback;
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

bool isWordChar(QChar c)
{
    return c.isLetter() || isDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('_');
}

bool equalsWord(QStringView text, const char* word)
{
    return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool isOneOf(QStringView text, std::initializer_list<const char*> words)
{
    for (const char* word : words)
        if (equalsWord(text, word)) return true;
    return false;
}

// "trigger" followed by at least one digit, in any case.
bool isNumberedTrigger(QStringView text)
{
    if (text.size() < 8 || !text.startsWith(QLatin1String("trigger"), Qt::CaseInsensitive)) return false;
    for (qsizetype i = 7; i < text.size(); ++i)
        if (!isDigit(text[i])) return false;
    return true;
}

bool isComparison(int kind)
{
    return kind == MugenTkEqual || kind == MugenTkNotEqual || kind == MugenTkLess ||
           kind == MugenTkLessEqual || kind == MugenTkGreater || kind == MugenTkGreaterEqual;
}

// Patterns of the vocabulary are few; each is compiled once.
const QRegularExpression& compiled(const QString& pattern, bool caseInsensitive)
{
    static QHash<QString, QRegularExpression> sensitive;
    static QHash<QString, QRegularExpression> insensitive;
    auto& cache = caseInsensitive ? insensitive : sensitive;
    auto it = cache.find(pattern);
    if (it == cache.end())
        it = cache.insert(pattern,
                          QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                                             caseInsensitive ? QRegularExpression::CaseInsensitiveOption
                                                             : QRegularExpression::NoPatternOption));
    return *it;
}

// The named constants of a trigger as a set, rebuilt when the vocabulary was loaded again.
const QSet<QString>* constantsOf(const QMap<QString, QStringList>& constants, const QString& lowerName)
{
    static QMap<QString, QStringList> source;
    static QHash<QString, QSet<QString>> sets;
    if (!source.isSharedWith(constants)) {
        source = constants;
        sets.clear();
        for (auto it = constants.cbegin(); it != constants.cend(); ++it)
            sets.insert(it.key(), QSet<QString>(it->cbegin(), it->cend()));
    }
    auto it = sets.constFind(lowerName);
    return it == sets.cend() ? nullptr : &*it;
}

// The first character of a block that is not blank, or a null character.
QChar firstNonBlank(const QString& text)
{
    for (QChar c : text)
        if (!isBlank(c) && c != QLatin1Char('\r') && c != QLatin1Char('\n')) return c;
    return QChar();
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

QMugenSyntaxProcessor::QMugenSyntaxProcessor(QTextDocument* document, QMugenSyntaxProperties* properties,
                                             bool checking)
    : QSyntaxProcessor(document, SyntaxMugen, properties), m_vocabulary(properties)
{
    setChecking(checking);
    m_lower.reserve(64);
}

QMugenSyntaxProcessor::~QMugenSyntaxProcessor() = default;

void QMugenSyntaxProcessor::refreshVersion()
{
    rehighlight();
}

// ---------------------------------------------------------------------------------------------------------
// The block

void QMugenSyntaxProcessor::highlightBlock(const QString& text)
{
    QSyntaxProcessor::highlightBlock(text);
    QTextEditorBlockData* data = blockData();
    setCurrentBlockState(0);
    m_state = 0;
    m_text = text.constData();
    m_length = int(text.size());
    m_pos = 0;
    m_endColumn = 0;
    m_lastEnd = 0;
    m_atEnd = false;
    m_expressionMode = false;
    m_letterRun = true;
    m_token = QMugenToken();
    m_bufferLength = 0;

    const int previous = previousBlockState();
    bool isHeader = false;
    if (m_length > 0) {
        next();
        if (m_token.is(MugenTkBracketOpen)) {
            isHeader = true;
            sectionHeader(previous);
        } else if (m_token.is(MugenTkIdentifier) && equalsWord(tokenText(), "type") &&
                   previous != MugenStateStateDef) {
            typeLine(previous);
        } else if (!m_token.is(MugenTkEnd)) {
            sectionLine(previous);
        }
        if (!m_token.is(MugenTkEnd)) {
            // Blanks between the left-over tokens don't count, so the underline may stop short of the end.
            const int start = m_token.start();
            int length = 0;
            while (!m_token.is(MugenTkEnd)) {
                length += m_token.length();
                next();
            }
            error(start, start + length, tr("Syntax error - code ends before line"));
        }
    }
    underlineMessages();
    storeFindings(data);
    if (m_state == 0) m_state = previous;
    setCurrentBlockState(m_state);
    computeFoldLevel(data, text, isHeader);
    m_text = nullptr;
}

// ---------------------------------------------------------------------------------------------------------
// Lexer

void QMugenSyntaxProcessor::appendText(QChar c)
{
    if (m_bufferLength < 512) m_buffer[m_bufferLength++] = c;
}

void QMugenSyntaxProcessor::next()
{
    if (!m_token.is(MugenTkEnd)) m_lastEnd = m_token.end();
    const bool letterRun = m_letterRun;
    m_letterRun = true;
    m_bufferLength = 0;
    if (m_atEnd) {
        m_token = QMugenToken(MugenTkEnd, m_endColumn, 0);
        return;
    }
    while (m_pos < m_length && isBlank(m_text[m_pos]))
        ++m_pos;
    const int start = m_pos;
    auto at = [this](int i) { return i < m_length ? m_text[i] : QChar(); };
    const QChar c = at(m_pos);
    auto finishEnd = [this](int column) {
        m_atEnd = true;
        m_endColumn = column;
        m_pos = m_length;
        m_token = QMugenToken(MugenTkEnd, column, 0);
    };
    if (c.isNull() || c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
        finishEnd(start);
        return;
    }
    if (c == QLatin1Char(';')) {
        int stop = start;
        while (stop < m_length && m_text[stop] != QLatin1Char('\n'))
            ++stop;
        setFormat(start, stop - start, formats()[QSyntaxFormats::Comment]);
        finishEnd(start);
        return;
    }
    auto number = [&](int from, bool isFloat) {
        int i = from;
        while (isDigit(at(i)))
            appendText(m_text[i++]);
        if (!isFloat && at(i) == QLatin1Char('.')) {
            isFloat = true;
            appendText(m_text[i++]);
            while (isDigit(at(i)))
                appendText(m_text[i++]);
        }
        m_pos = i;
        m_token = QMugenToken(isFloat ? MugenTkFloat : MugenTkInteger, start, i - start);
    };
    if (c.isLetter()) {
        int i = start;
        appendText(m_text[i++]);
        while (i < m_length && (letterRun ? isWordChar(m_text[i]) : m_text[i].isLetter()))
            appendText(m_text[i++]);
        m_pos = i;
        m_token = QMugenToken(MugenTkIdentifier, start, i - start);
        return;
    }
    if (isDigit(c)) {
        number(start, false);
        return;
    }
    if (c == QLatin1Char('.')) {
        appendText(QLatin1Char('0'));
        appendText(c);
        number(start + 1, true);
        return;
    }
    if (c == QLatin1Char('-') && !m_expressionMode) {
        const QChar d = at(start + 1);
        if (isDigit(d)) {
            appendText(c);
            number(start + 1, false);
            return;
        }
        if (d == QLatin1Char('.')) {
            appendText(c);
            appendText(QLatin1Char('0'));
            appendText(d);
            number(start + 2, true);
            return;
        }
    }
    if (c == QLatin1Char('"')) {
        int i = start + 1;
        while (true) {
            const QChar s = at(i);
            if (s.isNull() || s == QLatin1Char('\n') || s == QLatin1Char('\r')) {
                // An unterminated string ends the line without a word.
                m_bufferLength = 0;
                finishEnd(i);
                return;
            }
            if (s == QLatin1Char('"')) break;
            if (s == QLatin1Char('\\') && i + 1 < m_length) ++i;
            appendText(m_text[i++]);
        }
        m_pos = i + 1;
        m_token = QMugenToken(MugenTkString, start, m_pos - start);
        return;
    }

    int kind = MugenTkOther;
    int length = 1;
    const QChar d = at(start + 1);
    switch (c.unicode()) {
    case '+':
        kind = MugenTkPlus;
        break;
    case '-':
        kind = MugenTkMinus;
        break;
    case '/':
        kind = MugenTkSlash;
        break;
    case '%':
        kind = MugenTkPercent;
        break;
    case '*':
        kind = d == QLatin1Char('*') ? MugenTkStarStar : MugenTkStar;
        break;
    case '&':
        kind = d == QLatin1Char('&') ? MugenTkAmpAmp : MugenTkAmp;
        break;
    case '|':
        kind = d == QLatin1Char('|') ? MugenTkBarBar : MugenTkBar;
        break;
    case '^':
        kind = d == QLatin1Char('^') ? MugenTkCaretCaret : MugenTkCaret;
        break;
    case '=':
        kind = MugenTkEqual;
        break;
    case '<':
        kind = d == QLatin1Char('=') ? MugenTkLessEqual : MugenTkLess;
        break;
    case '>':
        kind = d == QLatin1Char('=') ? MugenTkGreaterEqual : MugenTkGreater;
        break;
    case '!':
        kind = d == QLatin1Char('=') ? MugenTkNotEqual : MugenTkNot;
        break;
    case ',':
        kind = MugenTkComma;
        break;
    case '(':
        kind = MugenTkParenOpen;
        addParenthesis(QSyntaxParenthesis::Opening, '(', start);
        break;
    case ')':
        kind = MugenTkParenClose;
        addParenthesis(QSyntaxParenthesis::Closing, ')', start);
        break;
    case '{':
        kind = MugenTkBraceOpen;
        break;
    case '}':
        kind = MugenTkBraceClose;
        break;
    case '[':
        kind = MugenTkBracketOpen;
        addParenthesis(QSyntaxParenthesis::Opening, '[', start);
        break;
    case ']':
        kind = MugenTkBracketClose;
        addParenthesis(QSyntaxParenthesis::Closing, ']', start);
        break;
    case ':':
        kind = MugenTkColon;
        break;
    case '~':
        kind = MugenTkTilde;
        break;
    case '$':
        kind = MugenTkDollar;
        break;
    default:
        break;
    }
    if (kind == MugenTkStarStar || kind == MugenTkAmpAmp || kind == MugenTkBarBar ||
        kind == MugenTkCaretCaret || kind == MugenTkLessEqual || kind == MugenTkGreaterEqual ||
        kind == MugenTkNotEqual)
        length = 2;
    for (int i = 0; i < length; ++i)
        appendText(m_text[start + i]);
    m_pos = start + length;
    m_token = QMugenToken(kind, start, length);
}

const QString& QMugenSyntaxProcessor::lowerTokenText()
{
    m_lower.resize(m_bufferLength);
    QChar* out = m_lower.data();
    for (int i = 0; i < m_bufferLength; ++i)
        out[i] = m_buffer[i].toLower();
    return m_lower;
}

bool QMugenSyntaxProcessor::tokenIs(const char* word) const
{
    return equalsWord(tokenText(), word);
}

void QMugenSyntaxProcessor::skipToEnd()
{
    while (!m_token.is(MugenTkEnd))
        next();
}

// ---------------------------------------------------------------------------------------------------------
// Reporting. Underlines are drawn when the block is done, so that messages dropped on the way leave none.

void QMugenSyntaxProcessor::error(int start, int end, const QString& text)
{
    if (!isChecking()) return;
    m_messages.append(QSyntaxMessage{SyntaxError, start, end, text});
}

void QMugenSyntaxProcessor::errorAtToken(const QString& text)
{
    error(m_token.start(), m_token.end(), text);
}

void QMugenSyntaxProcessor::warning(int start, int end, const QString& text)
{
    m_messages.append(QSyntaxMessage{SyntaxWarning, start, end, text});
}

void QMugenSyntaxProcessor::notice(int start, int end, const QString& text)
{
    m_messages.append(QSyntaxMessage{SyntaxNotice, start, end, text});
}

bool QMugenSyntaxProcessor::expect(int kind, int slot)
{
    if (m_token.is(kind)) {
        if (slot >= 0) setSlot(m_token.start(), m_token.length(), slot);
        next();
        return true;
    }
    errorAtToken(tr("Unexpected token '%1'").arg(tokenText()));
    if (!m_token.is(MugenTkEnd)) next();
    return false;
}

void QMugenSyntaxProcessor::setSlot(int start, int length, int slot)
{
    if (length > 0) setFormat(start, length, formats()[slot]);
}

void QMugenSyntaxProcessor::underlineMessages()
{
    for (const QSyntaxMessage& message : std::as_const(m_messages)) {
        const QColor color = messageColor(message.kind);
        const int end = qMin(message.end, m_length);
        int at = message.start;
        while (at < end) {
            QTextCharFormat run = format(at);
            int stop = at + 1;
            while (stop < end && format(stop) == run)
                ++stop;
            run.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline);
            run.setUnderlineColor(color);
            setFormat(at, stop - at, run);
            at = stop;
        }
    }
}

// ---------------------------------------------------------------------------------------------------------
// Section headers and type lines

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

// ---------------------------------------------------------------------------------------------------------
// Lines of the sections

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

// ---------------------------------------------------------------------------------------------------------
// Parameters

const QMugenParamInfo* QMugenSyntaxProcessor::matchName(const QMap<QString, QMugenParamInfo>& map,
                                                        const QString& lowerName, int* spanEnd)
{
    const QMugenParamInfo* info = QMugenParamIndex::of(map).find(lowerName, m_token.is(MugenTkParenOpen));
    if (info && info->format == MugenFormatIdExp) {
        next();
        expression();
        *spanEnd = m_token.end();
        expect(MugenTkParenClose);
    }
    return info;
}

void QMugenSyntaxProcessor::parameter(const QMap<QString, QMugenParamInfo>& group, const QString& label)
{
    const int start = m_token.start();
    int end = m_token.end();
    const QString name = tokenText().toString();
    const QString lowerName = name.toLower();
    expect(MugenTkIdentifier);
    const QMugenParamInfo* info = matchName(group, lowerName, &end);
    if (!info || !m_messages.isEmpty()) {
        error(start, end, tr("Unknown parameter '%1' for the '%2' controller").arg(name, label));
        skipToEnd();
        return;
    }
    if (mugenVersion() < info->minver) {
        error(start, end, tr("Parameter invalid for the M.U.G.E.N. version of the current project"));
        return;
    }
    setSlot(start, end - start, QSyntaxFormats::Keyword);
    if (!info->deprecated.isEmpty() && info->deprecatedVersion <= mugenVersion())
        warning(start, end, tr("Parameter deprecated in the M.U.G.E.N %1").arg(info->deprecated));
    readValue(*info);
}

bool QMugenSyntaxProcessor::readInt()
{
    return expect(MugenTkInteger, QSyntaxFormats::Number);
}

bool QMugenSyntaxProcessor::readNumber()
{
    if (m_token.is(MugenTkFloat)) return expect(MugenTkFloat, QSyntaxFormats::Number);
    return readInt();
}

// An expression where one is required among others: false when the line ended before it.
bool QMugenSyntaxProcessor::readExpression()
{
    if (m_token.is(MugenTkEnd)) return false;
    expression();
    return true;
}

void QMugenSyntaxProcessor::shortfall(int count)
{
    m_messages.resize(m_messageMark);
    const int end = m_token.is(MugenTkEnd) ? m_token.start() : m_token.end();
    notice(m_valueStart, qMax(end, m_valueStart), tr("This parameter requires %n value(s)", nullptr, count));
    skipToEnd();
}

bool QMugenSyntaxProcessor::matchesValue(const QString& pattern, const QString& value) const
{
    return compiled(pattern, false).match(value).hasMatch();
}

void QMugenSyntaxProcessor::identifierValue(const QMugenParamInfo& info)
{
    if (matchesValue(info.pattern, lowerTokenText()))
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
    else
        errorAtToken(tr("Unknown parameter value '%1'").arg(tokenText()));
    next();
}

void QMugenSyntaxProcessor::readValue(const QMugenParamInfo& info)
{
    const int type = info.type;
    if (type == MugenStrExp || type == MugenStrExp2 || type == MugenStrExp2Nil) m_letterRun = false;
    if (!expect(MugenTkEqual)) {
        m_letterRun = true;
        skipToEnd();
        return;
    }
    m_messageMark = int(m_messages.size());
    m_valueStart = m_token.start();
    auto comma = [this] { return expect(MugenTkComma); };
    auto optionalValue = [&] {
        if (m_token.is(MugenTkIdentifier) && matchesValue(info.pattern, lowerTokenText())) {
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Value);
            next();
        }
    };
    auto isMinusOne = [this] { return m_token.is(MugenTkInteger) && tokenText() == QLatin1String("-1"); };
    switch (type) {
    case MugenInt:
        readInt();
        break;
    case MugenInt2:
        if (!(readInt() && comma() && readInt())) shortfall(2);
        break;
    case MugenInt3:
        if (!(readInt() && comma() && readInt() && comma() && readInt())) shortfall(3);
        break;
    case MugenIntN: {
        readInt();
        const int max = info.maxValues();
        for (int i = 0; i < max && m_token.is(MugenTkComma); ++i) {
            next();
            if (!m_token.is(MugenTkInteger)) break;
            readInt();
        }
        break;
    }
    case MugenIntFloat3:
        if (!(readInt() && comma() && readNumber() && comma() && readNumber() && comma() && readNumber()))
            shortfall(4);
        break;
    case MugenIntFloat3Opt:
    case MugenFloat2Opt: {
        if (type == MugenIntFloat3Opt)
            readInt();
        else
            readNumber();
        const int more = type == MugenIntFloat3Opt ? 3 : 1;
        for (int i = 0; i < more && m_token.is(MugenTkComma); ++i) {
            next();
            if (!m_token.is(MugenTkInteger) && !m_token.is(MugenTkFloat)) break;
            readNumber();
        }
        break;
    }
    case MugenFloat:
        readNumber();
        break;
    case MugenFloat2:
        if (!(readNumber() && comma() && readNumber())) shortfall(2);
        break;
    case MugenFloat3:
        if (!(readNumber() && comma() && readNumber() && comma() && readNumber())) shortfall(3);
        break;
    case MugenExp:
        expression();
        break;
    case MugenExp2:
        if (!(readExpression() && comma() && readExpression())) shortfall(2);
        break;
    case MugenExp2Value:
        if (!(readExpression() && comma() && readExpression()) || m_token.is(MugenTkEnd)) {
            shortfall(3);
            break;
        }
        next();
        if (!m_token.is(MugenTkIdentifier)) {
            shortfall(3);
            break;
        }
        identifierValue(info);
        break;
    case MugenExp3:
        if (!(readExpression() && comma() && readExpression() && comma() && readExpression())) shortfall(3);
        break;
    case MugenExp4:
        if (!(readExpression() && comma() && readExpression() && comma() && readExpression() && comma() &&
              readExpression()))
            shortfall(4);
        break;
    case MugenExpN:
        expression();
        while (m_token.is(MugenTkComma)) {
            next();
            if (m_token.is(MugenTkEnd)) break;
            expression();
        }
        break;
    case MugenExp2Opt:
        expression();
        if (m_token.is(MugenTkComma)) {
            next();
            if (!m_token.is(MugenTkEnd)) expression();
        }
        break;
    case MugenExp3Nil:
        if (isMinusOne()) {
            readInt();
            if (m_token.is(MugenTkEnd)) break;
            if (!(comma() && readExpression() && comma() && readExpression())) shortfall(3);
            break;
        }
        if (!(readExpression() && comma() && readExpression() && comma() && readExpression())) shortfall(3);
        break;
    case MugenString:
        expect(MugenTkString, QSyntaxFormats::String);
        break;
    case MugenStrExp:
        optionalValue();
        expression();
        break;
    case MugenStrExp2Nil:
        if (isMinusOne()) {
            readInt();
            break;
        }
        Q_FALLTHROUGH();
    case MugenStrExp2:
        optionalValue();
        if (!(readExpression() && comma() && readExpression())) shortfall(2);
        break;
    case MugenExpStr:
        expression();
        if (m_token.is(MugenTkComma)) next();
        if (m_token.is(MugenTkIdentifier)) identifierValue(info);
        break;
    case MugenExpStrExp2:
        break;
    case MugenValue: {
        const int start = m_token.start();
        QString value;
        while (!m_token.is(MugenTkEnd)) {
            value += lowerTokenText();
            next();
        }
        const int end = qMax(start, m_lastEnd);
        if (matchesValue(info.pattern, value))
            setSlot(start, end - start, QSyntaxFormats::Value);
        else
            error(start, end, tr("Unknown parameter value '%1'").arg(value));
        break;
    }
    case MugenUnchecked:
        skipToEnd();
        break;
    default:
        // Trigger kinds read nothing as a parameter.
        break;
    }
}

// A key list of a command: elements divided by commas, each coloured as a whole.
void QMugenSyntaxProcessor::commandKeys()
{
    while (true) {
        const int start = m_token.start();
        if (!commandElement()) {
            while (!m_token.is(MugenTkComma) && !m_token.is(MugenTkEnd))
                next();
            error(start, qMax(start, m_lastEnd), tr("Unknown command key"));
            return;
        }
        setSlot(start, m_lastEnd - start, QSyntaxFormats::Value);
        if (!m_token.is(MugenTkComma)) return;
        next();
    }
}

bool QMugenSyntaxProcessor::commandElement()
{
    bool release = false, hold = false, direction = false, tilde = false;
    while (true) {
        bool* seen = nullptr;
        if (m_token.is(MugenTkSlash))
            seen = &hold;
        else if (m_token.is(MugenTkGreater))
            seen = &release;
        else if (m_token.is(MugenTkTilde))
            seen = &tilde;
        else if (m_token.is(MugenTkDollar))
            seen = &direction;
        else
            break;
        if (*seen) return false;
        *seen = true;
        const bool charge = m_token.is(MugenTkTilde);
        next();
        if (charge && m_token.is(MugenTkInteger)) next();
    }
    if (!m_token.is(MugenTkIdentifier)) return false;
    if (direction) {
        static const char* const directions[] = {"U", "D", "B", "F", "UB", "UF", "DB", "DF"};
        bool known = false;
        for (const char* key : directions)
            known = known || tokenText() == QLatin1String(key);
        if (!known) return false;
    }
    next();
    while (m_token.is(MugenTkPlus)) {
        next();
        if (!m_token.is(MugenTkIdentifier)) return false;
        next();
    }
    return m_token.is(MugenTkComma) || m_token.is(MugenTkEnd);
}

// ---------------------------------------------------------------------------------------------------------
// Expressions: recursive descent that colours and reports, and computes nothing.

void QMugenSyntaxProcessor::expression()
{
    m_expressionMode = true;
    logical();
    m_expressionMode = false;
}

void QMugenSyntaxProcessor::logical()
{
    bitwise();
    while (m_token.is(MugenTkBarBar) || m_token.is(MugenTkAmpAmp) || m_token.is(MugenTkCaretCaret)) {
        next();
        bitwise();
    }
}

void QMugenSyntaxProcessor::bitwise()
{
    auto operand = [this] {
        equality();
        while (m_token.is(MugenTkColon)) {
            next();
            expect(MugenTkEqual);
            equality();
        }
    };
    operand();
    while (m_token.is(MugenTkBar) || m_token.is(MugenTkAmp) || m_token.is(MugenTkCaret)) {
        next();
        operand();
    }
}

void QMugenSyntaxProcessor::equality()
{
    relation();
    while (m_token.is(MugenTkEqual) || m_token.is(MugenTkNotEqual)) {
        next();
        if (m_token.is(MugenTkBracketOpen)) {
            next();
            relation();
            expect(MugenTkComma);
            relation();
            if (m_token.is(MugenTkBracketClose) || m_token.is(MugenTkParenClose))
                next();
            else
                expect(MugenTkBracketClose);
        } else {
            relation();
        }
    }
}

void QMugenSyntaxProcessor::relation()
{
    sum();
    while (m_token.is(MugenTkLess) || m_token.is(MugenTkLessEqual) || m_token.is(MugenTkGreater) ||
           m_token.is(MugenTkGreaterEqual)) {
        next();
        sum();
    }
}

void QMugenSyntaxProcessor::sum()
{
    product();
    while (m_token.is(MugenTkPlus) || m_token.is(MugenTkMinus)) {
        next();
        product();
    }
}

void QMugenSyntaxProcessor::product()
{
    auto operand = [this] {
        unary();
        while (m_token.is(MugenTkStarStar)) {
            next();
            unary();
        }
    };
    operand();
    while (m_token.is(MugenTkStar) || m_token.is(MugenTkSlash) || m_token.is(MugenTkPercent)) {
        next();
        operand();
    }
}

void QMugenSyntaxProcessor::unary()
{
    switch (m_token.kind()) {
    case MugenTkInteger:
    case MugenTkFloat:
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Number);
        next();
        return;
    case MugenTkString:
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::String);
        next();
        return;
    case MugenTkMinus:
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Number);
        next();
        if (m_token.is(MugenTkMinus)) return;
        unary();
        return;
    case MugenTkNot:
        next();
        logical();
        return;
    case MugenTkParenOpen:
        next();
        logical();
        if (m_token.is(MugenTkComma)) {
            // The open-ended interval forms (a,b] and (a,b).
            next();
            logical();
            if (m_token.is(MugenTkBracketClose) || m_token.is(MugenTkParenClose))
                next();
            else
                expect(MugenTkBracketClose);
        } else {
            expect(MugenTkParenClose);
        }
        return;
    case MugenTkIdentifier:
        if (isOneOf(tokenText(), {"root", "parent", "partner"})) {
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Trigger);
            next();
            expect(MugenTkComma);
            logical();
            return;
        }
        if (isOneOf(tokenText(), {"enemy", "enemynear", "playerid", "helper", "target"})) {
            setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Trigger);
            next();
            if (m_token.is(MugenTkParenOpen)) {
                next();
                logical();
                expect(MugenTkParenClose);
            }
            expect(MugenTkComma);
            logical();
            return;
        }
        break;
    default:
        break;
    }
    trigger();
}

void QMugenSyntaxProcessor::trigger()
{
    const int start = m_token.start();
    int end = m_token.end();
    const bool isIdentifier = m_token.is(MugenTkIdentifier);
    const QString name = isIdentifier ? QString() : tokenText().toString();
    if (isIdentifier) lowerTokenText();
    expect(MugenTkIdentifier);
    const QMugenParamInfo* info = nullptr;
    if (isIdentifier && m_vocabulary) info = matchName(m_vocabulary->triggers(), m_lower, &end);
    if (!info) {
        // Identifiers are read from the block itself, so the name costs nothing until it is reported.
        error(start, end,
              tr("Unknown trigger '%1'")
                  .arg(isIdentifier ? QStringView(m_text + start, end - start) : QStringView(name)));
        return;
    }
    if (mugenVersion() < info->minver) {
        error(start, end, tr("Trigger invalid for the M.U.G.E.N. version of the current project"));
    } else {
        setSlot(start, end - start, QSyntaxFormats::Trigger);
        if (!info->deprecated.isEmpty() && info->deprecatedVersion <= mugenVersion())
            warning(start, end, tr("Trigger deprecated in the M.U.G.E.N %1").arg(info->deprecated));
    }
    auto bracketed = [this](int count) {
        expect(MugenTkParenOpen);
        logical();
        for (int i = 1; i < count; ++i) {
            expect(MugenTkComma);
            logical();
        }
        expect(MugenTkParenClose);
    };
    auto equalOrNot = [this] {
        if (m_token.is(MugenTkEqual) || m_token.is(MugenTkNotEqual))
            next();
        else
            expect(MugenTkEqual);
    };
    switch (info->type) {
    case MugenExp:
        bracketed(1);
        break;
    case MugenExp2:
        bracketed(2);
        break;
    case MugenExp3:
        bracketed(3);
        break;
    case MugenValue:
        triggerValue(*info);
        break;
    case MugenNilExp:
    case MugenExpOpt:
        if (m_token.is(MugenTkParenOpen)) bracketed(1);
        break;
    case MugenOpInt:
        expect(MugenTkEqual);
        signedInt();
        if (m_token.is(MugenTkComma)) {
            next();
            comparison();
            signedInt();
        }
        break;
    case MugenOpInt2:
        comparison();
        signedInt();
        expect(MugenTkComma);
        signedInt();
        break;
    case MugenOp2Int2:
        comparison();
        signedInt();
        if (m_token.is(MugenTkComma)) {
            next();
            if (isComparison(m_token.kind())) next();
            signedInt();
        }
        break;
    case MugenOpStr:
        equalOrNot();
        expect(MugenTkString, QSyntaxFormats::String);
        break;
    case MugenValueEq:
        equalOrNot();
        triggerValue(*info);
        break;
    case MugenConst: {
        const QString lowerName =
            QStringView(m_text + start, qMin(end, m_length) - start).toString().toLower();
        triggerConstant(lowerName);
        break;
    }
    default:
        break;
    }
}

void QMugenSyntaxProcessor::comparison()
{
    if (isComparison(m_token.kind()))
        next();
    else
        expect(MugenTkLess);
}

void QMugenSyntaxProcessor::signedInt()
{
    if (m_token.is(MugenTkMinus)) {
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Number);
        next();
    }
    expect(MugenTkInteger, QSyntaxFormats::Number);
}

// The value of a trigger: a word, or for a list-like pattern several words joined by commas as long as
// the word behind a comma isn't a trigger of its own.
void QMugenSyntaxProcessor::triggerValue(const QMugenParamInfo& info)
{
    if (!m_token.is(MugenTkIdentifier)) {
        errorAtToken(tr("Unknown value"));
        return;
    }
    const int start = m_token.start();
    int end = m_token.end();
    QString value = lowerTokenText();
    next();
    if (info.pattern.contains(QLatin1Char(','))) {
        while (m_token.is(MugenTkComma)) {
            int from = m_pos;
            while (from < m_length && isBlank(m_text[from]))
                ++from;
            int to = from;
            if (to < m_length && m_text[to].isLetter()) {
                ++to;
                while (to < m_length && isWordChar(m_text[to]))
                    ++to;
            }
            if (to == from) break;
            const QString word = QStringView(m_text + from, to - from).toString().toLower();
            if (m_vocabulary && QMugenParamIndex::of(m_vocabulary->triggers()).contains(word)) break;
            value += QLatin1Char(',') + word;
            end = to;
            next();
            next();
        }
    }
    if (matchesValue(info.pattern, value))
        setSlot(start, end - start, QSyntaxFormats::Value);
    else
        error(start, end, tr("Unknown value"));
}

void QMugenSyntaxProcessor::triggerConstant(const QString& lowerName)
{
    const QSet<QString>* constants = constantsOf(m_vocabulary->constants(), lowerName);
    if (!constants) return;
    expect(MugenTkParenOpen);
    if (!m_token.is(MugenTkIdentifier)) {
        expect(MugenTkIdentifier);
        expect(MugenTkParenClose);
        return;
    }
    if (constants->contains(lowerTokenText()))
        setSlot(m_token.start(), m_token.length(), QSyntaxFormats::Constant);
    else
        errorAtToken(tr("Unknown constant '%1'").arg(tokenText()));
    next();
    expect(MugenTkParenClose);
}

// ---------------------------------------------------------------------------------------------------------
// Folding

void QMugenSyntaxProcessor::computeFoldLevel(QTextEditorBlockData* data, const QString& text, bool isHeader)
{
    const QTextBlock block = currentBlock();
    // A blank, comment or header line from which the next header follows over blank and comment lines.
    bool preSection = false;
    bool nextIsState = false;
    const QChar first = firstNonBlank(text);
    if (first.isNull() || first == QLatin1Char('[') || first == QLatin1Char(';')) {
        for (QTextBlock look = first == QLatin1Char('[') ? block : block.next(); look.isValid();
             look = look.next()) {
            const QString lookText = look == block ? text : look.text();
            const QChar c = firstNonBlank(lookText);
            if (c.isNull() || c == QLatin1Char(';')) continue;
            if (c == QLatin1Char('[')) {
                preSection = true;
                int i = int(lookText.indexOf(QLatin1Char('['))) + 1;
                const int wordStart = i;
                while (i < lookText.size() && lookText.at(i).isLetter())
                    ++i;
                nextIsState = equalsWord(QStringView(lookText).mid(wordStart, i - wordStart), "state");
            }
            break;
        }
    }
    data->reserved = 0;
    data->header = isHeader;
    data->preSection = preSection;

    const QTextBlock previousBlock = block.previous();
    const auto* previous = previousBlock.isValid()
                               ? static_cast<const QTextEditorBlockData*>(previousBlock.userData())
                               : nullptr;
    if (!previousBlock.isValid()) {
        data->foldLevel = 0;
        return;
    }
    const int level = previous ? previous->foldLevel : 0;
    const bool previousPre = previous && previous->preSection;
    if (isHeader && !previousPre) {
        data->foldLevel = level - 1;
    } else if (previous && previous->header) {
        data->foldLevel = level + 1;
    } else if (!preSection || previousPre) {
        data->foldLevel = level;
    } else {
        const bool inState =
            m_state == MugenStateState || (m_state >= MugenStateController && m_state < MugenStateBGType);
        if (!inState && nextIsState)
            data->foldLevel = level;
        else if (inState && !nextIsState)
            data->foldLevel = level - 2;
        else
            data->foldLevel = level - 1;
    }
}
