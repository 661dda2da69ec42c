#include "QMugenSyntaxProcessor.h"

#include "QMugenParamIndex.h"
#include "QMugenSyntaxProperties.h"
#include "QMugenSyntaxText.h"
#include "QSyntaxFormats.h"

#include <QHash>
#include <QSet>

// Expressions: recursive descent that colours and reports, and computes nothing.

using namespace QMugenSyntaxText;

namespace {

// Every level of brackets, signs and negations runs through all levels of the grammar once more. Real
// triggers nest a dozen levels at most; the stack of a thread holds some thousands.
constexpr int maxNesting = 256;

struct Descent
{
    int& depth;
    explicit Descent(int& nesting) : depth(++nesting) {}
    ~Descent() { --depth; }
    Descent(const Descent&) = delete;
    Descent& operator=(const Descent&) = delete;
};

bool isComparison(int kind)
{
    return kind == MugenTkEqual || kind == MugenTkNotEqual || kind == MugenTkLess ||
           kind == MugenTkLessEqual || kind == MugenTkGreater || kind == MugenTkGreaterEqual;
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

} // namespace

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
    if (m_nesting >= maxNesting) {
        abandonNesting();
        return;
    }
    const Descent descent(m_nesting);
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
    const QStringView blockName(m_text + m_tokenPos, m_token.length());
    const bool isIdentifier = m_token.is(MugenTkIdentifier);
    const QString name = isIdentifier ? QString() : tokenText().toString();
    if (isIdentifier) lowerTokenText();
    expect(MugenTkIdentifier);
    const QMugenParamInfo* info = nullptr;
    if (isIdentifier && m_vocabulary) info = matchName(m_vocabulary->triggers(), m_lower, &end);
    if (!info) {
        // Identifiers are read from the block itself, so the name costs nothing until it is reported.
        error(start, end, tr("Unknown trigger '%1'").arg(isIdentifier ? blockName : QStringView(name)));
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
        const QString lowerName = blockName.toString().toLower();
        triggerConstant(lowerName);
        break;
    }
    default:
        break;
    }
}

// The rest of the line is not read as an expression: every level that unwinds would only add a finding
// about the closing it misses.
void QMugenSyntaxProcessor::abandonNesting()
{
    if (!m_tooDeep) {
        m_tooDeep = true;
        m_tooDeepStart = m_token.start();
        m_tooDeepEnd = m_token.end();
    }
    skipToEnd();
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
