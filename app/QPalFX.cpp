#include "QPalFX.h"

#include <QDir>
#include <QFile>
#include <QtMath>

namespace {

constexpr int Width = 4;

QString field(int value)
{
    return QStringLiteral("%1").arg(value, Width);
}

int channel(int value, int add, int sine, int mul)
{
    return qBound(0, (value + add + sine) * mul / 256, 255);
}

template <size_t N>
bool readInts(const QString& values, std::array<int, N>* out)
{
    const QStringList parts = values.split(QLatin1Char(','));
    bool any = false;
    for (size_t i = 0; i < N && i < size_t(parts.size()); ++i) {
        bool ok = false;
        const int value = parts.at(int(i)).trimmed().toInt(&ok);
        if (ok) (*out)[i] = value;
        any = any || ok;
    }
    return any;
}

} // namespace

QString QPalFX::code() const
{
    QString text = QStringLiteral("[State 0, PalFXWiz]\ntype = PalFX\ntrigger1 = \ntime = \nadd = %1,%2,%3\n"
                                  "mul = %4,%5,%6\nsinadd = %7,%8,%9,%10\ninvertall = %11\ncolor = %12\n");
    const int values[12] = {add[0],    add[1],    add[2],    mul[0],    mul[1],    mul[2],
                            sinadd[0], sinadd[1], sinadd[2], sinadd[3], invertall, color};
    for (const int value : values)
        text = text.arg(field(value));
    return text;
}

QRgb QPalFX::apply(QRgb colour, int tick) const
{
    int r = qRed(colour), g = qGreen(colour), b = qBlue(colour);
    if (color != 256) {
        const int grey = (r * 299 + g * 587 + b * 114) / 1000;
        const int level = qBound(0, color, 256);
        r = grey + (r - grey) * level / 256;
        g = grey + (g - grey) * level / 256;
        b = grey + (b - grey) * level / 256;
    }
    if (invertall) {
        r = 255 - r;
        g = 255 - g;
        b = 255 - b;
    }
    double wave = 0;
    if (sinadd[3] != 0) wave = qSin(2 * M_PI * tick / sinadd[3]);
    return qRgba(channel(r, add[0], qRound(sinadd[0] * wave), mul[0]),
                 channel(g, add[1], qRound(sinadd[1] * wave), mul[1]),
                 channel(b, add[2], qRound(sinadd[2] * wave), mul[2]), qAlpha(colour));
}

QImage QPalFX::apply(const QImage& image, int tick) const
{
    if (image.format() == QImage::Format_Indexed8) {
        QImage result = image;
        QList<QRgb> table = result.colorTable();
        for (QRgb& entry : table)
            entry = apply(entry, tick);
        result.setColorTable(table);
        return result;
    }
    QImage result = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x)
            line[x] = apply(line[x], tick);
    }
    return result;
}

bool QPalFX::read(const QString& text)
{
    bool any = false;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        const QString content = line.section(QLatin1Char(';'), 0, 0);
        const int equals = content.indexOf(QLatin1Char('='));
        if (equals < 0) continue;
        const QString key = content.left(equals).trimmed().toLower();
        const QString values = content.mid(equals + 1);
        std::array<int, 1> one{0};
        if (key == QLatin1String("add")) {
            any = readInts(values, &add) || any;
        } else if (key == QLatin1String("mul")) {
            any = readInts(values, &mul) || any;
        } else if (key == QLatin1String("sinadd")) {
            any = readInts(values, &sinadd) || any;
        } else if (key == QLatin1String("invertall") && readInts(values, &one)) {
            invertall = one[0];
            any = true;
        } else if (key == QLatin1String("color") && readInts(values, &one)) {
            color = one[0];
            any = true;
        }
    }
    return any;
}

QList<QPalFX::Preset> QPalFX::presets(const QString& folder)
{
    QList<Preset> list;
    const QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) return list;
    for (const QFileInfo& info : dir.entryInfoList({QStringLiteral("*.palfx")}, QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) continue;
        Preset preset;
        preset.name = info.completeBaseName();
        if (preset.values.read(QString::fromUtf8(file.readAll()))) list << preset;
    }
    return list;
}

bool QPalFX::operator==(const QPalFX& other) const
{
    return add == other.add && mul == other.mul && sinadd == other.sinadd && invertall == other.invertall &&
           color == other.color;
}
