#include "QAnimations.h"

#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QElementTextEditor.h"
#include "QInterFrameElement.h"
#include "QSyntaxTextEditor.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"
#include "QUserDialogs.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QTextCursor>

#include <algorithm>

namespace {

QHash<const QElementTextEditor*, QAnimations*>& models()
{
    static QHash<const QElementTextEditor*, QAnimations*> map;
    return map;
}

const int handledTypes[] = {etNameComment,    etAnimation,    etFrame,
                            etCollisionBoxes, etCollisionBox, etInterFrame};

// The lines that may stand between a frame and its marks and sets: the marks, sets and boxes
// themselves, and comment lines, which carry an element only when a section follows anyway.
bool inRun(const QTextElement* element)
{
    return element->type() & (etCollisionBoxes | etCollisionBox | etInterFrame | etNameComment);
}

template <class T>
bool holds(T* const (&array)[4], const T* item)
{
    return std::find(std::begin(array), std::end(array), item) != std::end(array);
}

} // namespace

// What one change list leaves to be put right: sections whose frames may have changed owner, frames
// whose marks and sets may have, sets whose boxes may have, and the sets whose lines are rewritten.
struct QAnimations::Settle
{
    // The section header above an element (null for the top of the document), memoised for a pass in
    // which the list does not change, so that a long run of new lines costs one walk.
    QHash<QTextElement*, QTextElement*> sectionOf;
    QList<QTextElement*> sections;
    QSet<QTextElement*> sectionSet;
    bool top = false;
    QList<QAnimationFrame*> frames;
    QSet<QAnimationFrame*> frameSet;
    QList<QCollisionBoxes*> sets;
    QSet<QCollisionBoxes*> setSet;
    // Sets to rewrite, each with the first box whose line is rewritten.
    QList<QCollisionBoxes*> rewrites;
    QHash<QCollisionBoxes*, int> rewriteFrom;
    bool rowsChanged = false;

    // The nearest valid neighbours. A pass may hold thousands of elements that are going (a whole
    // document replaced), so the elements passed over remember where their walk ended.
    QHash<QTextElement*, QTextElement*> validAfterOf;
    QHash<QTextElement*, QTextElement*> validBeforeOf;

    QTextElement* validAfter(QTextElement* element)
    {
        QTextElement* next = element->next;
        if (!next || next->valid) return next;
        QList<QTextElement*> passed;
        while (next && !next->valid) {
            const auto known = validAfterOf.constFind(next);
            if (known != validAfterOf.constEnd()) {
                next = known.value();
                break;
            }
            passed.append(next);
            next = next->next;
        }
        for (QTextElement* invalid : std::as_const(passed))
            validAfterOf.insert(invalid, next);
        return next;
    }
    QTextElement* validBefore(QTextElement* element)
    {
        QTextElement* previous = element->previous;
        if (!previous || previous->valid) return previous;
        QList<QTextElement*> passed;
        while (previous && !previous->valid) {
            const auto known = validBeforeOf.constFind(previous);
            if (known != validBeforeOf.constEnd()) {
                previous = known.value();
                break;
            }
            passed.append(previous);
            previous = previous->previous;
        }
        for (QTextElement* invalid : std::as_const(passed))
            validBeforeOf.insert(invalid, previous);
        return previous;
    }

    QTextElement* sectionAbove(QTextElement* element)
    {
        QList<QTextElement*> walked;
        QTextElement* header = nullptr;
        for (QTextElement* previous = validBefore(element); previous; previous = validBefore(previous)) {
            if (previous->flags() & etSection) {
                header = previous;
                break;
            }
            const auto known = sectionOf.constFind(previous);
            if (known != sectionOf.constEnd()) {
                header = known.value();
                break;
            }
            walked.append(previous);
        }
        for (QTextElement* passed : std::as_const(walked))
            sectionOf.insert(passed, header);
        return header;
    }

    // The frame whose marks and sets include a line at this place: the first frame below, over such
    // lines only.
    QAnimationFrame* runFrameBelow(QTextElement* element)
    {
        for (QTextElement* next = validAfter(element); next; next = validAfter(next)) {
            if (next->type() == etFrame) return static_cast<QAnimationFrame*>(next);
            if (!inRun(next)) return nullptr;
        }
        return nullptr;
    }

