#pragma once

#include "QSnippet.h"

#include <QPointer>

class QWidget;

// One field of the snippet insert dialog: it makes the input widget for its kind and reads back the
// text that replaces its placeholder.
class QSnipField
{
public:
    explicit QSnipField(const QSnippetField& field) : m_field(field) {}
    virtual ~QSnipField();

    QString name() const { return m_field.name; }
    // The label, translated.
    QString title() const;
    int column() const { return qBound(0, m_field.column, QSnippet::MaxColumn); }
    QWidget* widget() const { return m_widget; }

    QWidget* createWidget(QWidget* parent);
    virtual QString value() const = 0;

    // The field for the kind the description names; an unknown kind is taken as a string.
    static QSnipField* create(const QSnippetField& field);

protected:
    virtual QWidget* makeWidget(QWidget* parent) = 0;
    const QSnippetField m_field;

private:
    QPointer<QWidget> m_widget;
};
