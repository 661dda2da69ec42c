#include "QSampleFigure.h"

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr int CanvasSize = 160;
constexpr int AxisX = 80;
constexpr int AxisY = 148;

constexpr double Thigh = 19;
constexpr double Shin = 19;
constexpr double Torso = 28;
constexpr double Neck = 5;
constexpr double HeadRadius = 7;
constexpr double UpperArm = 14;
constexpr double Forearm = 13;

// Directions in the body's frame (y down): a limb's angle from straight down, the torso's from
// straight up, both positive towards the front.
QPointF limbDirection(double degrees)
{
    const double r = degrees * Pi / 180;
    return QPointF(std::sin(r), std::cos(r));
}

QPointF torsoDirection(double degrees)
{
    const double r = degrees * Pi / 180;
    return QPointF(std::sin(r), -std::cos(r));
}

// The joints in the body's frame, the hip at 0, 0.
struct Skeleton
{
    QPointF shoulder, neck, head;
    QPointF frontElbow, frontFist, backElbow, backFist;
    QPointF frontKnee, frontFoot, backKnee, backFoot;

    explicit Skeleton(const QSamplePose& pose)
    {
        shoulder = Torso * torsoDirection(pose.lean);
        neck = shoulder + Neck * torsoDirection(pose.lean + pose.nod);
        head = neck + HeadRadius * torsoDirection(pose.lean + pose.nod);
        frontElbow = shoulder + UpperArm * limbDirection(pose.frontUpperArm);
        frontFist = frontElbow + Forearm * limbDirection(pose.frontForearm);
        backElbow = shoulder + UpperArm * limbDirection(pose.backUpperArm);
        backFist = backElbow + Forearm * limbDirection(pose.backForearm);
        frontKnee = Thigh * limbDirection(pose.frontThigh);
        frontFoot = frontKnee + Shin * limbDirection(pose.frontShin);
        backKnee = Thigh * limbDirection(pose.backThigh);
        backFoot = backKnee + Shin * limbDirection(pose.backShin);
    }
};

QColor key(QSampleFigure::Colour colour)
{
    return QColor(int(colour), int(colour), int(colour));
}

