#include "QCommandParam.h"

#include "QTextElementPool.h"
#include "QTextScanner.h"

#include <deque>

namespace {

struct QKeyName
{
    const char* name;
    quint32 bits;
};

const QKeyName directions[] = {{"U", 1}, {"D", 2}, {"B", 4}, {"F", 8}};
const QKeyName buttons[] = {{"a", 16}, {"b", 32}, {"c", 64}, {"x", 128}, {"y", 256}, {"z", 512}, {"s", 1024}};
const QKeyName words[] = {{"U", 1},  {"D", 2},   {"B", 4},   {"F", 8},   {"UB", 5},
                          {"UF", 9}, {"DB", 6},  {"DF", 10}, {"a", 16},  {"b", 32},
                          {"c", 64}, {"x", 128}, {"y", 256}, {"z", 512}, {"s", 1024}};

QList<QCommandStep> readSteps(const QList<QTextToken*>& tokens, int from)
{
    QList<QCommandStep> steps;
    QCommandStep step;
    const int count = int(tokens.size());
    for (int i = from; i < count; ++i) {
        const QTextToken* token = tokens.at(i);
        switch (token->kind) {
        case tkIdentifier:
            for (const QKeyName& word : words)
                if (token->text == QLatin1String(word.name)) {
                    step.keys |= word.bits;
                    break;
                }
            break;
        case tkSlash:
            step.modifiers |= 1;
            break;
        case tkTilde:
            step.modifiers |= 2;
            if (i + 1 < count && tokens.at(i + 1)->kind == tkInteger)
                step.time = quint16(tokens.at(++i)->text.toUInt());
            break;
        case tkDollar:
            step.modifiers |= 4;
            break;
        case tkGreater:
            step.modifiers |= 8;
            break;
        case tkComma:
            steps.append(step);
            step = QCommandStep();
            break;
        default:
            break;
        }
    }
    steps.append(step);
    return steps;
}

} // namespace

QVariant QCommandParam::value() const
{
    return stepsText(steps);
}

QList<QCommandStep> QCommandParam::parseSteps(const QString& text)
{
    QTextScanner scanner(text);
    std::deque<QTextToken> store;
    QList<QTextToken*> tokens;
    for (int kind = scanner.next(); kind != tkEnd; kind = scanner.next()) {
        store.push_back(QTextToken{kind, scanner.tokenColumn(), scanner.text()});
        tokens.append(&store.back());
    }
    return readSteps(tokens, 0);
}

QString QCommandParam::stepsText(const QList<QCommandStep>& steps)
{
    QStringList parts;
    for (const QCommandStep& step : steps) {
        QString part;
        if (step.modifiers & 1) {
            part += QLatin1Char('/');
            if (step.time != 0) part += QString::number(step.time);
        }
        if (step.modifiers & 2) part += QLatin1Char('~');
        if (step.modifiers & 4) part += QLatin1Char('$');
        if (step.modifiers & 8) part += QLatin1Char('>');
        bool keyWritten = false;
        for (const QKeyName& direction : directions)
            if (step.keys & direction.bits) {
                part += QLatin1String(direction.name);
                keyWritten = true;
            }
        for (const QKeyName& button : buttons)
            if (step.keys & button.bits) {
                if (keyWritten) part += QLatin1Char('+');
                part += QLatin1String(button.name);
                keyWritten = true;
            }
        parts << part;
    }
    return parts.join(QLatin1String(", "));
}

void QCommandParam::parseValue(const QList<QTextToken*>& tokens)
{
    // The key and "=" are words and signs that name no key, so the whole line can be read.
    steps = readSteps(tokens, 0);
}

void QCommandParam::clearValue()
{
    steps.clear();
}

void QCommandParam::releaseToPool()
{
    QTextElementPool<QCommandParam>::release(this);
}
