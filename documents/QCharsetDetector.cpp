#include "QCharsetDetector.h"

#include "QCodecList.h"
#include "QTextEncoding.h"

#include <QTextCodec>

namespace {

// What the wanted codec and uchardet's guess add to a multi-byte codec's common share, and what the sum
// must reach: a codec that is neither needs half of its text common. Text of a page of one byte read as
// one of these pages is hardly ever common. uchardet outweighs the wish a little: by frequencies it
// tells Korean from Chinese, whose common rows share their bytes.
constexpr double wantedWeight = 0.25;
constexpr double guessWeight = 0.3;
constexpr double enough = 0.5;
// What a page loses that does not write all bytes back the same: some characters have two codes, or
// some lines are in another page.
constexpr double inexactWeight = 0.25;

enum class Script
{
    None,
    Chinese, // GBK, GB18030
    TraditionalChinese,
    Japanese, // Shift-JIS
    JapaneseEuc,
    Korean
};

Script scriptOf(const QTextCodec* codec)
{
    if (!codec) return Script::None;
    const QByteArray name = codec->name();
    if (name == "GBK" || name == "GB18030") return Script::Chinese;
    if (name == "Big5") return Script::TraditionalChinese;
    if (name == "Shift_JIS") return Script::Japanese;
    if (name == "EUC-JP") return Script::JapaneseEuc;
    if (name == "windows-949" || name == "EUC-KR") return Script::Korean;
    return Script::None;
}

bool isUnicode(const QTextCodec* codec)
{
    const int mib = codec->mibEnum();
    return mib == 106 || (mib >= 1013 && mib <= 1019);
}

bool hasHighBytes(const QByteArray& bytes)
{
    return std::any_of(bytes.cbegin(), bytes.cend(), [](char c) { return uchar(c) >= 0x80; });
}

bool inRange(uchar c, uchar low, uchar high)
{
    return c >= low && c <= high;
}

// The weight of one character of a two-byte page by its lead and trail byte: 1 for the rows of common
// characters, kana and punctuation, 0 for the rest. Advances i past the character.
double weighPair(Script script, const QByteArray& bytes, qsizetype& i)
{
    const uchar lead = uchar(bytes.at(i));
    const uchar trail = i + 1 < bytes.size() ? uchar(bytes.at(i + 1)) : 0;
    const bool highTrail = inRange(trail, 0xA1, 0xFE);
    switch (script) {
    case Script::Chinese:
        // A four-byte sequence of GB18030 holds what GBK lacks: rare by definition.
        if (inRange(trail, 0x30, 0x39)) {
            i += 4;
            return 0;
        }
        i += 2;
        // GB2312's punctuation, kana and letters, and its first level of 3755 common characters.
        return highTrail && (inRange(lead, 0xA1, 0xA9) || inRange(lead, 0xB0, 0xD7)) ? 1 : 0;
    case Script::TraditionalChinese:
        i += 2;
        // Big5's punctuation and its 5401 frequently used characters.
        return inRange(lead, 0xA1, 0xC6) && (inRange(trail, 0x40, 0x7E) || highTrail) ? 1 : 0;
    case Script::Japanese:
        // Half-width katakana stand alone; old Japanese text uses them, but text of other pages read
        // as Shift-JIS is full of them.
        if (inRange(lead, 0xA1, 0xDF)) {
            i += 1;
            return 0.4;
        }
        if (lead == 0x80 || lead == 0xA0 || lead >= 0xFD) {
            i += 1;
            return 0;
        }
        i += 2;
        // Punctuation, letters and kana, and the first level of kanji.
        return inRange(lead, 0x81, 0x84) || inRange(lead, 0x88, 0x98) ? 1 : 0;
    case Script::JapaneseEuc:
        if (lead == 0x8E) {
            i += 2;
            return 0.5;
        }
        if (lead == 0x8F) {
            i += 3;
            return 0;
        }
        i += 2;
        return highTrail && (inRange(lead, 0xA1, 0xA5) || inRange(lead, 0xB0, 0xCF)) ? 1 : 0;
    case Script::Korean:
        i += 2;
        if (!highTrail) return 0;
        // Punctuation and letters, and the 2350 hangul syllables. Hanja are rarer in Korean text than
        // their rows are in Chinese text read as Korean.
        if (inRange(lead, 0xA1, 0xAC) || inRange(lead, 0xB0, 0xC8)) return 1;
        return inRange(lead, 0xCA, 0xFD) ? 0.25 : 0;
    case Script::None:
        break;
    }
    i += 1;
    return 0;
}

// For a codec that does not read the bytes exactly: the common share of the lines it reads cleanly,
// scaled by their part of all lines with high bytes. A file of one page with some lines in another
// (authors of two countries) is thus still read in the page of most of its text.
double cleanLinesShare(const QByteArray& bytes, QTextCodec* codec)
{
    int lines = 0;
    int clean = 0;
    QByteArray cleanBytes;
    for (const QByteArray& line : bytes.split('\n')) {
        if (!hasHighBytes(line)) continue;
        ++lines;
        if (!QCharsetDetector::readsCleanly(line, codec)) continue;
        ++clean;
        cleanBytes += line;
        cleanBytes += '\n';
    }
    return lines ? QCharsetDetector::commonShare(cleanBytes, codec) * clean / lines : 0;
}

// The codec that reads the most lines of the bytes exactly, for bytes that no candidate reads whole:
// content edited by several authors in several pages. The first of equals wins.
QTextCodec* mostLinesExact(const QByteArray& bytes, const QList<QTextCodec*>& candidates)
{
    const QList<QByteArray> lines = bytes.split('\n');
    QTextCodec* best = candidates.first();
    qsizetype bestCount = -1;
    for (QTextCodec* codec : candidates) {
        if (isUnicode(codec) && codec->mibEnum() != 106) continue;
        qsizetype count = 0;
        for (const QByteArray& line : lines)
            if (hasHighBytes(line) && QCharsetDetector::readsExactly(line, codec)) ++count;
        if (count > bestCount) {
            best = codec;
            bestCount = count;
        }
    }
    return best;
}

} // namespace

