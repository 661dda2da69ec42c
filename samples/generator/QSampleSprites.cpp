#include "QSampleSprites.h"

#include "QSamplePalettes.h"
#include "QSprite.h"
#include "QSprites.h"

QSampleSprites::QSampleSprites()
{
    using P = QSamplePose;
    for (int phase = 0; phase < 4; ++phase)
        add(0, phase, QSampleFigure::draw(P::stand(phase)));
    add(5, 0, QSampleFigure::draw(P::turn(false)));
    add(6, 0, QSampleFigure::draw(P::turn(true)));
    add(10, 0, QSampleFigure::draw(P::crouch(0.5)));
    add(11, 0, QSampleFigure::draw(P::crouch(1)));
    for (int phase = 0; phase < 4; ++phase)
        add(20, phase, QSampleFigure::draw(P::walk(phase)));
    add(40, 0, QSampleFigure::draw(P::jump(0)));
    for (int phase = 1; phase < 4; ++phase)
        add(41, phase - 1, QSampleFigure::draw(P::jump(phase)));
    for (int phase = 0; phase < 4; ++phase)
        add(100, phase, QSampleFigure::draw(P::run(phase)));
    for (int kind = 0; kind < 3; ++kind)
        add(120 + kind, 0, QSampleFigure::draw(P::guard(kind)));
    for (int phase = 0; phase < 3; ++phase)
        add(200, phase, QSampleFigure::draw(P::punch(phase)));
    for (int phase = 0; phase < 3; ++phase)
        add(210, phase, QSampleFigure::draw(P::kick(phase)));
    for (int phase = 0; phase < 2; ++phase)
        add(400, phase, QSampleFigure::draw(P::crouchPunch(phase)));
    for (int phase = 0; phase < 2; ++phase)
        add(600, phase, QSampleFigure::draw(P::airKick(phase)));
    for (int phase = 0; phase < 3; ++phase)
        add(1000, phase, QSampleFigure::draw(P::rush(phase)));

    // The get-hit sprites: groups of three weights or variants, indices in steps of ten.
    for (int variant = 0; variant < 3; ++variant)
        for (int step = 0; step < 3; ++step) {
            const double strength = step + 0.6 * variant;
            add(5000 + variant, 10 * step, QSampleFigure::draw(P::hitHigh(strength)));
            add(5010 + variant, 10 * step, QSampleFigure::draw(P::hitLow(strength)));
        }
    for (int step = 0; step < 3; ++step)
        add(5020, 10 * step, QSampleFigure::draw(P::hitCrouching(step)));
    for (int variant = 0; variant < 3; ++variant)
        for (int step = 0; step < 6; ++step)
            add(5030 + variant, 10 * step, QSampleFigure::draw(P::hitInAir(step, variant)));
    for (int variant = 0; variant < 3; ++variant)
        for (int step = 0; step < 3; ++step)
            add(5040 + variant, 10 * step, QSampleFigure::draw(P::lying(step, variant)));
    for (int variant = 0; variant < 3; ++variant)
        for (int step = 0; step < 2; ++step)
            add(5060 + variant, 10 * step, QSampleFigure::draw(P::fallen(step, variant)));
    for (int variant = 0; variant < 3; ++variant)
        for (int step = 0; step < 3; ++step)
            add(5070 + variant, 10 * step, QSampleFigure::draw(P::tripped(step, variant)));

    add(9000, 0, QSampleFigure::portrait(QSize(25, 25), 1.1));
    add(9000, 1, QSampleFigure::portrait(QSize(120, 140), 3.6));
}

void QSampleSprites::add(int group, int index, const QSampleDrawing& drawing)
{
    order.append({group, index});
    drawings.insert({group, index}, drawing);
}

bool QSampleSprites::fill(QSprites& sprites, QString* problem) const
{
    sprites.beginChanges();
    for (int number = 1; number <= QSamplePalettes::Count; ++number) {
        const QSamplePalettes::Table table = QSamplePalettes::table(number);
        sprites.addPalette(table.data(), QSpritePaletteShareMode::Share, 1, number);
    }
    const QVector<QRgb> colours = QSamplePalettes::rgb(1);
    for (const QPair<int, int>& item : order) {
        const QSampleDrawing picture = drawings.value(item);
        QImage image = picture.image;
        image.setColorTable(colours);
        QSprite* sprite = sprites.add();
        sprite->setFields(nullptr, item.first, item.second, picture.axis.x(), picture.axis.y(), 0);
        sprite->setImage(image, QSpriteShareMode::Share, false, QSpritePaletteMode::SwapPalette,
                         QSubItem{1, 1});
    }
    sprites.endChanges();
    sprites.undoStack()->clear();

    const QMessages* issues = sprites.messages();
    for (int row = 0; row < issues->size(); ++row) {
        const QMessage issue = issues->at(row);
        if (issue.severity == 0) {
            *problem = issue.text;
            return false;
        }
    }
    return true;
}
