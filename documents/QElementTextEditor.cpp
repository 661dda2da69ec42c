#include "QElementTextEditor.h"

#include "QElementDocumentLayout.h"
#include "QGroupHeader.h"
#include "QTextEditorBlockData.h"
#include "QTextElement.h"
#include "QTextElementReg.h"
#include "QTextScanner.h"

#include <QVarLengthArray>

#include <algorithm>
#include <deque>
#include <utility>

// The tokens of one line. Tokens live in a deque so that the pointers handed to parse() stay put, and
// they are kept from line to line, so that reading a line allocates nothing once their texts have
// grown to the longest token seen.
struct QTextLineTokens
{
    std::deque<QTextToken> store;
    QList<QTextToken*> list;

    void clear() { list.clear(); }
    QTextToken* add(int kind, int column, const QString& text)
    {
        if (size_t(list.size()) == store.size()) store.emplace_back();
        QTextToken* token = &store[size_t(list.size())];
        token->kind = kind;
        token->column = column;
        token->text.resize(0);
        token->text.append(text);
        list.append(token);
        return token;
    }
};

QElementTextEditor::QElementTextEditor(bool connected, QObject* parent)
    : QObject(parent), document(new QTextDocument(this)), cursor(this, QTextCursor(document)), ignore(1)
{
    document->setDocumentLayout(new QElementDocumentLayout(document));
    if (connected)
        connect(document, &QTextDocument::contentsChange, this, &QElementTextEditor::contentsChanged);
    ignore = 0;
}

QElementTextEditor::~QElementTextEditor()
{
    while (firstElement) {
        QTextElement* element = firstElement;
        if (auto* data = static_cast<QTextEditorBlockData*>(element->block.userData()))
            if (data->element == element) data->element = nullptr;
        releaseElement(element);
    }
}

QTextElement* QElementTextEditor::elementAt(const QTextBlock& block)
{
    return QTextEditorBlockData::elementOf(block);
}

void QElementTextEditor::setTypeEnabled(bool on, int type, int subType)
{
    int& count = typeCounts[qMakePair(type, subType)];
    count += on ? 1 : -1;
    if (count <= 0) typeCounts.remove(qMakePair(type, subType));
    enabledGeneration = -1;
}

bool QElementTextEditor::isTypeEnabled(int type, int subType) const
{
    return typeCounts.value(qMakePair(type, subType)) > 0;
}

const QList<QTextElementReg*>& QElementTextEditor::enabledRecognisers()
{
    // The registry is fixed while documents live, so the recognisers that this document consults are
    // picked once per change of the enabled kinds rather than once per line.
    if (enabledGeneration != QTextElementReg::generation()) {
        enabled.clear();
        for (QTextElementReg* reg : QTextElementReg::registered())
            if (isTypeEnabled(reg->type(), reg->subType())) enabled.append(reg);
        enabledGeneration = QTextElementReg::generation();
    }
    return enabled;
}

void QElementTextEditor::beginEdit()
{
    if (editDepth++ == 0) pendingCountChange = false;
    cursor.beginEditBlock();
}

void QElementTextEditor::endEdit()
{
    // Qt delivers the edit block's summed-up change here; its edits were already read one by one.
    ++ignore;
    cursor.endEditBlock();
    --ignore;
    if (--editDepth == 0) emit updated(pendingCountChange);
}

