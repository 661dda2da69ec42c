#pragma once

#include <QPlainTextDocumentLayout>

class QTextBlock;

// The layout of a document shown in a code editor. Folding hides lines: a hidden block takes no line
// of the document, so the scroll range and the line under a point skip it. Hiding many blocks at once
// is followed by one relayout notice (endHiding), not one per block.
class QTextDocLayout : public QPlainTextDocumentLayout
{
    Q_OBJECT
public:
    explicit QTextDocLayout(QTextDocument* document);

    static void setBlockHidden(QTextBlock block, bool hidden);
    // Tells the views that the height of the document and every line below the change may have moved.
    void endHiding();

    // The layout of the document, replacing a layout of another kind; a document shown in a second
    // editor keeps the layout it has, and with it the folds.
    static QTextDocLayout* install(QTextDocument* document);
};
