#pragma once

#include "QElementCursor.h"
#include "QTextElementChange.h"
#include "QTextToken.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QTextBlock>
#include <QTextDocument>

class QTextElement;
class QTextElementReg;
class QTextScanner;
struct QTextLineTokens;

// The owner of a text document whose lines carry elements. It keeps all elements of the document in
// one list in line order, re-reads only the lines that an edit touched, and reports what appeared,
// vanished or changed to its models through update().
//
// Models enable the kinds of lines they want with setTypeEnabled(), connect update() and updated(),
// and write through the guarded operations (QElementCursor, QTextElement::setLine, insertLine...).
class QElementTextEditor : public QObject
{
    Q_OBJECT
public:
    // With connected set, every edit of the document is re-read; without, only the guarded operations
    // and rescan() touch the elements.
    explicit QElementTextEditor(bool connected = true, QObject* parent = nullptr);
    ~QElementTextEditor() override;

    QTextDocument* document = nullptr;
    // The document's own guarded cursor.
    QElementCursor cursor;
    // While above 0, contentsChanged() does nothing.
    int ignore = 0;
    int editDepth = 0;
    // What the closing endEdit() will tell through updated().
    bool pendingCountChange = false;
    QTextElement* firstElement = nullptr;
    // How many models want each (element type, sub type).
    QMap<QPair<int, int>, int> typeCounts;

    QTextElement* lastElement() const { return tail; }

    void setTypeEnabled(bool on, int type, int subType = 0);
    bool isTypeEnabled(int type, int subType = 0) const;

    // Groups edits into one undo step and one updated() signal; they nest.
    void beginEdit();
    void endEdit();

    // Re-reads every line: adds and removes elements, leaving those whose kind still fits untouched.
    // A model calls it after enabling its kinds on a document that already holds text.
    void rescan();
    // Replaces the whole text and re-reads it in one pass. The removed elements are reported already
    // out of the list, with no neighbours.
    void setPlainText(const QString& text);
    // True while update() reports a whole new text: every element of the document is in the change
    // list, so that a model may read the document afresh instead of following each change.
    bool isReloading() const { return reloading; }

    // New lines, each through the guarded cursor. insertLineBefore at the top of the document leaves
    // an empty first line.
    void appendLine(const QString& text);
    void insertLineAfter(QTextElement* element, const QString& text, bool ownBlock = false);
    void insertLineBefore(QTextElement* element, const QString& text, bool ownBlock = false);

    // The element on a line, or null.
    static QTextElement* elementAt(const QTextBlock& block);

    // Told by a line's data when Qt deletes it while it held an element of this document.
    void blockDataLost() { ++lostData; }

Q_SIGNALS:
    // The changes of one edit, in the order found. Elements reported removed have valid false and are
    // released when every slot has returned.
    void update(QElementTextEditor* editor, QList<QTextElementChange>& changes);
    // After an edit, or after the outermost endEdit(): whether elements came or went.
    void updated(bool countChanged);

public Q_SLOTS:
    // Re-reads the lines of one edit; connected to QTextDocument::contentsChange.
    void contentsChanged(int position, int charsRemoved, int charsAdded);

protected:
    // Emits update(); a subclass may act before the models hear of the changes, or instead of it.
    virtual void emitUpdate(QList<QTextElementChange>& changes);

private:
    const QList<QTextElementReg*>& enabledRecognisers();
    QTextElementReg* findRecogniser(const QTextBlock& block, QTextScanner& scanner, int kind,
                                    QTextLineTokens& tokens);
    void findLostElements(const QTextBlock& first, const QTextBlock& last,
                          QList<QTextElementChange>& changes);
    void lose(QTextElement* element, QList<QTextElementChange>& changes);
    QTextElement* elementAbove(const QTextBlock& block) const;
    QTextElement* bind(QTextElementReg* reg, const QTextBlock& block, QTextElement* predecessor,
                       const QList<QTextToken*>& tokens);
    void link(QTextElement* element, QTextElement* predecessor);
    void releaseElement(QTextElement* element);
    void releaseRemoved(const QList<QTextElementChange>& changes);
    void report(QList<QTextElementChange>& changes, bool wholeText);
    void finishPass(bool structureChanged);

    QTextElement* tail = nullptr;
    int lostData = 0;
    bool reloading = false;
    QList<QTextElementReg*> enabled;
    int enabledGeneration = -1;
};
