#pragma once

#include "QGroupHeader.h"
#include "QTextElementChange.h"

class QGroupParam;

// A section whose lines are parameters: one live parameter per id, in line order. The first of
// duplicate keys is the live one; when it goes, the next one below takes its place.
class QParamGroup : public QGroupHeader
{
    Q_OBJECT
public:
    QList<QGroupParam*> params;

    int flags() const override;
    void release() override = 0;

    // Told once per change list with the parameters that joined or left the section.
    virtual void paramsAdded(QList<QGroupParam*>& added);
    virtual void paramsRemoved(QList<QGroupParam*>& removed);

    QGroupParam* find(const QString& name) const;
    QGroupParam* find(int id) const;
    // The text of the parameter with this id when it is a string, identifier or file; else fallback.
    QString value(int id, const QString& fallback = QString()) const;

    // Binds parameters to sections for one change list, in list order, and tells each section what
    // joined and left it. Documents call it before their models hear of the changes.
    static void bindParams(const QList<QTextElementChange>& changes);

protected:
    // Drops every parameter; subclasses call it from release().
    void releaseParams();
};