    // The set that a box at this place belongs to: the first declaration above, over box lines only.
    QCollisionBoxes* setAbove(QTextElement* element)
    {
        for (QTextElement* previous = validBefore(element); previous; previous = validBefore(previous)) {
            const int type = previous->type();
            if (type == etCollisionBoxes) return static_cast<QCollisionBoxes*>(previous);
            if (type != etCollisionBox && type != etNameComment) return nullptr;
        }
        return nullptr;
    }
    void section(QTextElement* header)
    {
        if (!header)
            top = true;
        else if (header->valid && !sectionSet.contains(header)) {
            sectionSet.insert(header);
            sections.append(header);
        }
    }
    void frame(QAnimationFrame* frame)
    {
        if (frame && frame->valid && !frameSet.contains(frame)) {
            frameSet.insert(frame);
            frames.append(frame);
        }
    }
    void set(QCollisionBoxes* set)
    {
        if (set && set->valid && !setSet.contains(set)) {
            setSet.insert(set);
            sets.append(set);
        }
    }
    void rewrite(QCollisionBoxes* set, int from)
    {
        const auto known = rewriteFrom.find(set);
        if (known == rewriteFrom.end()) {
            rewriteFrom.insert(set, from);
            rewrites.append(set);
        } else {
            known.value() = qMin(known.value(), from);
        }
    }
    // The frames of the marks and sets right above a place, which may lose them.
    void runAbove(QTextElement* element)
    {
        for (QTextElement* previous = validBefore(element); previous; previous = validBefore(previous)) {
            if (!inRun(previous)) break;
            if (previous->type() == etCollisionBoxes) frame(static_cast<QCollisionBoxes*>(previous)->frame);
            if (previous->type() == etInterFrame) frame(static_cast<QInterFrameElement*>(previous)->frame);
        }
    }
};

QAnimations::QAnimations(QProjectContext* project, QObject* parent)
    : QAbstractListModel(parent), QProjectFile(pftAnimations, project)
{}

QAnimations::~QAnimations()
{
    if (textEditor) {
        textEditor->setPlainText(QString());
        detach();
    }
    QTextElementPool<QAnimation>::clearFree();
    QTextElementPool<QAnimationFrame>::clearFree();
    QTextElementPool<QInterFrameElement>::clearFree();
    QTextElementPool<QCollisionBoxes>::clearFree();
    QTextElementPool<QCollisionBox>::clearFree();
}

QAnimations* QAnimations::modelOf(const QElementTextEditor* editor)
{
    return models().value(editor);
}

QSyntaxTextEditor* QAnimations::textFile() const
{
    return qobject_cast<QSyntaxTextEditor*>(textEditor.data());
}

void QAnimations::setEditor(QElementTextEditor* editor)
{
    if (editor == textEditor) return;
    if (textEditor) detach();
    textEditor = editor;
    if (textEditor) attach();
}

void QAnimations::attach()
{
    models().insert(textEditor, this);
    for (int type : handledTypes)
        textEditor->setTypeEnabled(true, type, 0);
    connect(textEditor, &QElementTextEditor::update, this, &QAnimations::update);
    connect(textEditor, &QElementTextEditor::updated, this, &QAnimations::updated);
    // A document that goes first takes its elements along: the model forgets them.
    connect(textEditor, &QObject::destroyed, this, [this](QObject* gone) {
        models().remove(static_cast<QElementTextEditor*>(gone));
        beginResetModel();
        animations.clear();
        currentIndex = 0;
        endResetModel();
    });
    // What the document already holds is read as a load: its box lines stay as they are.
    const bool rewrite = rewriteOnLoad;
    rewriteOnLoad = false;
    textEditor->rescan();
    rewriteOnLoad = rewrite;
}

void QAnimations::detach()
{
    QElementTextEditor* old = textEditor;
    disconnect(old, nullptr, this, nullptr);
    models().remove(old);
    for (int type : handledTypes)
        old->setTypeEnabled(false, type, 0);
    beginResetModel();
    animations.clear();
    currentIndex = 0;
    endResetModel();
    old->rescan();
    textEditor = nullptr;
}

