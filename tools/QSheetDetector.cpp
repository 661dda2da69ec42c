#include "QSheetDetector.h"

#include <QPoint>
#include <QVector>

#include <algorithm>

namespace {

// One connected drawing from its seed: a scanline fill on columns that erases as it goes, so that
// every pixel is visited once however many drawings the sheet holds.
QRect fillFrom(QImage& pixels, QPoint seed, uchar background)
{
    const int width = pixels.width();
    const int height = pixels.height();
    uchar* const bits = pixels.bits();
    const qsizetype stride = pixels.bytesPerLine();
    const auto at = [bits, stride](int x, int y) -> uchar& { return bits[y * stride + x]; };

    int left = 999999, top = 999999, right = 1, bottom = 1;
    QVector<QPoint> stack;
    stack.reserve(1024);
    stack.append(seed);
    while (!stack.isEmpty()) {
        const QPoint point = stack.takeLast();
        const int x = point.x();
        int y = point.y();
        while (y >= 0 && at(x, y) != background)
            --y;
        ++y;
        // One flag per side neighbour: a run of filled neighbours is pushed once, at its first pixel.
        bool pushed[6] = {false, false, false, false, false, false};
        const int dx[6] = {-1, 1, -1, 1, -1, 1};
        const int dy[6] = {0, 0, -1, -1, 1, 1};
        for (; y < height && at(x, y) != background; ++y) {
            left = std::min(left, x);
            top = std::min(top, y);
            right = std::max(right, x);
            bottom = std::max(bottom, y);
            at(x, y) = background;
            for (int side = 0; side < 6; ++side) {
                const int nx = x + dx[side];
                const int ny = y + dy[side];
                if (nx < 0 || nx >= width || ny < 0 || ny >= height) continue;
                if (at(nx, ny) != background) {
                    if (!pushed[side]) {
                        stack.append(QPoint(nx, ny));
                        pushed[side] = true;
                    }
                } else {
                    pushed[side] = false;
                }
            }
        }
    }
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

QList<QRect> QSheetDetector::detect(const QImage& sheet)
{
    QList<QRect> found;
    if (sheet.isNull()) return found;
    QImage pixels;
    if (sheet.format() == QImage::Format_Indexed8)
        pixels = sheet.copy();
    else if (sheet.format() == QImage::Format_Mono || sheet.format() == QImage::Format_MonoLSB)
        pixels = sheet.convertToFormat(QImage::Format_Indexed8);
    else
        return found;

    const uchar background = pixels.constScanLine(0)[0];
    const int width = pixels.width();
    const int height = pixels.height();
    // Everything before a seed is background by the time the seed is found, and filling only turns
    // pixels into background, so the next scan may go on from the last seed instead of the top row:
    // the same drawings come out in the same order.
    int x = 0, y = 0;
    while (y < height) {
        const uchar* line = pixels.constScanLine(y);
        while (x < width && line[x] == background)
            ++x;
        if (x == width) {
            x = 0;
            ++y;
            continue;
        }
        const QRect box = fillFrom(pixels, QPoint(x, y), background);
        if (box.left() != box.right() || box.top() != box.bottom()) found.append(box);
    }
    return found;
}
