#include "QPainterPalette.h"

#include <QRegularExpression>

#include <algorithm>

bool QPainterPalette::read(QIODevice* device, QRGBPal* target)
{
    static const QRegularExpression colourLine(QStringLiteral(
        "^R:\\s?(\\d{1,3}),\\s?G:\\s?(\\d{1,3}),\\s?B:\\s?(\\d{1,3})(?:\\s?A:\\s?(\\d{1,3}))?"));
    const QList<QByteArray> lines = readLines(device, MaxBytes);
    int entry = 0;
    for (const QByteArray& line : lines) {
        if (entry >= QRGBPal::TableSize) break;
        const QRegularExpressionMatch match = colourLine.match(QString::fromLatin1(line));
        if (!match.hasMatch()) continue;
        auto channel = [&match](int group, int absent) {
            return match.capturedLength(group) == 0 ? absent : std::min(match.captured(group).toInt(), 255);
        };
        target[entry++] =
            QRGBPal(uchar(channel(1, 0)), uchar(channel(2, 0)), uchar(channel(3, 0)), uchar(channel(4, 255)));
    }
    if (entry == 0) return fail(QStringLiteral("no colour lines (\"R: r, G: g, B: b\") in the swatches"));
    return succeed();
}
