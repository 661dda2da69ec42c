#pragma once

#include <QList>
#include <QString>

class QObject;
class QStringListModel;

// The word lists of the completer, read from completer.xml: a root "completion" with "model" elements,
// each with a "prefix" attribute and "word" elements with a "value". A model applies where the text
// before the word being typed ends with its prefix; the model with an empty prefix applies elsewhere.
class QCompletionModels
{
public:
    // The models are children of owner.
    explicit QCompletionModels(QObject* owner);

    // Replaces the models by those of the file; false, with the old ones kept, when the file is absent,
    // unreadable or not a completion file.
    bool load(const QString& path);
    bool isEmpty() const { return models.isEmpty(); }

    // The model for a line of text up to the start of the word being typed, or null. Blanks don't count,
    // case doesn't matter, and a prefix only fits where it starts a token: the character before it is
    // no letter, digit or ".". Prefixed models are tried in file order before the default; prefixed
    // tells which of the two answered.
    QStringListModel* modelFor(const QString& textBeforeWord, bool* prefixed = nullptr) const;

private:
    struct Entry
    {
        QString prefix;
        QStringListModel* model;
    };
    QObject* owner;
    QList<Entry> models;
};