QAnimation* QAnimations::at(uint index) const
{
    return index < uint(animations.size()) ? animations.at(index) : nullptr;
}

// ---- Keeping the links in step with the text ----

void QAnimations::update(QElementTextEditor* source, QList<QTextElementChange>& changes)
{
    if (source != textEditor) return;
    Settle settle;
    if (textEditor->isReloading()) {
        // A whole new text: one walk down the lines reads it as a fresh document.
        readAfresh(settle);
        finishUpdate(settle);
        return;
    }
    QList<QAnimation*> added;

    for (const QTextElementChange& change : changes) {
        QTextElement* element = change.element;
        const int type = element->type();
        const bool section = element->flags() & etSection;
        if (type == etNameComment) {
            settle.rowsChanged = true;
            continue;
        }
        if (!section && !(type & (etFrame | etCollisionBoxes | etCollisionBox | etInterFrame))) continue;

        if (change.type == ElementChanged) {
            // A changed line keeps its element; only a set or a mark can change its kind by it.
            if (type == etAnimation) settle.rowsChanged = true;
            if (type == etCollisionBoxes) {
                settle.frame(static_cast<QCollisionBoxes*>(element)->frame);
                settle.frame(settle.runFrameBelow(element));
            } else if (type == etInterFrame) {
                settle.frame(static_cast<QInterFrameElement*>(element)->frame);
                settle.frame(settle.runFrameBelow(element));
            }
            continue;
        }

        if (change.type == ElementRemoved) {
            switch (type) {
            case etAnimation: {
                auto* animation = static_cast<QAnimation*>(element);
                const int row = int(animations.indexOf(animation));
                if (row >= 0) {
                    beginRemoveRows(QModelIndex(), row, row);
                    animations.removeAt(row);
                    endRemoveRows();
                }
                for (QAnimationFrame* frame : std::as_const(animation->frames))
                    if (frame->parent == animation) frame->parent = nullptr;
                animation->frames.clear();
                settle.rowsChanged = true;
                break;
            }
            case etFrame: {
                auto* frame = static_cast<QAnimationFrame*>(element);
                if (frame->parent) frame->parent->frames.removeOne(frame);
                frame->parent = nullptr;
                for (QCollisionBoxes*& set : frame->boxes) {
                    if (set && set->frame == frame) set->frame = nullptr;
                    set = nullptr;
                }
                for (QInterFrameElement* mark : std::as_const(frame->interFrames))
                    if (mark->frame == frame) mark->frame = nullptr;
                frame->interFrames.clear();
                break;
            }
            case etCollisionBoxes: {
                auto* set = static_cast<QCollisionBoxes*>(element);
                for (QCollisionBox* box : std::as_const(set->boxes))
                    if (box->parent == set) box->parent = nullptr;
                set->boxes.clear();
                settle.frame(set->frame);
                break;
            }
            case etCollisionBox: {
                auto* box = static_cast<QCollisionBox*>(element);
                if (box->parent) settle.set(box->parent);
                break;
            }
            case etInterFrame:
                settle.frame(static_cast<QInterFrameElement*>(element)->frame);
                break;
            default:
                break;
            }
        } else if (type == etAnimation) {
            added.append(static_cast<QAnimation*>(element));
            settle.rowsChanged = true;
        }

        // A line that came or went may move the border of a section, of a frame's marks and sets,
        // or of a set's boxes.
        if (section) {
            settle.section(settle.sectionAbove(element));
            if (element->valid) settle.section(element);
        } else if (type == etFrame) {
            settle.section(settle.sectionAbove(element));
        }
        settle.frame(settle.runFrameBelow(element));
        settle.runAbove(element);
        settle.set(settle.setAbove(element));
        if (element->valid) {
            if (type == etFrame) settle.frame(static_cast<QAnimationFrame*>(element));
            if (type == etCollisionBoxes) settle.set(static_cast<QCollisionBoxes*>(element));
        }
    }

    animationsAdded(added);
    if (settle.top) rebuildSection(nullptr, settle);
    for (int i = 0; i < settle.sections.size(); ++i)
        rebuildSection(settle.sections.at(i), settle);
    for (int i = 0; i < settle.frames.size(); ++i)
        settleFrame(settle.frames.at(i), settle);
    for (int i = 0; i < settle.sets.size(); ++i)
        settleSet(settle.sets.at(i), settle);

    if (settle.rowsChanged && !animations.isEmpty())
        emit dataChanged(index(0), index(int(animations.size()) - 1), {Qt::DisplayRole});
    finishUpdate(settle);
}