QTextElementReg* QElementTextEditor::findRecogniser(const QTextBlock& block, QTextScanner& scanner, int kind,
                                                    QTextLineTokens& tokens)
{
    const QList<QTextElementReg*>& regs = enabledRecognisers();
    const QChar first = kind != tkEnd && !scanner.text().isEmpty() ? scanner.text().at(0) : QChar();
    QVarLengthArray<QTextElementReg*, 16> candidates;
    for (QTextElementReg* reg : regs)
        if (QTextElementReg::passes(reg->firstCharClass(), first)) candidates.append(reg);

    auto offer = [&candidates](int index, const QTextToken& token) {
        for (int i = int(candidates.size()) - 1; i >= 0; --i)
            if (!candidates[i]->match(index, token)) candidates.remove(i);
    };

    while (!candidates.isEmpty() && kind != tkEnd) {
        const QTextToken* token = tokens.add(kind, scanner.tokenColumn(), scanner.text());
        offer(int(tokens.list.size()) - 1, *token);
        if (candidates.isEmpty()) break;
        kind = scanner.next();
    }
    if (!candidates.isEmpty() && kind == tkEnd && scanner.hasComment()) {
        // A comment counts as a token only when a section header follows it, so that it can name the
        // section.
        QTextBlock following = block.next();
        while (following.isValid() && following.text().isEmpty())
            following = following.next();
        if (following.isValid() && following.text().startsWith(QLatin1Char('['))) {
            const QTextToken* token = tokens.add(tkEndOfLine, scanner.commentColumn(), scanner.comment());
            offer(int(tokens.list.size()) - 1, *token);
        }
    }
    if (!candidates.isEmpty())
        offer(int(tokens.list.size()), QTextToken{tkEndOfLine, scanner.column(), QString()});
    if (tokens.list.isEmpty() || candidates.isEmpty()) return nullptr;
    return candidates.first();
}

void QElementTextEditor::lose(QTextElement* element, QList<QTextElementChange>& changes)
{
    element->valid = false;
    changes.append(QTextElementChange{ElementRemoved, element});
}

void QElementTextEditor::findLostElements(const QTextBlock& first, const QTextBlock& last,
                                          QList<QTextElementChange>& changes)
{
    // Qt drops the data of deleted lines, so the elements of lines that were merged away are found by
    // laying the list beside the blocks between the nearest surviving elements around the edit.
    QTextBlock lower = first.previous();
    while (lower.isValid() && !elementAt(lower))
        lower = lower.previous();
    QTextBlock upper = last.isValid() ? last.next() : QTextBlock();
    while (upper.isValid() && !elementAt(upper))
        upper = upper.next();
    // Past the last element below the edit, every element at the list's end may be one that was lost.
    const bool ranOff = !upper.isValid();
    if (ranOff) upper = document->lastBlock();
    QTextElement* cursorElement = ranOff || !elementAt(upper) ? tail : elementAt(upper);
    const int lowerPosition = lower.isValid() ? lower.position() : -1;

    QTextBlock block = upper;
    while (block.isValid() && block.position() >= lowerPosition) {
        if (QTextElement* present = elementAt(block)) {
            QTextElement* walk = cursorElement;
            while (walk && walk != present)
                walk = walk->previous;
            if (walk) {
                for (QTextElement* passed = cursorElement; passed != present; passed = passed->previous)
                    if (passed->valid) lose(passed, changes);
                cursorElement = present->previous;
            }
        }
        block = block.previous();
    }
    if (!block.isValid())
        for (; cursorElement; cursorElement = cursorElement->previous)
            if (cursorElement->valid) lose(cursorElement, changes);
    lostData = 0;
}

QTextElement* QElementTextEditor::elementAbove(const QTextBlock& block) const
{
    for (QTextBlock above = block.previous(); above.isValid(); above = above.previous())
        if (QTextElement* element = elementAt(above)) return element;
    return nullptr;
}

void QElementTextEditor::link(QTextElement* element, QTextElement* predecessor)
{
    element->previous = predecessor;
    element->next = predecessor ? predecessor->next : firstElement;
    if (element->next)
        element->next->previous = element;
    else
        tail = element;
    if (predecessor)
        predecessor->next = element;
    else
        firstElement = element;
}

QTextElement* QElementTextEditor::bind(QTextElementReg* reg, const QTextBlock& block,
                                       QTextElement* predecessor, const QList<QTextToken*>& tokens)
{
    QTextElement* element = reg->create();
    element->editor = this;
    element->block = block;
    link(element, predecessor);
    QTextEditorBlockData::of(block)->element = element;
    element->parse(tokens);
    return element;
}

void QElementTextEditor::releaseElement(QTextElement* element)
{
    if (element->editor != this) return;
    element->valid = true;
    QTextElement* before = element->previous;
    QTextElement* after = element->next;
    element->release();
    if (before)
        before->next = after;
    else
        firstElement = after;
    if (after)
        after->previous = before;
    else
        tail = before;
    element->editor = nullptr;
    element->previous = nullptr;
    element->next = nullptr;
    element->block = QTextBlock();
}

