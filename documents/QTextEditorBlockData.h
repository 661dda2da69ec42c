#pragma once

#include <QTextBlock>
#include <QTextBlockUserData>

class QTextElement;

// What a text block remembers. Every user data set on the blocks of an element document is of this
// class: the element side keeps the element of the line here, the syntax side its own findings.
class QTextEditorBlockData : public QTextBlockUserData
{
public:
    QTextEditorBlockData() = default;
    ~QTextEditorBlockData() override;

    // The data of the block, made on first need.
    static QTextEditorBlockData* of(QTextBlock block);
    // The element on the block, or null; never makes data.
    static QTextElement* elementOf(const QTextBlock& block)
    {
        auto* data = static_cast<QTextEditorBlockData*>(block.userData());
        return data ? data->element : nullptr;
    }

    // The element on this line, or null.
    QTextElement* element = nullptr;
};
