#include "QJascPalette.h"

#include <QRegularExpression>

#include <algorithm>

bool QJascPalette::read(QIODevice* device, QRGBPal* target)
{
    static const QRegularExpression colourLine(
        QStringLiteral("^(\\d{1,3})\\s(\\d{1,3})\\s(\\d{1,3})(?:\\s(\\d{1,3}))?$"));
    const QList<QByteArray> lines = readLines(device, MaxBytes);
    if (lines.isEmpty() || lines.at(0) != "JASC-PAL") return fail(QStringLiteral("not a JASC-PAL file"));
    if (lines.size() < 2 || lines.at(1) != "0100")
        return fail(QStringLiteral("unknown JASC-PAL version, expected \"0100\""));
    const int last = std::min<int>(int(lines.size()), 3 + QRGBPal::TableSize);
    for (int line = 3; line < last; ++line) {
        const QRegularExpressionMatch match = colourLine.match(QString::fromLatin1(lines.at(line)));
        if (!match.hasMatch()) continue;
        auto channel = [&match](int group, int absent) {
            return match.capturedLength(group) == 0 ? absent : std::min(match.captured(group).toInt(), 255);
        };
        target[line - 3] =
            QRGBPal(uchar(channel(1, 0)), uchar(channel(2, 0)), uchar(channel(3, 0)), uchar(channel(4, 255)));
    }
    return succeed();
}