bool QCharsetDetector::readsExactly(const QByteArray& bytes, QTextCodec* codec, QString* text)
{
    if (!codec) return false;
    QString read = QTextEncoding::toUnicode(codec, bytes);
    if (codec->fromUnicode(read) != bytes) return false;
    if (text) *text = read;
    return true;
}

double QCharsetDetector::commonShare(const QByteArray& bytes, const QTextCodec* codec)
{
    const Script script = scriptOf(codec);
    if (script == Script::None) return 0;
    double common = 0;
    int characters = 0;
    for (qsizetype i = 0; i < bytes.size();) {
        const char c = bytes.at(i);
        if (uchar(c) < 0x80) {
            ++i;
            continue;
        }
        ++characters;
        // A run of one high byte is a rule drawn in a page of one byte ("¯¯¯¯"); read in pairs it looks
        // like one common character said again and again.
        if (i + 2 < bytes.size() && bytes.at(i + 1) == c && bytes.at(i + 2) == c) {
            while (i < bytes.size() && bytes.at(i) == c)
                ++i;
            continue;
        }
        common += weighPair(script, bytes, i);
    }
    return characters ? common / characters : 0;
}

bool QCharsetDetector::readsCleanly(const QByteArray& bytes, QTextCodec* codec)
{
    if (!codec) return false;
    const QString text = QTextEncoding::toUnicode(codec, bytes);
    // Substitutes stand for bytes the codec could not read: U+FFFD, and U+001A from pages of one byte.
    if (text.contains(QChar::ReplacementCharacter)) return false;
    if (text.count(QChar(0x1A)) != bytes.count('\x1A')) return false;
    return QTextEncoding::toUnicode(codec, codec->fromUnicode(text)) == text;
}

