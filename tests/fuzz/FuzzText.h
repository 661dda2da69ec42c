#pragma once

// What the text targets share: the input cut into a text and an edit typed into it afterwards.

#include <QString>
#include <QTextCursor>
#include <QTextDocument>

#include <cstddef>
#include <cstdint>

namespace FuzzText {

// After the selector byte: one byte for where the edit goes and one for how much it replaces, then the
// text as UTF-8. A U+0001 in the text divides what is loaded from what is typed.
struct Input
{
    int selector = 0;
    double where = 0;
    int removed = 0;
    QString text;
    QString typed;
    bool edit = false;
};

inline Input split(const uint8_t* data, size_t size)
{
    Input input;
    if (size < 3) return input;
    input.selector = data[0];
    input.where = data[1] / 255.0;
    input.removed = data[2] % 64;
    const QString all = QString::fromUtf8(reinterpret_cast<const char*>(data + 3), qsizetype(size - 3));
    const qsizetype cut = all.indexOf(QChar(1));
    input.edit = cut >= 0;
    input.text = input.edit ? all.left(cut) : all;
    input.typed = input.edit ? all.mid(cut + 1) : QString();
    return input;
}

// Types the edit as a user would: Qt reports it through contentsChange, as for a keystroke or a paste.
inline void type(QTextDocument* document, const Input& input)
{
    if (!input.edit) return;
    const int last = document->characterCount() - 1;
    const int position = int(input.where * last);
    QTextCursor cursor(document);
    cursor.setPosition(position);
    cursor.setPosition(qMin(last, position + input.removed), QTextCursor::KeepAnchor);
    cursor.insertText(input.typed);
}

} // namespace FuzzText
