#pragma once

#include "QProjectFile.h"
#include "QTextElementChange.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>

class QAnimation;
class QAnimationFrame;
class QCollisionBox;
class QCollisionBoxes;
class QElementTextEditor;
class QSyntaxTextEditor;
class QTextElement;

// The model of an animation file (AIR): a list of actions for views and the organizer. Everything it
// knows stands in the lines of the text document that it is bound to: each action, frame, mark, box
// set and box is an element on its own line, and a setter rewrites exactly that line. Typing in the
// text reaches update(), which keeps the links between the elements in step.
class QAnimations : public QAbstractListModel, public QProjectFile
{
    Q_OBJECT
public:
    explicit QAnimations(QProjectContext* project = nullptr, QObject* parent = nullptr);
    ~QAnimations() override;

    // The actions in line order.
    QList<QAnimation*> animations;
    int currentIndex = 0;
    // False only while a file loads: box lines and counts are then left as they are written.
    bool rewriteOnLoad = true;

    QElementTextEditor* editor() const { return textEditor; }
    // The bound document as the file it is loaded from and saved to, or null when it is a bare one.
    QSyntaxTextEditor* textFile() const;
    // Binds the model to a document (or unbinds it with nullptr) and reads what the document holds.
    void setEditor(QElementTextEditor* editor);
    // The model bound to a document, or null.
    static QAnimations* modelOf(const QElementTextEditor* editor);

    int count() const { return int(animations.size()); }
    QAnimation* at(uint index) const;

    // Appends "[Begin Action n]" and an empty line; the last action.
    QAnimation* add(int number);
    // The same text before the action at index (or appended); the action then at index.
    QAnimation* insert(uint index, int number);
    void remove(uint index);
    void clear();
    void move(int from, uint to);
    // Copies the action's span behind it, renumbered unless newNumber is 0xffffffff.
    void duplicate(uint index, uint newNumber);
    int findByNumber(int from, int number) const;
    // The first action at or after from whose number in decimal, or whose name, equals text.
    int findByName(int from, const QString& text) const;
    // Sorts the actions by number, moving whole spans; equal numbers keep their order.
    void autoOrganize();
    void copy(uint index) const;
    bool paste(uint index);

    void beginEdit();
    void endEdit();

    // Loads a file into the bound text file, as that reads it; box lines and counts stay as the file has
    // them. False when the document is not a text file or the file can't be read.
    bool fromFile(const QString& path, int codepage = 0);
    // Loads a text the same way.
    void fromText(const QString& text);
    // Saves the bound text file: lines not edited keep their bytes, so an untouched file comes back
    // byte for byte.
    bool toFile(const QString& path);
    // The text of an action's span, with LF line ends.
    QString spanText(uint index) const;

    bool canSave(quint32 version) override;
    bool canDiscard() override;
    bool isModified() override;
    bool isEmpty() override;
    void check() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // Told by an element after a setter wrote its line.
    void elementWritten(QTextElement* element);

Q_SIGNALS:
    void changed();
    void updated(bool countChanged);

public Q_SLOTS:
    void update(QElementTextEditor* editor, QList<QTextElementChange>& changes);

private:
    struct Settle;

    void attach();
    void detach();
    void animationsAdded(const QList<QAnimation*>& added);
    void rebuildSection(QTextElement* header, Settle& settle);
    void settleFrame(QAnimationFrame* frame, Settle& settle);
    void settleSet(QCollisionBoxes* set, Settle& settle);
    void rewrite(Settle& settle);
    void finishUpdate(Settle& settle);
    void readAfresh(Settle& settle);
    static void claimRun(QAnimationFrame* frame, const QList<QTextElement*>& run);
    void insertText(int position, QString text);

    QPointer<QElementTextEditor> textEditor;
};
