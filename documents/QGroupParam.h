#pragma once

#include "QTextElement.h"

#include <QVariant>

class QParamGroup;

// A "key = value" line. Its recogniser gives it the key as registered, the id and the value kind; the
// section that it belongs to is set by the document's binding of parameters to groups.
class QGroupParam : public QTextElement
{
    Q_OBJECT
public:
    // The key as registered, not as typed.
    QString name;
    int kind = 0;
    int id = 0;
    // The section whose live parameter this is, or null (outside a parameter section, or a later
    // duplicate of a key in its section).
    QParamGroup* group = nullptr;
    // The id under which it joined group; differs from id only while a retyped key is re-bound.
    int boundId = 0;

    int type() const override;
    // The value kind.
    int subType() const override;
    void release() override;
    // Takes the key from the first token (a retyped key of the same kind gets its new name and id),
    // then the value.
    void parse(const QList<QTextToken*>& tokens) final;

    virtual QVariant value() const = 0;

protected:
    virtual void parseValue(const QList<QTextToken*>& tokens) = 0;
    // Puts the value fields back to their empty state; release() calls it.
    virtual void clearValue() = 0;
    // Hands the element back to its class's pool.
    virtual void releaseToPool() = 0;
};
