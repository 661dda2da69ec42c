#pragma once

#include "QGroupHeader.h"

// A section that nothing else recognises. It holds nothing, but it ends the section above it, so that
// the lines below it bind to no other section.
class QUnknownGroup : public QGroupHeader
{
    Q_OBJECT
public:
    int type() const override;
    void release() override;
    void parse(const QList<QTextToken*>& tokens) override;
};
