#include "QTextDocLayout.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

QTextDocLayout::QTextDocLayout(QTextDocument* document) : QPlainTextDocumentLayout(document) {}

void QTextDocLayout::setBlockHidden(QTextBlock block, bool hidden)
{
    if (!block.isValid() || block.isVisible() != hidden) return;
    block.setVisible(!hidden);
    // The document counts its lines from the blocks' line counts; a block that was never laid out still
    // stands for one line.
    block.setLineCount(hidden ? 0 : qMax(1, block.layout()->lineCount()));
}

void QTextDocLayout::endHiding()
{
    requestUpdate();
    emit documentSizeChanged(documentSize());
}

QTextDocLayout* QTextDocLayout::install(QTextDocument* document)
{
    if (auto* own = qobject_cast<QTextDocLayout*>(document->documentLayout())) return own;
    auto* layout = new QTextDocLayout(document);
    // The document deletes the layout it had; an element document keeps hearing every edit through this
    // one, which reports contentsChange as the null layout did.
    document->setDocumentLayout(layout);
    return layout;
}
