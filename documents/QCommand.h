#pragma once

#include "QParamGroup.h"

class QCommandParam;
class QStringParam;

// A "[Command]" section: its "name" and "command" lines are its parameters, found by name.
class QCommand : public QParamGroup
{
    Q_OBJECT
public:
    // Set when parameters joined or left since the commands model last looked.
    bool paramsChanged = false;

    int type() const override;
    void release() override;
    void paramsAdded(QList<QGroupParam*>& added) override;
    void paramsRemoved(QList<QGroupParam*>& removed) override;
    void parse(const QList<QTextToken*>& tokens) override;

    // The quoted value of the "name" line; empty without one.
    QString name() const;
    // Rewrites the "name" line, or adds one below the header.
    void setName(const QString& name);
    // The steps as text; with raw, the value as the line writes it.
    QString command(bool raw = false) const;
    // Writes the line "command = " with the text, or adds one below the name. With reparse the steps
    // are read again from the new line, which is what a caller wants unless it set them itself.
    void setCommand(const QString& text, bool reparse = true);
    // The number of steps.
    int length() const;

    QStringParam* nameParam() const;
    QCommandParam* commandParam() const;
};
