#include "QMugenSyntaxProcessor.h"

#include "QMugenParamIndex.h"
#include "QMugenParamInfo.h"
#include "QSyntaxFormats.h"

#include <QHash>
#include <QRegularExpression>

// Parameters and their values. The vocabulary gives each parameter a type, and the type alone decides
// how many values are read and how, so one reader serves every section.

namespace {

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

} // namespace

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