// A chain of segments: the outline of all of them first, so that the fill covers the joints.
void chain(QPainter& painter, const QList<QPointF>& points, const QList<QSampleFigure::Colour>& colours,
           const QList<double>& widths)
{
    for (int i = 0; i + 1 < points.size(); ++i) {
        painter.setPen(QPen(key(QSampleFigure::Outline), widths.at(i) + 2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(points.at(i), points.at(i + 1));
    }
    for (int i = 0; i + 1 < points.size(); ++i) {
        painter.setPen(QPen(key(colours.at(i)), widths.at(i), Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(points.at(i), points.at(i + 1));
    }
}

void disc(QPainter& painter, const QPointF& centre, double radius, QSampleFigure::Colour colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(key(QSampleFigure::Outline));
    painter.drawEllipse(centre, radius + 1, radius + 1);
    painter.setBrush(key(colour));
    painter.drawEllipse(centre, radius, radius);
}

void arm(QPainter& painter, const QPointF& shoulder, const QPointF& elbow, const QPointF& fist, bool front)
{
    using F = QSampleFigure;
    chain(painter, {shoulder, elbow, fist}, {front ? F::Gi : F::GiShade, front ? F::Skin : F::SkinShade},
          {6, 5});
    disc(painter, fist, 3, front ? F::Skin : F::SkinShade);
}

void leg(QPainter& painter, const QPointF& knee, const QPointF& foot, double footAngle, bool front)
{
    using F = QSampleFigure;
    const QPointF toe = foot + 5 * limbDirection(footAngle);
    chain(painter, {QPointF(0, 0), knee, foot, toe},
          {front ? F::Pants : F::PantsShade, front ? F::Pants : F::PantsShade, F::Wraps}, {8, 7, 4});
}

void head(QPainter& painter, const QSamplePose& pose, const QPointF& centre)
{
    using F = QSampleFigure;
    painter.save();
    painter.translate(centre);
    painter.rotate(pose.lean + pose.nod);
    disc(painter, QPointF(0, 0), HeadRadius, F::Skin);
    const QRectF box(-HeadRadius, -HeadRadius, 2 * HeadRadius, 2 * HeadRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(key(F::Hair));
    if (pose.facingViewer) {
        painter.drawChord(box, 10 * 16, 160 * 16);
        painter.fillRect(QRectF(-4, 0, 2, 2), key(F::Outline));
        painter.fillRect(QRectF(2, 0, 2, 2), key(F::Outline));
    } else {
        painter.drawChord(box, 30 * 16, 170 * 16);
        painter.fillRect(QRectF(3, -1, 2, 2), key(F::Outline));
        // The headband, with its two tails flying behind.
        painter.setPen(QPen(key(F::Band), 2, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(QPointF(-HeadRadius, -3), QPointF(HeadRadius, -3));
        painter.drawLine(QPointF(-HeadRadius, -3), QPointF(-HeadRadius - 6, 0));
        painter.drawLine(QPointF(-HeadRadius, -3), QPointF(-HeadRadius - 5, -5));
    }
    painter.restore();
}

void torso(QPainter& painter, const Skeleton& body)
{
    using F = QSampleFigure;
    chain(painter, {body.shoulder, body.neck}, {F::Skin}, {5});
    chain(painter, {QPointF(0, 0), body.shoulder}, {F::Gi}, {13});
    // The belt, a band across the hip with its knot.
    const QPointF along = body.shoulder / Torso;
    painter.setPen(QPen(key(F::Belt), 13, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0, 0), 3 * along);
    painter.setPen(QPen(key(F::Belt), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(4, 2), QPointF(6, 7));
}

// Paints the figure with the painter's transform at the hip.
void paintFigure(QPainter& painter, const QSamplePose& pose, const Skeleton& body)
{
    if (pose.facingViewer) {
        // Seen from the front, the feet point outwards.
        leg(painter, body.backKnee, body.backFoot, -90, true);
        leg(painter, body.frontKnee, body.frontFoot, 90, true);
        torso(painter, body);
        arm(painter, body.shoulder + QPointF(-6, 2), body.backElbow + QPointF(-6, 2),
            body.backFist + QPointF(-6, 2), true);
        arm(painter, body.shoulder + QPointF(6, 2), body.frontElbow + QPointF(6, 2),
            body.frontFist + QPointF(6, 2), true);
        head(painter, pose, body.head);
        return;
    }
    arm(painter, body.shoulder, body.backElbow, body.backFist, false);
    leg(painter, body.backKnee, body.backFoot, 90, false);
    torso(painter, body);
    leg(painter, body.frontKnee, body.frontFoot, 90, true);
    head(painter, pose, body.head);
    arm(painter, body.shoulder, body.frontElbow, body.frontFist, true);
}

// The drawing's pixels as palette positions: every painted pixel carries its position in all three
// channels.
QImage toIndexed(const QImage& painted, const QRect& area)
{
    QImage indexed(area.size(), QImage::Format_Indexed8);
    QList<QRgb> table(256, 0);
    for (int i = 0; i < 256; ++i)
        table[i] = qRgb(i, i, i);
    indexed.setColorTable(table);
    for (int y = 0; y < area.height(); ++y) {
        const auto* source = reinterpret_cast<const QRgb*>(painted.constScanLine(area.top() + y));
        uchar* target = indexed.scanLine(y);
        for (int x = 0; x < area.width(); ++x) {
            const QRgb pixel = source[area.left() + x];
            target[x] = qAlpha(pixel) == 255 ? uchar(qRed(pixel)) : uchar(0);
        }
    }
    return indexed;
}

QRect paintedArea(const QImage& painted)
{
    int left = painted.width(), top = painted.height(), right = -1, bottom = -1;
    for (int y = 0; y < painted.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(painted.constScanLine(y));
        for (int x = 0; x < painted.width(); ++x)
            if (qAlpha(row[x]) == 255) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

QPoint rounded(const QPointF& point)
{
    return QPoint(int(std::lround(point.x())), int(std::lround(point.y())));
}

} // namespace

QSampleDrawing QSampleFigure::draw(const QSamplePose& pose)
{
    const Skeleton body(pose);
    double hipHeight = pose.hipHeight;
    if (pose.grounded) hipHeight = std::max(body.frontFoot.y(), body.backFoot.y()) + 4;
    const QPointF hip(AxisX + pose.shiftX, AxisY - hipHeight - pose.shiftY);
    QTransform place;
    place.translate(hip.x(), hip.y());
    place.rotate(pose.rotation);

    QImage painted(CanvasSize, CanvasSize, QImage::Format_ARGB32);
    painted.fill(Qt::transparent);
    {
        QPainter painter(&painted);
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setTransform(place);
        paintFigure(painter, pose, body);
    }

    const QRect area = paintedArea(painted);
    const QPoint axis(AxisX, AxisY);
    QSampleDrawing drawing;
    drawing.image = toIndexed(painted, area);
    drawing.axis = axis - area.topLeft();
    drawing.bounds = area.translated(-axis);
    drawing.frontFist = rounded(place.map(body.frontFist)) - axis;
    drawing.frontFoot = rounded(place.map(body.frontFoot)) - axis;
    return drawing;
}

QSampleDrawing QSampleFigure::portrait(const QSize& size, double scale)
{
    const QSamplePose pose = QSamplePose::stand(0);
    const Skeleton body(pose);
    QImage painted(size, QImage::Format_ARGB32);
    painted.fill(key(Backdrop));
    {
        QPainter painter(&painted);
        painter.setRenderHint(QPainter::Antialiasing, false);
        // The head a little above the middle, the shoulders below it.
        painter.translate(size.width() / 2.0, size.height() * 0.4);
        painter.scale(scale, scale);
        painter.translate(-body.head);
        paintFigure(painter, pose, body);
    }
    QSampleDrawing drawing;
    drawing.image = toIndexed(painted, painted.rect());
    drawing.bounds = painted.rect();
    return drawing;
}
