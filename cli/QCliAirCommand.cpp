#include "QCliAirCommand.h"

#include "QAirDocument.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QCollisionBox.h"
#include "QCollisionBoxes.h"
#include "QInterFrameElement.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char* const slotNames[] = {"Clsn1", "Clsn2", "Clsn1", "Clsn2"};

QString flipText(int flip)
{
    switch (flip & 3) {
    case 1:
        return QStringLiteral("V");
    case 2:
        return QStringLiteral("H");
    case 3:
        return QStringLiteral("HV");
    default:
        return QStringLiteral("none");
    }
}

QString blendText(const QAnimationFrame* frame)
{
    switch (frame->blend) {
    case QAnimationFrameBlend::Addition:
        return QStringLiteral("add");
    case QAnimationFrameBlend::Subtraction:
        return QStringLiteral("subtract");
    default:
        return QStringLiteral("none");
    }
}

QJsonObject frameJson(const QAnimationFrame* frame)
{
    QJsonArray marks;
    for (const QInterFrameElement* mark : frame->interFrames)
        marks.append(QInterFrameElement::textOf(mark->markType));
    QJsonArray boxes;
    for (int slot = 0; slot < 4; ++slot) {
        const QCollisionBoxes* set = frame->boxes[slot];
        if (!set) continue;
        for (int i = 0; i < set->boxes.size(); ++i) {
            const QCollisionBox* box = set->boxes.at(i);
            boxes.append(QJsonObject{{QStringLiteral("slot"), QLatin1String(slotNames[slot])},
                                     {QStringLiteral("default"), slot >= 2},
                                     {QStringLiteral("index"), i},
                                     {QStringLiteral("x1"), box->x1},
                                     {QStringLiteral("y1"), box->y1},
                                     {QStringLiteral("x2"), box->x2},
                                     {QStringLiteral("y2"), box->y2}});
        }
    }
    QJsonObject blend{{QStringLiteral("mode"), blendText(frame)}};
    if (frame->blend == QAnimationFrameBlend::Addition) {
        blend[QStringLiteral("source")] = frame->blendTarget.source;
        blend[QStringLiteral("destination")] = frame->blendTarget.destination;
    }
    return QJsonObject{{QStringLiteral("group"), frame->spriteGroup},
                       {QStringLiteral("index"), frame->spriteIndex},
                       {QStringLiteral("x"), frame->offsetX},
                       {QStringLiteral("y"), frame->offsetY},
                       {QStringLiteral("time"), frame->time},
                       {QStringLiteral("flip"), flipText(frame->flip)},
                       {QStringLiteral("blend"), blend},
                       {QStringLiteral("scaleX"), frame->scaleX},
                       {QStringLiteral("scaleY"), frame->scaleY},
                       {QStringLiteral("angle"), frame->angle},
                       {QStringLiteral("marks"), marks},
                       {QStringLiteral("boxes"), boxes}};
}

void printFrame(QTextStream& out, int index, const QAnimationFrame* frame)
{
    QString blend = blendText(frame);
    if (frame->blend == QAnimationFrameBlend::Addition)
        blend += QStringLiteral(" %1/%2").arg(frame->blendTarget.source).arg(frame->blendTarget.destination);
    out << "  frame " << index << ": sprite " << frame->spriteGroup << ',' << frame->spriteIndex << " offset "
        << frame->offsetX << ',' << frame->offsetY << " time " << frame->time << " flip "
        << flipText(frame->flip) << " blend " << blend << " scale " << frame->scaleX << ',' << frame->scaleY
        << " angle " << frame->angle;
    for (const QInterFrameElement* mark : frame->interFrames)
        out << " [" << QInterFrameElement::textOf(mark->markType) << ']';
    out << '\n';
    for (int slot = 0; slot < 4; ++slot) {
        const QCollisionBoxes* set = frame->boxes[slot];
        if (!set) continue;
        for (int i = 0; i < set->boxes.size(); ++i) {
            const QCollisionBox* box = set->boxes.at(i);
            out << "    " << slotNames[slot] << (slot >= 2 ? " default" : "") << '[' << i << "] = " << box->x1
                << ", " << box->y1 << ", " << box->x2 << ", " << box->y2 << '\n';
        }
    }
}

} // namespace

QString QCliAirCommand::summary() const
{
    return QStringLiteral("list the actions, frames and collision boxes of an AIR file");
}

QString QCliAirCommand::usage() const
{
    return QStringLiteral("tavrel-cli air list FILE [--json]");
}

int QCliAirCommand::run(QCliContext& context)
{
    const bool json = context.takeFlag(QStringLiteral("--json"));
    if (context.arguments.value(0) != QLatin1String("list") || context.arguments.size() != 2)
        return context.usageError(QStringLiteral("air: expected 'list' and one file"), usage());
    const QString file = context.arguments.at(1);
    if (!QFileInfo(file).isFile()) return context.fail(file, QStringLiteral("no such file"));

    QAirDocument document;
    const QAnimations& model = document.model;
    if (!document.model.fromFile(file)) return context.fail(file, QStringLiteral("can't be read"));

    if (json) {
        QJsonArray actions;
        for (const QAnimation* animation : std::as_const(model.animations)) {
            QJsonArray frames;
            for (const QAnimationFrame* frame : animation->frames)
                frames.append(frameJson(frame));
            actions.append(QJsonObject{{QStringLiteral("number"), animation->number},
                                       {QStringLiteral("name"), animation->name()},
                                       {QStringLiteral("frames"), frames}});
        }
        context.out << QJsonDocument(
                           QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("actions"), actions}})
                           .toJson(QJsonDocument::Indented);
    } else {
        for (const QAnimation* animation : std::as_const(model.animations)) {
            context.out << "action " << animation->number;
            if (!animation->name().isEmpty()) context.out << " \"" << animation->name() << '"';
            context.out << " (" << animation->frameCount() << " frames)\n";
            for (int i = 0; i < animation->frameCount(); ++i)
                printFrame(context.out, i, animation->frames.at(i));
        }
    }
    return CliSuccess;
}