void QAnimations::finishUpdate(Settle& settle)
{
    rewrite(settle);
    if (currentIndex >= animations.size()) currentIndex = qMax(0, int(animations.size()) - 1);
    if (rewriteOnLoad) {
        emit changed();
        check();
    }
}

void QAnimations::readAfresh(Settle& settle)
{
    // The same links that the change handlers settle, read top down: a section's frames are those
    // up to the next header; a frame takes the nearest set of each slot and the nearest mark of each
    // type from the run of marks, sets and boxes right above it; a set takes the box lines right
    // below it. Name comments stand anywhere in between without ending anything.
    beginResetModel();
    animations.clear();
    QAnimation* owner = nullptr;
    QCollisionBoxes* set = nullptr;
    QList<QTextElement*> run;
    for (QTextElement* element = textEditor->firstElement; element; element = element->next) {
        const int type = element->type();
        if (type == etNameComment) continue;
        if (type != etCollisionBox) set = nullptr;
        switch (type) {
        case etCollisionBox: {
            auto* box = static_cast<QCollisionBox*>(element);
            box->parent = set;
            if (set) set->boxes.append(box);
            break;
        }
        case etCollisionBoxes:
            set = static_cast<QCollisionBoxes*>(element);
            set->frame = nullptr;
            set->boxes.clear();
            run.append(set);
            break;
        case etInterFrame:
            static_cast<QInterFrameElement*>(element)->frame = nullptr;
            run.append(element);
            break;
        case etFrame: {
            auto* frame = static_cast<QAnimationFrame*>(element);
            frame->parent = owner;
            if (owner) owner->frames.append(frame);
            claimRun(frame, run);
            run.clear();
            break;
        }
        default:
            run.clear();
            if (!(element->flags() & etSection)) break;
            owner = type == etAnimation ? static_cast<QAnimation*>(element) : nullptr;
            if (owner) {
                owner->frames.clear();
                owner->currentFrameIndex = 0;
                animations.append(owner);
            }
            break;
        }
        // Sets read from a new text renumber their boxes unless the text is being loaded.
        if (rewriteOnLoad && set && type == etCollisionBox) settle.rewrite(set, 0);
    }
    endResetModel();
}

void QAnimations::claimRun(QAnimationFrame* frame, const QList<QTextElement*>& run)
{
    std::fill(std::begin(frame->boxes), std::end(frame->boxes), nullptr);
    frame->interFrames.clear();
    // The nearest of each kind wins: the run is read from the frame upward.
    for (auto it = run.crbegin(); it != run.crend(); ++it) {
        if ((*it)->type() == etCollisionBoxes) {
            auto* set = static_cast<QCollisionBoxes*>(*it);
            QCollisionBoxes*& slot = frame->boxes[int(set->clsnType)];
            if (slot) continue;
            slot = set;
            set->frame = frame;
        } else {
            auto* mark = static_cast<QInterFrameElement*>(*it);
            if (frame->interFrame(mark->markType)) continue;
            frame->interFrames.prepend(mark);
            mark->frame = frame;
        }
    }
}

void QAnimations::animationsAdded(const QList<QAnimation*>& added)
{
    for (QAnimation* animation : added) {
        if (!animation->valid) continue;
        const int number = animation->block.blockNumber();
        int row = int(animations.size());
        if (!animations.isEmpty() && animations.last()->block.blockNumber() > number) {
            const auto at = std::lower_bound(
                animations.begin(), animations.end(), number,
                [](const QAnimation* item, int line) { return item->block.blockNumber() < line; });
            row = int(at - animations.begin());
        }
        beginInsertRows(QModelIndex(), row, row);
        animations.insert(row, animation);
        endInsertRows();
    }
}

