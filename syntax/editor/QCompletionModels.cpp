#include "QCompletionModels.h"

#include <QFile>
#include <QStringListModel>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

QString withoutBlanks(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text)
        if (!c.isSpace()) result += c;
    return result;
}

} // namespace

QCompletionModels::QCompletionModels(QObject* owner) : owner(owner) {}

bool QCompletionModels::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&file);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("completion")) return false;

    QList<std::pair<QString, QStringList>> read;
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("model")) {
            xml.skipCurrentElement();
            continue;
        }
        QString prefix = withoutBlanks(xml.attributes().value(QLatin1String("prefix")).toString());
        QStringList words;
        while (xml.readNextStartElement()) {
            if (xml.name() == QLatin1String("word")) {
                const QString word = xml.attributes().value(QLatin1String("value")).toString();
                if (!word.isEmpty()) words << word;
            }
            xml.skipCurrentElement();
        }
        read.append({prefix, words});
    }
    if (xml.hasError()) return false;

    for (const Entry& entry : models)
        delete entry.model;
    models.clear();
    for (auto& [prefix, words] : read) {
        // The completer is told the model is sorted without regard to case, so it must be.
        std::sort(words.begin(), words.end(),
                  [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
        words.removeDuplicates();
        models.append({prefix, new QStringListModel(words, owner)});
    }
    return true;
}

QStringListModel* QCompletionModels::modelFor(const QString& textBeforeWord, bool* prefixed) const
{
    if (prefixed) *prefixed = false;
    const QString line = withoutBlanks(textBeforeWord);
    QStringListModel* fallback = nullptr;
    for (const Entry& entry : models) {
        if (entry.prefix.isEmpty()) {
            if (!fallback) fallback = entry.model;
            continue;
        }
        if (!line.endsWith(entry.prefix, Qt::CaseInsensitive)) continue;
        const int before = line.size() - entry.prefix.size() - 1;
        if (before >= 0) {
            const QChar c = line.at(before);
            if (c.isLetterOrNumber() || c == QLatin1Char('.')) continue;
        }
        if (prefixed) *prefixed = true;
        return entry.model;
    }
    return fallback;
}
