#include "QTextEditorBlockData.h"

#include "QElementTextEditor.h"
#include "QTextElement.h"

QTextEditorBlockData::~QTextEditorBlockData()
{
    // Qt drops the data of a deleted line: the element of that line is now unreachable from the blocks,
    // and its document has to look for it on the next pass.
    if (element && element->editor) element->editor->blockDataLost();
}

QTextEditorBlockData* QTextEditorBlockData::of(QTextBlock block)
{
    auto* data = static_cast<QTextEditorBlockData*>(block.userData());
    if (!data) {
        data = new QTextEditorBlockData;
        block.setUserData(data);
    }
    return data;
}
