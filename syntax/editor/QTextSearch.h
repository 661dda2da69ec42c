#pragma once

#include "QQuickFindOption.h"

#include <QTextCursor>

class QTextDocument;

// Searching and replacing in one document with the switches of the search bar. The single-file
// editor and the search over a whole project share it, so that both find exactly the same hits.
class QTextSearch
{
public:
    // The next hit from a cursor in the direction of the options; null when there is none. Circular is
    // left to the caller: one file wraps around itself, a project goes on with the next file.
    static QTextCursor find(const QTextDocument* document, const QString& text,
                            const QQuickFindOptions& options, const QTextCursor& from);
    // The first hit from the start of the document, or from its end when searching backward.
    static QTextCursor findFromEdge(const QTextDocument* document, const QString& text,
                                    const QQuickFindOptions& options);
    // Whether a selected text is a whole hit of the search.
    static bool isHit(const QString& selected, const QString& text, const QQuickFindOptions& options);
    // Replaces every hit from the start, forward whatever the direction, in one step that one undo
    // takes back. Answers how many were replaced; last receives the cursor after the last one.
    static int replaceAll(QTextDocument* document, const QString& source, const QString& dest,
                          const QQuickFindOptions& options, QTextCursor* last = nullptr);
};
