#pragma once

// A small language for exercising element documents: "[Section n]" headers, "item n" lines, and the
// name comments and unknown sections every document has. Also the checks that hold after any edit.

#include "NameCmmReg.h"
#include "QElementTextEditor.h"
#include "QGroupHeader.h"
#include "QNameComment.h"
#include "QTextEditorBlockData.h"
#include "QTextElementPool.h"
#include "QTextElementReg.h"
#include "QTextElementType.h"
#include "QUnknownGroup.h"
#include "UnknownGrpReg.h"

#include <QSet>
#include <QStringList>

class QTestItem : public QTextElement
{
public:
    int value = 0;
    int type() const override { return etFrame; }
    void release() override
    {
        value = 0;
        QTextElementPool<QTestItem>::release(this);
    }
    void parse(const QList<QTextToken*>& tokens) override { value = tokens.at(1)->text.toInt(); }
};

class QTestItemReg : public QTextElementReg
{
public:
    int type() const override { return etFrame; }
    int firstCharClass() const override { return charClass(6, 'I'); }
    bool match(int index, const QTextToken& token) override
    {
        switch (index) {
        case 0:
            return token.kind == tkIdentifier &&
                   token.text.compare(QLatin1String("item"), Qt::CaseInsensitive) == 0;
        case 1:
            return token.kind == tkInteger;
        case 2:
            return token.kind == tkEndOfLine;
        default:
            return false;
        }
    }
    QTextElement* create() override { return QTextElementPool<QTestItem>::create(); }
};

class QTestSection : public QGroupHeader
{
public:
    int number = 0;
    int type() const override { return etAnimation; }
    void release() override
    {
        QGroupHeader::release();
        number = 0;
        QTextElementPool<QTestSection>::release(this);
    }
    void parse(const QList<QTextToken*>& tokens) override { number = tokens.at(2)->text.toInt(); }
};

class QTestSectionReg : public QTextElementReg
{
public:
    int type() const override { return etAnimation; }
    int firstCharClass() const override { return charClass(3, '['); }
    bool match(int index, const QTextToken& token) override
    {
        switch (index) {
        case 0:
            return token.kind == tkLeftBracket;
        case 1:
            return token.kind == tkIdentifier &&
                   token.text.compare(QLatin1String("section"), Qt::CaseInsensitive) == 0;
        case 2:
            return token.kind == tkInteger;
        case 3:
            return token.kind == tkRightBracket;
        default:
            return true;
        }
    }
    QTextElement* create() override { return QTextElementPool<QTestSection>::create(); }
};

inline void registerTestElements()
{
    QTextElementReg::add(new QTestSectionReg);
    QTextElementReg::add(new QTestItemReg);
    QTextElementReg::add(new NameCmmReg);
    QTextElementReg::add(new UnknownGrpReg);
}

inline void enableTestElements(QElementTextEditor& editor, bool sections = true)
{
    if (sections) editor.setTypeEnabled(true, etAnimation, 0);
    editor.setTypeEnabled(true, etFrame, 0);
    editor.setTypeEnabled(true, etNameComment, 0);
    editor.setTypeEnabled(true, etUnknownGroup, 0);
}

// Splits "a|b|c" into the text "abc" and the selection between the marks (a cursor with one mark).
inline void unmark(const QString& marked, QString& text, int& from, int& to)
{
    from = int(marked.indexOf(QLatin1Char('|')));
    to = int(marked.indexOf(QLatin1Char('|'), from + 1));
    text = marked;
    text.remove(QLatin1Char('|'));
    to = to < 0 ? from : to - 1;
}

// "I3" for item 3, "S1" for section 1, "U" for an unknown section, "N:text" for a name comment.
inline QString describe(const QTextElement* element)
{
    switch (element->type()) {
    case etFrame:
        return QStringLiteral("I%1").arg(static_cast<const QTestItem*>(element)->value);
    case etAnimation:
        return QStringLiteral("S%1").arg(static_cast<const QTestSection*>(element)->number);
    case etUnknownGroup:
        return QStringLiteral("U");
    case etNameComment:
        return QStringLiteral("N:") + static_cast<const QNameComment*>(element)->text;
    default:
        return QStringLiteral("?");
    }
}

// The element of every line, "-" for none, joined by blanks. Without comments, lines that hold a
// comment count as "-".
inline QString describeLines(const QElementTextEditor& editor, bool withComments = true)
{
    QStringList lines;
    for (QTextBlock block = editor.document->firstBlock(); block.isValid(); block = block.next()) {
        const QTextElement* element = QElementTextEditor::elementAt(block);
        const bool shown = element && (withComments || !block.text().contains(QLatin1Char(';')));
        lines << (shown ? describe(element) : QStringLiteral("-"));
    }
    return lines.join(QLatin1Char(' '));
}

