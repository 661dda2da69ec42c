#pragma once

#include "QTextElement.h"
#include "QTextElementChange.h"

class QNameComment;

// An element that opens a section: its span runs from the comment lines above it to the line before
// the next section, and a comment line right above it may name it.
class QGroupHeader : public QTextElement
{
    Q_OBJECT
public:
    // The comment line that names the section, or null.
    QNameComment* nameElement = nullptr;

    int flags() const override;
    int firstLine() const override;
    int lastLine() const override;
    // Drops the link to the name comment; subclasses call it, then give themselves back to their pool.
    void release() override = 0;

    QString name() const;
    // An empty text removes the name comment's line; otherwise the line is rewritten, or a new comment
    // line goes in above the header.
    void setName(const QString& text);

    // Binds name comments to headers for one change list: a header added below a name comment takes
    // it; a removed header hands its comment to the next header; a removed comment leaves its header.
    static void bindNames(const QList<QTextElementChange>& changes);
};