void QAnimations::rebuildSection(QTextElement* header, Settle& settle)
{
    QAnimation* owner = header && header->type() == etAnimation ? static_cast<QAnimation*>(header) : nullptr;
    QList<QAnimationFrame*> list;
    for (QTextElement* element = header ? header->next : textEditor->firstElement; element;
         element = element->next) {
        if (!element->valid) continue;
        if (element->flags() & etSection) break;
        if (element->type() != etFrame) continue;
        auto* frame = static_cast<QAnimationFrame*>(element);
        if (frame->parent != owner) {
            // The section that it leaves is read again too.
            if (frame->parent) settle.section(frame->parent);
            frame->parent = owner;
        }
        if (owner) list.append(frame);
    }
    if (!owner) return;
    if (!owner->frames.isEmpty()) {
        const QSet<QAnimationFrame*> kept(list.cbegin(), list.cend());
        for (QAnimationFrame* frame : std::as_const(owner->frames))
            if (!kept.contains(frame) && frame->parent == owner) frame->parent = nullptr;
    }
    owner->frames = list;
    if (owner->currentFrameIndex >= uint(list.size()))
        owner->currentFrameIndex = list.isEmpty() ? 0 : uint(list.size()) - 1;
}

void QAnimations::settleFrame(QAnimationFrame* frame, Settle& settle)
{
    // Of the marks and sets right above a frame the nearest of each kind is the frame's; the others
    // stand in the document without an owner.
    QCollisionBoxes* claimed[4] = {nullptr, nullptr, nullptr, nullptr};
    QList<QInterFrameElement*> marks;
    auto leave = [frame, &settle](QAnimationFrame* old, QCollisionBoxes* set) {
        for (QCollisionBoxes*& slot : old->boxes)
            if (slot == set) slot = nullptr;
        if (old != frame) settle.frame(old);
    };
    for (QTextElement* element = settle.validBefore(frame); element; element = settle.validBefore(element)) {
        const int type = element->type();
        if (type == etCollisionBox || type == etNameComment) continue;
        if (type == etCollisionBoxes) {
            auto* set = static_cast<QCollisionBoxes*>(element);
            const int slot = int(set->clsnType);
            if (!claimed[slot]) {
                claimed[slot] = set;
                if (set->frame && set->frame != frame) leave(set->frame, set);
                set->frame = frame;
            } else if (set->frame) {
                leave(set->frame, set);
                set->frame = nullptr;
            }
            continue;
        }
        if (type == etInterFrame) {
            auto* mark = static_cast<QInterFrameElement*>(element);
            const bool taken =
                std::any_of(marks.cbegin(), marks.cend(), [mark](const QInterFrameElement* other) {
                    return other->markType == mark->markType;
                });
            QAnimationFrame* old = mark->frame;
            if (old && old != frame) {
                old->interFrames.removeOne(mark);
                settle.frame(old);
            }
            if (!taken) {
                marks.append(mark);
                mark->frame = frame;
            } else {
                mark->frame = nullptr;
            }
            continue;
        }
        break;
    }
    for (QCollisionBoxes* old : frame->boxes)
        if (old && old->frame == frame && !holds(claimed, old)) old->frame = nullptr;
    std::copy(std::begin(claimed), std::end(claimed), std::begin(frame->boxes));
    std::reverse(marks.begin(), marks.end());
    for (QInterFrameElement* old : std::as_const(frame->interFrames))
        if (old->frame == frame && !marks.contains(old)) old->frame = nullptr;
    frame->interFrames = marks;
}

void QAnimations::settleSet(QCollisionBoxes* set, Settle& settle)
{
    QList<QCollisionBox*> list;
    for (QTextElement* element = settle.validAfter(set); element; element = settle.validAfter(element)) {
        const int type = element->type();
        if (type == etNameComment) continue;
        if (type != etCollisionBox) break;
        auto* box = static_cast<QCollisionBox*>(element);
        if (box->parent != set) {
            // The set that it leaves counts again, and is rewritten for it.
            if (box->parent) settle.set(box->parent);
            box->parent = set;
        }
        list.append(box);
    }
    if (list == set->boxes) return;
    bool lost = false;
    for (QCollisionBox* box : std::as_const(set->boxes)) {
        if (list.contains(box)) continue;
        lost = true;
        if (box->parent == set) box->parent = nullptr;
    }
    int from = 0;
    while (from < list.size() && from < set->boxes.size() && list.at(from) == set->boxes.at(from))
        ++from;
    set->boxes = list;
    // Boxes read while loading keep their lines; a box that went, or one typed later, renumbers.
    if (rewriteOnLoad || lost) settle.rewrite(set, from);
}

