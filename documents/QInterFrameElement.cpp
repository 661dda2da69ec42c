#include "QInterFrameElement.h"

#include "QAnimationFrame.h"
#include "QTextElementPool.h"
#include "QTextElementType.h"

int QInterFrameElement::type() const
{
    return etInterFrame;
}

void QInterFrameElement::release()
{
    if (frame) frame->interFrames.removeOne(this);
    frame = nullptr;
    markType = QInterFrameElementType::LoopStart;
    QTextElementPool<QInterFrameElement>::release(this);
}

void QInterFrameElement::parse(const QList<QTextToken*>& tokens)
{
    if (tokens.at(0)->text.compare(QLatin1String("loopstart"), Qt::CaseInsensitive) == 0) {
        markType = QInterFrameElementType::LoopStart;
        return;
    }
    const QString what = tokens.at(1)->text.toLower();
    if (what == QLatin1String("blend"))
        markType = QInterFrameElementType::InterpolateBlend;
    else if (what == QLatin1String("offset"))
        markType = QInterFrameElementType::InterpolateOffset;
    else if (what == QLatin1String("scale"))
        markType = QInterFrameElementType::InterpolateScale;
    else
        markType = QInterFrameElementType::InterpolateAngle;
}

QString QInterFrameElement::textOf(QInterFrameElementType markType)
{
    switch (markType) {
    case QInterFrameElementType::LoopStart:
        break;
    case QInterFrameElementType::InterpolateBlend:
        return QStringLiteral("Interpolate Blend");
    case QInterFrameElementType::InterpolateOffset:
        return QStringLiteral("Interpolate Offset");
    case QInterFrameElementType::InterpolateScale:
        return QStringLiteral("Interpolate Scale");
    case QInterFrameElementType::InterpolateAngle:
        return QStringLiteral("Interpolate Angle");
    }
    return QStringLiteral("LoopStart");
}