// The list as the model sees it, in list order.
inline QString describeList(const QElementTextEditor& editor)
{
    QStringList list;
    for (const QTextElement* element = editor.firstElement; element; element = element->next)
        list << describe(element);
    return list.join(QLatin1Char(' '));
}

// What must hold between edits; an empty answer when all is well.
inline QString checkInvariants(const QElementTextEditor& editor)
{
    QSet<const QTextElement*> listed;
    const QTextElement* previous = nullptr;
    int lastNumber = -1;
    for (const QTextElement* element = editor.firstElement; element; element = element->next) {
        if (element->previous != previous)
            return QStringLiteral("previous link broken at %1").arg(describe(element));
        if (element->editor != &editor) return QStringLiteral("element of another document in the list");
        if (!element->valid)
            return QStringLiteral("invalid element %1 left in the list").arg(describe(element));
        if (!element->block.isValid() || QElementTextEditor::elementAt(element->block) != element)
            return QStringLiteral("line of %1 does not point back to it").arg(describe(element));
        const int number = element->block.blockNumber();
        if (number <= lastNumber)
            return QStringLiteral("list order differs from line order at line %1").arg(number);
        lastNumber = number;
        if (listed.contains(element)) return QStringLiteral("element listed twice");
        listed.insert(element);
        previous = element;
    }
    if (editor.lastElement() != previous) return QStringLiteral("tail of the list is wrong");
    for (QTextBlock block = editor.document->firstBlock(); block.isValid(); block = block.next()) {
        const QTextElement* element = QElementTextEditor::elementAt(block);
        if (element && !listed.contains(element))
            return QStringLiteral("line %1 points to an element outside the list").arg(block.blockNumber());
    }
    for (const QTextElement* element : listed)
        if (auto* header = qobject_cast<const QGroupHeader*>(element))
            if (header->nameElement &&
                (!listed.contains(header->nameElement) || header->nameElement->owner != header))
                return QStringLiteral("name comment of %1 is stale").arg(describe(header));
    return QString();
}

// Listens to a document as a model would: keeps its own set of live elements from the change lists
// alone, and records what it heard.
class QChangeRecorder : public QObject
{
public:
    explicit QChangeRecorder(QElementTextEditor& editor) : editor(editor)
    {
        connect(&editor, &QElementTextEditor::update, this, &QChangeRecorder::onUpdate);
        connect(&editor, &QElementTextEditor::updated, this, [this](bool count) { updates << count; });
    }

    void onUpdate(QElementTextEditor* source, QList<QTextElementChange>& list)
    {
        ++lists;
        if (source != &editor) errors << QStringLiteral("update names another document");
        for (const QTextElementChange& change : list) {
            QTextElement* element = change.element;
            const QString text = describe(element);
            switch (change.type) {
            case ElementAdded:
                changes << QLatin1Char('+') + text;
                if (live.contains(element)) errors << QStringLiteral("added twice: ") + text;
                if (!element->valid) errors << QStringLiteral("added but invalid: ") + text;
                live.insert(element);
                break;
            case ElementRemoved:
                changes << QLatin1Char('-') + text;
                if (!live.remove(element)) errors << QStringLiteral("removed but never added: ") + text;
                if (element->valid) errors << QStringLiteral("removed but valid: ") + text;
                break;
            case ElementChanged:
                changes << QLatin1Char('~') + text;
                if (!live.contains(element)) errors << QStringLiteral("changed but never added: ") + text;
                break;
            }
        }
    }

    // Takes the elements that the document holds now as known, for a listener that came after them.
    void adoptElements()
    {
        for (QTextElement* element = editor.firstElement; element; element = element->next)
            live.insert(element);
    }

    // The elements this listener believes in, against the document's list.
    QString checkLive() const
    {
        QSet<QTextElement*> listed;
        for (QTextElement* element = editor.firstElement; element; element = element->next)
            listed.insert(element);
        if (!errors.isEmpty()) return errors.join(QLatin1String("; "));
        return listed == live ? QString() : QStringLiteral("the change lists and the element list disagree");
    }

    void clear()
    {
        changes.clear();
        updates.clear();
        lists = 0;
    }

    QElementTextEditor& editor;
    QStringList changes;
    QList<bool> updates;
    QStringList errors;
    QSet<QTextElement*> live;
    int lists = 0;
};
