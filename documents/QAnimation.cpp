#include "QAnimation.h"

#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QElementTextEditor.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int QAnimation::type() const
{
    return etAnimation;
}

void QAnimation::release()
{
    QGroupHeader::release();
    for (QAnimationFrame* frame : std::as_const(frames))
        if (frame->parent == this) frame->parent = nullptr;
    frames.clear();
    number = 0;
    currentFrameIndex = 0;
    QTextElementPool<QAnimation>::release(this);
}

void QAnimation::parse(const QList<QTextToken*>& tokens)
{
    number = tokens.at(3)->text.toInt();
}

QString QAnimation::headerText(int number)
{
    return QStringLiteral("[Begin Action %1]").arg(number);
}

void QAnimation::setNumber(int value)
{
    if (!editor || value == number) return;
    number = value;
    setLine(headerText(number));
    if (QAnimations* model = QAnimations::modelOf(editor)) model->elementWritten(this);
}

void QAnimation::setName(const QString& text)
{
    if (!editor) return;
    QElementTextEditor* owner = editor;
    QGroupHeader::setName(text);
    if (QAnimations* model = QAnimations::modelOf(owner)) model->elementWritten(this);
}

QAnimationFrame* QAnimation::frameAt(uint index) const
{
    return index < uint(frames.size()) ? frames.at(index) : nullptr;
}

QAnimationFrame* QAnimation::frameAdd()
{
    if (!editor) return nullptr;
    if (frames.isEmpty())
        editor->insertLineAfter(this, QAnimationFrame::newFrameText(), true);
    else
        editor->insertLineAfter(frames.last(), QAnimationFrame::newFrameText(), false);
    return frames.isEmpty() ? nullptr : frames.last();
}

QAnimationFrame* QAnimation::frameInsert(uint index)
{
    if (!editor) return nullptr;
    if (index >= uint(frames.size())) return frameAdd();
    editor->insertLineBefore(frames.at(index), QAnimationFrame::newFrameText(), false);
    return frameAt(index);
}