void QElementTextEditor::releaseRemoved(const QList<QTextElementChange>& changes)
{
    for (const QTextElementChange& change : changes)
        if (change.type == ElementRemoved) releaseElement(change.element);
}

void QElementTextEditor::emitUpdate(QList<QTextElementChange>& changes)
{
    QGroupHeader::bindNames(changes);
    emit update(this, changes);
}

void QElementTextEditor::report(QList<QTextElementChange>& changes, bool wholeText)
{
    // A slot that writes lines may start a pass of its own, which is no whole text.
    const bool outer = std::exchange(reloading, wholeText);
    emitUpdate(changes);
    reloading = outer;
}

void QElementTextEditor::finishPass(bool structureChanged)
{
    if (editDepth > 0)
        pendingCountChange = pendingCountChange || structureChanged;
    else
        emit updated(structureChanged);
}

void QElementTextEditor::contentsChanged(int position, int charsRemoved, int charsAdded)
{
    if (ignore > 0) return;
    const QTextBlock first = document->findBlock(position);
    if (!first.isValid()) return;
    const QTextBlock last = document->findBlock(position + charsAdded + (charsRemoved > 0 ? 1 : 0));
    const int limit = last.isValid() ? last.position() + last.length() : document->characterCount();

    QList<QTextElementChange> changes;
    bool structureChanged = false;
    // Only a line whose data Qt deleted can have lost its element unseen; without one the search
    // would find nothing, and typing stays free of it.
    if (charsRemoved >= 1 && firstElement && lostData > 0) {
        findLostElements(first, last, changes);
        structureChanged = !changes.isEmpty();
    }

    QTextScanner scanner;
    QTextLineTokens tokens;
    // The nearest element above the block in hand, once it is known.
    QTextElement* above = nullptr;
    bool aboveKnown = false;
    for (QTextBlock block = first; block.isValid() && block.position() < limit; block = block.next()) {
        QTextEditorBlockData* data = QTextEditorBlockData::of(block);
        QTextElement* old = data->element;
        const QString text = block.text();
        scanner.setText(text);
        const int kind = scanner.next();
        const bool blank = kind == tkEnd && !scanner.hasComment();
        if (old && (text.isEmpty() || blank)) {
            lose(old, changes);
            data->element = nullptr;
            structureChanged = true;
            continue;
        }
        if (!old && blank) continue;
        tokens.clear();
        QTextElementReg* reg = findRecogniser(block, scanner, kind, tokens);
        QTextElement* anchor = nullptr;
        if (old && (!reg || reg->type() != old->type() || reg->subType() != old->subType())) {
            lose(old, changes);
            data->element = nullptr;
            structureChanged = true;
            anchor = old;
            old = nullptr;
        }
        if (!reg) continue;
        if (old) {
            old->parse(tokens.list);
            changes.append(QTextElementChange{ElementChanged, old});
            above = old;
            aboveKnown = true;
            continue;
        }
        QTextElement* predecessor = anchor;
        if (!predecessor) {
            if (!aboveKnown) above = elementAbove(block);
            predecessor = above;
        }
        above = bind(reg, block, predecessor, tokens.list);
        aboveKnown = true;
        changes.append(QTextElementChange{ElementAdded, above});
        structureChanged = true;
    }

    if (changes.isEmpty()) return;
    report(changes, false);
    releaseRemoved(changes);
    finishPass(structureChanged);
}

void QElementTextEditor::rescan()
{
    QList<QTextElementChange> changes;
    QTextScanner scanner;
    QTextLineTokens tokens;
    QTextElement* above = nullptr;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        QTextEditorBlockData* data = QTextEditorBlockData::of(block);
        QTextElement* old = data->element;
        scanner.setText(block.text());
        const int kind = scanner.next();
        if (kind == tkEnd && !scanner.hasComment()) {
            if (old) above = old;
            continue;
        }
        tokens.clear();
        QTextElementReg* reg = findRecogniser(block, scanner, kind, tokens);
        if (old && reg && reg->type() == old->type() && reg->subType() == old->subType()) {
            above = old;
            continue;
        }
        QTextElement* anchor = nullptr;
        if (old) {
            lose(old, changes);
            data->element = nullptr;
            anchor = old;
        }
        if (!reg) continue;
        above = bind(reg, block, anchor ? anchor : above, tokens.list);
        changes.append(QTextElementChange{ElementAdded, above});
    }
    if (!changes.isEmpty()) {
        report(changes, false);
        releaseRemoved(changes);
    }
    if (editDepth > 0)
        pendingCountChange = true;
    else
        emit updated(!changes.isEmpty());
}

