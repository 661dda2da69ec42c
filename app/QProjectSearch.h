#pragma once

#include "QProjectTypes.h"
#include "QQuickFindOption.h"

#include <QList>
#include <QTextCursor>

class QProject;
class QSyntaxTextEditor;

// Find and replace over the text files of a project as the editors show them: the definitions, the
// commands, then every state file in the project's order.
class QProjectSearch
{
public:
    struct File
    {
        QSyntaxTextEditor* text = nullptr;
        QProjectFileType type = pftDefinitions;
        int fileIndex = 0;
    };
    struct Hit
    {
        File file;
        QTextCursor cursor;
        bool isNull() const { return cursor.isNull(); }
    };

    static QList<File> files(const QProject* project);

    // The next hit from a cursor in the shown file, going on through the files after it (before it,
    // backward). Circular lets the walk pass the last file to the first and come back to the shown
    // file's part before the cursor. Without a shown file of the project the walk starts at the edge.
    static Hit find(const QProject* project, const QSyntaxTextEditor* shown, const QTextCursor& from,
                    const QString& text, const QQuickFindOptions& options);

    // Replaces every hit in every file that may be edited, each file in one undo step. Answers the
    // count; files receives how many files changed.
    static int replaceAll(const QProject* project, const QString& source, const QString& dest,
                          const QQuickFindOptions& options, int* files = nullptr);
};
