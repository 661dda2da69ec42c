#include "QTextDocLayout.h"

#include "QTextEditorBlockData.h"

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
    // Qt frees every block's user data along with the old layout. The checkers and the element side
    // read the whole text again, but which line of the file each block was read from would be lost, and
    // saving needs it to write the lines nobody edited with their own bytes.
    QList<int> sourceLines;
    sourceLines.reserve(document->blockCount());
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        sourceLines << (data ? data->sourceLine : -1);
    }
    // The document deletes the layout it had; an element document keeps hearing every edit through this
    // one, which reports contentsChange as the null layout did.
    document->setDocumentLayout(layout);
    int index = 0;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next(), ++index)
        if (sourceLines.value(index, -1) >= 0)
            QTextEditorBlockData::of(block)->sourceLine = sourceLines.at(index);
    return layout;
}
