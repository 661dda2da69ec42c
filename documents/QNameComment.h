#pragma once

#include "QTextElement.h"

class QGroupHeader;

// A comment line followed, past empty lines, by a section header: the header's name.
class QNameComment : public QTextElement
{
    Q_OBJECT
public:
    // The header that it names, or null.
    QGroupHeader* owner = nullptr;
    // The comment, trimmed.
    QString text;

    int type() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;
};