void QElementTextEditor::setPlainText(const QString& text)
{
    // The whole text goes, so every element goes. They leave the list at once, unlinked, so that
    // nobody who handles the removals walks thousands of lost neighbours, and the new lines are read in
    // one pass in line order, each element appended behind the last.
    QList<QTextElementChange> changes;
    for (QTextElement* element = tail; element;) {
        QTextElement* above = element->previous;
        lose(element, changes);
        element->previous = nullptr;
        element->next = nullptr;
        element = above;
    }
    firstElement = nullptr;
    tail = nullptr;
    ++ignore;
    document->setPlainText(text);
    --ignore;
    lostData = 0;

    // Lines are read from the text itself where the document cut it at line feeds only, which spares
    // a copy of every line.
    const bool lineFeedsOnly = std::none_of(text.cbegin(), text.cend(), [](QChar c) {
        const ushort u = c.unicode();
        return u == '\r' || u == QChar::ParagraphSeparator || u == 0xfdd0 || u == 0xfdd1;
    });
    QTextScanner scanner;
    QTextLineTokens tokens;
    QString copy;
    qsizetype from = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        const qsizetype length = block.length() - 1;
        if (lineFeedsOnly && from + length <= text.size() &&
            (from + length == text.size() || text.at(from + length) == QLatin1Char('\n'))) {
            scanner.setText(QStringView(text).mid(from, length));
        } else {
            copy = block.text();
            scanner.setText(QStringView(copy));
        }
        from += length + 1;
        const int kind = scanner.next();
        if (kind == tkEnd && !scanner.hasComment()) continue;
        tokens.clear();
        if (QTextElementReg* reg = findRecogniser(block, scanner, kind, tokens))
            changes.append(QTextElementChange{ElementAdded, bind(reg, block, tail, tokens.list)});
    }

    if (changes.isEmpty()) return;
    report(changes, true);
    // The removed elements are out of the list already: they only go back to their pools.
    for (const QTextElementChange& change : std::as_const(changes)) {
        if (change.type != ElementRemoved) continue;
        QTextElement* element = change.element;
        element->valid = true;
        element->release();
        element->editor = nullptr;
        element->block = QTextBlock();
    }
    finishPass(true);
}

void QElementTextEditor::appendLine(const QString& text)
{
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QLatin1Char('\n') + text);
}

void QElementTextEditor::insertLineAfter(QTextElement* element, const QString& text, bool ownBlock)
{
    if (!element) {
        appendLine(text);
        return;
    }
    int end;
    if (ownBlock) {
        end = element->block.position() + element->block.length();
    } else {
        const QTextBlock last = document->findBlockByNumber(element->lastLine());
        end = last.isValid() ? last.position() + last.length() : document->characterCount();
    }
    end = qMin(end, document->characterCount());
    cursor.setPosition(end - 1);
    cursor.insertText(QLatin1Char('\n') + text);
}

void QElementTextEditor::insertLineBefore(QTextElement* element, const QString& text, bool ownBlock)
{
    int number = 0;
    if (element) number = ownBlock ? element->block.blockNumber() : element->firstLine();
    const QTextBlock target = document->findBlockByNumber(number);
    const int position = qMax(0, target.position() - 1);
    QString line = QLatin1Char('\n') + text;
    // Before the first line there is no line end to insert behind: the new line goes below an empty
    // first line, and the old first line keeps a line of its own.
    if (number == 0 && !document->firstBlock().text().isEmpty()) line += QLatin1Char('\n');
    cursor.setPosition(position);
    cursor.insertText(line);
}
