#pragma once

#include <QAbstractItemModel>

// The outline of a text: a tree model rebuilt from the whole text after a pause in typing. It answers
// which line an item stands on and the reverse, and what sections and values the text holds (scripts
// ask the same).
class QSyntaxHierarchy : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit QSyntaxHierarchy(QObject* parent = nullptr);
    ~QSyntaxHierarchy() override;

    // Rebuilds the tree from the whole text and emits updated().
    virtual void update(const QString& text) = 0;
    // The text line of an item.
    virtual int lineForIndex(const QModelIndex& index) const = 0;
    // The item that holds a text line.
    virtual QModelIndex indexForLine(int line) const = 0;
    // Whether a section of that name exists; names compare without regard to case.
    virtual bool sectionExists(const QString& name) const = 0;
    // The value text of a key in a section, or an empty text.
    virtual QString findValue(const QString& section, const QString& key) const = 0;
    // What the tree shows; languages with several views of their outline swap the visible tree.
    virtual void setMode(int mode);

    int mode() const { return m_mode; }

Q_SIGNALS:
    void updated();

protected:
    int m_mode = 0;
};
