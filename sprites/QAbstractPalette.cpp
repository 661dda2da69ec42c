#include "QAbstractPalette.h"

#include "QACOPalette.h"
#include "QACTPalette.h"
#include "QASEPalette.h"
#include "QJascPalette.h"
#include "QPainterPalette.h"
#include "QRIFFPalette.h"

#include <QIODevice>

#include <algorithm>

QAbstractPalette::~QAbstractPalette() = default;

std::unique_ptr<QAbstractPalette> QAbstractPalette::forFile(const QString& suffix,
                                                            const QByteArray& firstBytes)
{
    if (suffix.compare(QLatin1String("aco"), Qt::CaseInsensitive) == 0)
        return std::make_unique<QACOPalette>();
    const QByteArray head = firstBytes.left(4);
    if (head == "RIFF") return std::make_unique<QRIFFPalette>();
    if (head == "JASC") return std::make_unique<QJascPalette>();
    if (head == "ASEF") return std::make_unique<QASEPalette>();
    if (head == "ROWS") return std::make_unique<QPainterPalette>();
    return std::make_unique<QACTPalette>();
}

bool QAbstractPalette::fail(const QString& reason)
{
    error = reason;
    return false;
}

bool QAbstractPalette::succeed()
{
    error.clear();
    return true;
}

QByteArray QAbstractPalette::readAtMost(QIODevice* device, qint64 maxBytes)
{
    constexpr qint64 step = 64 * 1024;
    QByteArray bytes;
    while (bytes.size() < maxBytes) {
        const QByteArray chunk = device->read(std::min(step, maxBytes - bytes.size()));
        if (chunk.isEmpty()) break;
        bytes += chunk;
    }
    return bytes;
}

QList<QByteArray> QAbstractPalette::readLines(QIODevice* device, qint64 maxBytes)
{
    const QByteArray text = readAtMost(device, maxBytes);
    QList<QByteArray> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text.at(i) != '\n' && text.at(i) != '\r') continue;
        if (i > start) lines.append(text.mid(start, i - start));
        start = i + 1;
    }
    return lines;
}

void QAbstractPalette::reverseTable(QRGBPal* table)
{
    std::reverse(table, table + QRGBPal::TableSize);
}