QCharsetDetector::Choice QCharsetDetector::choose(const QByteArray& bytes, int wantedIndex)
{
    int markLength = 0;
    if (QTextCodec* marked = QTextEncoding::markedCodec(bytes, &markLength))
        return {QTextEncoding::indexOf(marked), true, readsExactly(bytes.mid(markLength), marked)};

    QTextCodec* wanted = QTextEncoding::codec(wantedIndex);
    QTextCodec* utf8 = QTextCodec::codecForMib(106);
    // The wanted codec keeps the table entry it was asked by: an alias names the same codec.
    auto choice = [&](QTextCodec* codec, bool exact = true) {
        const int index = codec == wanted && wantedIndex > 0 ? wantedIndex : QTextEncoding::indexOf(codec);
        return Choice{index, false, exact};
    };
    // ASCII fits every page this content is written in, so it tells nothing: the file keeps the codec it
    // was asked to have, and later non-ASCII text can still be saved in it.
    if (!hasHighBytes(bytes)) return choice(readsExactly(bytes, wanted) ? wanted : utf8);

    const QByteArray guessName = QTextEncoding::detect(bytes);
    QTextCodec* guess =
        guessName.isEmpty() || guessName == "ASCII" ? nullptr : QTextCodec::codecForName(guessName);
    QList<QTextCodec*> candidates{wanted};
    for (const QByteArray& name : detectionCodecs())
        candidates << QTextCodec::codecForName(name);
    const QList<QTextCodec*> listed = candidates;
    candidates << guess;
    candidates.removeAll(nullptr);
    // Aliases give the same codec; the first place counts.
    for (qsizetype i = candidates.size() - 1; i > 0; --i)
        if (candidates.indexOf(candidates.at(i)) < i) candidates.removeAt(i);
    QList<QTextCodec*> exact;
    for (QTextCodec* codec : std::as_const(candidates))
        if (readsExactly(bytes, codec)) exact << codec;

    if (exact.contains(utf8)) return choice(utf8);

    // A multi-byte page also counts when it reads every byte but writes some characters in another of
    // their codes (Windows' Shift-JIS has the NEC and IBM rows twice), or reads most lines cleanly: lines
    // keep their bytes unless edited, and it beats a page of one byte that reads anything.
    auto vouched = [guess](const QTextCodec* codec) {
        // uchardet names GB18030 for all simplified Chinese text, which GBK reads alike.
        return guess &&
               (guess == codec || (scriptOf(guess) == Script::Chinese && scriptOf(codec) == Script::Chinese));
    };
    QTextCodec* best = nullptr;
    bool bestExact = false;
    double bestScore = enough;
    for (QTextCodec* codec : std::as_const(candidates)) {
        if (scriptOf(codec) == Script::None) continue;
        const bool isExact = exact.contains(codec);
        const double share = isExact ? commonShare(bytes, codec) : cleanLinesShare(bytes, codec);
        if (share <= 0) continue;
        const double score = share + (codec == wanted ? wantedWeight : 0) +
                             (vouched(codec) ? guessWeight : 0) - (isExact ? 0 : inexactWeight);
        if (score > bestScore || (!best && score >= enough)) {
            best = codec;
            bestExact = isExact;
            bestScore = score;
        }
    }
    if (best) return choice(best, bestExact);

    auto oneByte = [](const QTextCodec* codec) {
        return scriptOf(codec) == Script::None && !isUnicode(codec);
    };
    if (exact.contains(wanted) && oneByte(wanted)) return choice(wanted);
    // uchardet's page only when it is one that this content is written in: its ISO pages are guesses
    // from few bytes.
    if (exact.contains(guess) && oneByte(guess) && listed.contains(guess)) return choice(guess);
    for (QTextCodec* codec : std::as_const(exact))
        if (oneByte(codec)) return choice(codec);
    if (!exact.isEmpty()) return choice(exact.first());
    return choice(mostLinesExact(bytes, candidates), false);
}

QStringList QCharsetDetector::readings(const QByteArray& bytes, int firstIndex)
{
    if (!hasHighBytes(bytes)) return {QString::fromLatin1(bytes)};
    QList<QTextCodec*> codecs{QTextEncoding::codec(firstIndex)};
    for (const QByteArray& name : detectionCodecs())
        codecs << QTextCodec::codecForName(name);
    QStringList result;
    QString text;
    for (QTextCodec* codec : std::as_const(codecs))
        if (readsExactly(bytes, codec, &text) && !result.contains(text)) result << text;
    return result;
}