void QAnimations::rewrite(Settle& settle)
{
    QList<QPair<QTextElement*, QString>> writes;
    for (QCollisionBoxes* set : std::as_const(settle.rewrites)) {
        if (!set->valid || set->editor != textEditor) continue;
        // Only a wrong count or index is written over: a line that already says the right number keeps
        // its bytes, whatever its spacing, so that an undo that brings a line back gives back exactly
        // the line that was there.
        static const QRegularExpression count(QStringLiteral("^\\s*clsn\\w*\\s*:\\s*(\\d+)"),
                                              QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression index(QStringLiteral("^\\s*clsn[12]\\s*\\[\\s*(\\d+)\\s*\\]"),
                                              QRegularExpression::CaseInsensitiveOption);
        const QRegularExpressionMatch declared = count.match(set->lineText());
        if (!declared.hasMatch() || declared.captured(1).toInt() != set->boxes.size())
            writes.append({set, set->text()});
        for (int i = settle.rewriteFrom.value(set); i < set->boxes.size(); ++i) {
            QCollisionBox* box = set->boxes.at(i);
            const QRegularExpressionMatch numbered = index.match(box->lineText());
            if (!numbered.hasMatch() || numbered.captured(1).toInt() != i) writes.append({box, box->text()});
        }
    }
    if (writes.isEmpty()) return;
    // Written with the re-read muted: the elements already hold what the lines now say.
    textEditor->beginEdit();
    for (const auto& write : std::as_const(writes))
        write.first->setLine(write.second);
    textEditor->endEdit();
}

void QAnimations::elementWritten(QTextElement* element)
{
    if (element->type() == etAnimation) {
        const int row = int(animations.indexOf(static_cast<QAnimation*>(element)));
        if (row >= 0) emit dataChanged(index(row), index(row), {Qt::DisplayRole});
    }
    emit changed();
    check();
}

// ---- Operations ----

QAnimation* QAnimations::add(int number)
{
    if (!textEditor) return nullptr;
    textEditor->appendLine(QAnimation::headerText(number) + QLatin1Char('\n'));
    return animations.isEmpty() ? nullptr : animations.last();
}

QAnimation* QAnimations::insert(uint index, int number)
{
    if (!textEditor) return nullptr;
    if (index >= uint(animations.size())) return add(number);
    textEditor->insertLineBefore(animations.at(index), QAnimation::headerText(number) + QLatin1Char('\n'),
                                 false);
    return at(index);
}

void QAnimations::remove(uint index)
{
    if (QAnimation* animation = at(index)) animation->remove(true);
}

void QAnimations::clear()
{
    if (textEditor) textEditor->setPlainText(QString());
}

QString QAnimations::spanText(uint index) const
{
    QAnimation* animation = at(index);
    if (!animation) return QString();
    return animation->selectSpan().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void QAnimations::insertText(int position, QString text)
{
    QTextDocument* document = textEditor->document;
    const int end = document->characterCount() - 1;
    position = qBound(0, position, end);
    // A span keeps lines of its own: at the end after a last line with text, elsewhere before the
    // line that stood there.
    if (position == end && !document->lastBlock().text().isEmpty()) text.prepend(QLatin1Char('\n'));
    if (position < end && !text.endsWith(QLatin1Char('\n'))) text.append(QLatin1Char('\n'));
    QElementCursor cursor(textEditor, QTextCursor(document));
    cursor.setPosition(position);
    cursor.insertText(text);
}

void QAnimations::move(int from, uint to)
{
    const int oldCount = count();
    if (!textEditor || from < 0 || from >= oldCount || to >= uint(oldCount)) return;
    beginEdit();
    const QString text = spanText(uint(from));
    animations.at(from)->remove(true);
    const int position = int(to) < oldCount - 1 && int(to) < count()
                             ? animations.at(to)->startPosition()
                             : textEditor->document->characterCount() - 1;
    insertText(position, text);
    endEdit();
}

void QAnimations::duplicate(uint index, uint newNumber)
{
    QAnimation* animation = at(index);
    if (!textEditor || !animation) return;
    QString text = spanText(index);
    if (newNumber != 0xffffffffu)
        text.replace(QStringLiteral("[begin action %1]").arg(animation->number),
                     QAnimation::headerText(int(newNumber)), Qt::CaseInsensitive);
    const int position = index + 1 < uint(animations.size()) ? animations.at(index + 1)->startPosition()
                                                             : textEditor->document->characterCount() - 1;
    insertText(position, text);
}

int QAnimations::findByNumber(int from, int number) const
{
    for (int i = qMax(0, from); i < animations.size(); ++i)
        if (animations.at(i)->number == number) return i;
    return -1;
}

int QAnimations::findByName(int from, const QString& text) const
{
    for (int i = qMax(0, from); i < animations.size(); ++i) {
        const QAnimation* animation = animations.at(i);
        if (QString::number(animation->number) == text || animation->name() == text) return i;
    }
    return -1;
}

void QAnimations::autoOrganize()
{
    if (!textEditor) return;
    beginEdit();
    for (int i = 1; i < count(); ++i) {
        for (int j = 0; j < i; ++j) {
            if (animations.at(i)->number < animations.at(j)->number) {
                move(i, uint(j));
                break;
            }
        }
    }
    endEdit();
}

void QAnimations::copy(uint index) const
{
    // The clipboard belongs to a GUI application; the command-line tool has none.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()) || !at(index)) return;
    QGuiApplication::clipboard()->setText(spanText(index).trimmed());
}

bool QAnimations::paste(uint index)
{
    if (!textEditor || !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return false;
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty()) return false;
    beginEdit();
    if (QAnimation* animation = insert(qMin(index, uint(animations.size())), 0)) animation->replaceSpan(text);
    endEdit();
    return true;
}

void QAnimations::beginEdit()
{
    if (textEditor) textEditor->beginEdit();
}

void QAnimations::endEdit()
{
    if (textEditor) textEditor->endEdit();
}

bool QAnimations::fromFile(const QString& path, int codepage)
{
    QSyntaxTextEditor* file = textFile();
    if (!file) return false;
    rewriteOnLoad = false;
    const bool loaded = file->fromFile(path, uint(codepage));
    rewriteOnLoad = true;
    if (loaded) check();
    return loaded;
}

void QAnimations::fromText(const QString& text)
{
    if (!textEditor) return;
    clear();
    rewriteOnLoad = false;
    textEditor->setPlainText(text);
    textEditor->document->setModified(false);
    rewriteOnLoad = true;
    check();
}

bool QAnimations::toFile(const QString& path)
{
    QSyntaxTextEditor* file = textFile();
    return file && file->toFile(path);
}

// ---- Project file ----

bool QAnimations::canSave(quint32)
{
    if (!animations.isEmpty()) return true;
    QUserDialogs::warning(tr("Save AIR"),
                          tr("You can't save an empty AIR because M.U.G.E.N. will not open it."));
    return false;
}

bool QAnimations::canDiscard()
{
    if (!isModified()) return true;
    return QUserDialogs::question(
               tr("Discard changes"), tr("Do you really want to discard the changes made in the animations?"),
               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) == QUserDialogs::Yes;
}

bool QAnimations::isModified()
{
    return textEditor && textEditor->document->isModified();
}

bool QAnimations::isEmpty()
{
    return animations.isEmpty();
}

void QAnimations::check()
{
    // The text's faults are the syntax layer's to report; the model itself has none to add.
    messages()->begin();
    messages()->end();
}

// ---- List model ----

int QAnimations::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(animations.size());
}

QVariant QAnimations::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= animations.size()) return QVariant();
    const QAnimation* animation = animations.at(index.row());
    const QString name = animation->name();
    if (name.isEmpty()) return QString::number(animation->number);
    return QStringLiteral("%1 - %2").arg(animation->number).arg(name);
}
