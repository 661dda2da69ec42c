#include "QRGBPalette.h"

#include "QACTPalette.h"
#include "QIndexedImagePalette.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace {

uchar clampByte(int value)
{
    return uchar(std::clamp(value, 0, 255));
}

bool selected(const uchar* mask, int index)
{
    return !mask || mask[index] != 0;
}

// One of the ramp's channels at step i of n (n > 0), with truncating division.
uchar ramp(uchar from, uchar to, int i, int n)
{
    return uchar(from + i * (int(to) - int(from)) / n);
}

QRGBPal rampColour(const QRGBPal& a, const QRGBPal& b, int i, int n)
{
    if (n <= 0) return a;
    return QRGBPal(ramp(a.r, b.r, i, n), ramp(a.g, b.g, i, n), ramp(a.b, b.b, i, n), ramp(a.a, b.a, i, n));
}

void transformColour(int kind, QRGBPal& c)
{
    const int grey = (c.r + c.g + c.b) / 3;
    switch (kind) {
    case QRGBPalette::SwapRedBlue:
    case QRGBPalette::SwapBlueRed:
        std::swap(c.r, c.b);
        break;
    case QRGBPalette::SwapGreenBlue:
    case QRGBPalette::SwapBlueGreen:
        std::swap(c.g, c.b);
        break;
    case QRGBPalette::SwapRedGreen:
    case QRGBPalette::SwapGreenRed:
        std::swap(c.r, c.g);
        break;
    case QRGBPalette::Lighter:
    case QRGBPalette::Darker:
    case QRGBPalette::MuchLighter:
    case QRGBPalette::MuchDarker: {
        const int step = kind == QRGBPalette::Lighter       ? 32
                         : kind == QRGBPalette::Darker      ? -32
                         : kind == QRGBPalette::MuchLighter ? 128
                                                            : -128;
        c.r = clampByte(c.r + step);
        c.g = clampByte(c.g + step);
        c.b = clampByte(c.b + step);
        break;
    }
    case QRGBPalette::Monochrome:
        c.r = c.g = c.b = uchar(grey);
        break;
    case QRGBPalette::Fire:
        c.r = clampByte(grey + 100);
        c.g = uchar(grey / 2);
        c.b = 0;
        break;
    case QRGBPalette::Sapphire:
        c.r = uchar(grey / 4 + 60);
        c.g = 0;
        c.b = uchar(grey / 2 + 60);
        break;
    case QRGBPalette::Stone:
        c.r = c.g = c.b = uchar(grey < 128 ? grey + 50 : grey - 50);
        break;
    default:
        break;
    }
}

// HSL with the hue in degrees and saturation and lightness on 0..255, in double precision so that an
// unchanged colour comes back exactly. Greys have hue 0.
void toHsl(const QRGBPal& c, double* hue, double* saturation, double* lightness)
{
    const double r = c.r / 255.0, g = c.g / 255.0, b = c.b / 255.0;
    const double high = std::max({r, g, b}), low = std::min({r, g, b});
    const double l = (high + low) / 2.0;
    const double delta = high - low;
    double h = 0.0, s = 0.0;
    if (delta > 0.0) {
        s = l < 0.5 ? delta / (high + low) : delta / (2.0 - high - low);
        if (high == r)
            h = (g - b) / delta + (g < b ? 6.0 : 0.0);
        else if (high == g)
            h = (b - r) / delta + 2.0;
        else
            h = (r - g) / delta + 4.0;
        h *= 60.0;
    }
    *hue = h;
    *saturation = s * 255.0;
    *lightness = l;
}

double hueChannel(double p, double q, double t)
{
    if (t < 0.0) t += 1.0;
    if (t > 1.0) t -= 1.0;
    if (t < 1.0 / 6.0) return p + (q - p) * 6.0 * t;
    if (t < 0.5) return q;
    if (t < 2.0 / 3.0) return p + (q - p) * (2.0 / 3.0 - t) * 6.0;
    return p;
}

void fromHsl(double hue, double saturation, double lightness, QRGBPal* c)
{
    const double s = saturation / 255.0, l = lightness;
    double r = l, g = l, b = l;
    if (s > 0.0) {
        const double q = l < 0.5 ? l * (1.0 + s) : l + s - l * s;
        const double p = 2.0 * l - q;
        const double t = hue / 360.0;
        r = hueChannel(p, q, t + 1.0 / 3.0);
        g = hueChannel(p, q, t);
        b = hueChannel(p, q, t - 1.0 / 3.0);
    }
    c->r = clampByte(int(std::lround(r * 255.0)));
    c->g = clampByte(int(std::lround(g * 255.0)));
    c->b = clampByte(int(std::lround(b * 255.0)));
}

} // namespace

QRGBPalette::QRGBPalette(QRGBPal* table, QObject* parent) : QObject(parent), colorTable(table) {}

template <typename Change>
void QRGBPalette::changeMasked(const uchar* mask, Change change)
{
    if (!colorTable) return;
    emit changing();
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        if (selected(mask, i)) change(colorTable[i]);
    emit changed();
}

void QRGBPalette::setColors(const QRGBPal* source)
{
    if (!colorTable || !source) return;
    emit changing();
    std::memmove(colorTable, source, QRGBPal::TableBytes);
    emit changed();
}

void QRGBPalette::colors(QRGBPal* target) const
{
    if (!target) return;
    if (colorTable)
        std::memcpy(target, colorTable, QRGBPal::TableBytes);
    else
        std::fill(target, target + QRGBPal::TableSize, QRGBPal());
}

void QRGBPalette::setColor(uchar index, const QRGBPal& colour)
{
    if (!colorTable) return;
    emit changing();
    colorTable[index] = colour;
    emit changed();
}

void QRGBPalette::setColor(const uchar* mask, const QRGBPal& colour)
{
    changeMasked(mask, [&colour](QRGBPal& c) { c = colour; });
}

void QRGBPalette::setColor(uchar index, const QColor& colour)
{
    setColor(index, QRGBPal::fromColor(colour));
}

void QRGBPalette::setColor(const uchar* mask, const QColor& colour)
{
    setColor(mask, QRGBPal::fromColor(colour));
}

QRGBPal QRGBPalette::color(uchar index) const
{
    return colorTable ? colorTable[index] : QRGBPal();
}

QColor QRGBPalette::qcolor(uchar index) const
{
    return color(index).toColor();
}

uchar QRGBPalette::nearest(const QRGBPal& colour) const
{
    if (!colorTable) return 0;
    int best = 0;
    int bestDistance = 0x7FFFFFFF;
    int bestAlpha = 255;
    for (int i = 0; i < QRGBPal::TableSize; ++i) {
        const QRGBPal& entry = colorTable[i];
        const int dr = int(entry.r) - colour.r, dg = int(entry.g) - colour.g, db = int(entry.b) - colour.b;
        const int distance = dr * dr + dg * dg + db * db;
        const int alpha = uchar(entry.a - colour.a);
        if (distance < bestDistance || (distance == bestDistance && alpha < bestAlpha)) {
            best = i;
            bestDistance = distance;
            bestAlpha = alpha;
        }
    }
    return uchar(best);
}

uchar QRGBPalette::lastUsed() const
{
    if (!colorTable) return 0;
    for (int i = QRGBPal::TableSize - 2; i >= 0; --i)
        if (colorTable[i] != colorTable[QRGBPal::TableSize - 1]) return uchar(i);
    return 0;
}

void QRGBPalette::gradient(uchar from, QRGBPal a, uchar to, QRGBPal b)
{
    if (!colorTable) return;
    if (from > to) {
        std::swap(from, to);
        std::swap(a, b);
    }
    emit changing();
    const int steps = to - from;
    for (int i = 0; i <= steps; ++i)
        colorTable[from + i] = rampColour(a, b, i, steps);
    emit changed();
}

void QRGBPalette::gradient(const uchar* mask, QRGBPal a, QRGBPal b)
{
    if (!colorTable) return;
    int positions[QRGBPal::TableSize];
    int count = 0;
    for (int i = 0; i < QRGBPal::TableSize; ++i)
        if (selected(mask, i)) positions[count++] = i;
    emit changing();
    for (int i = 0; i < count; ++i)
        colorTable[positions[i]] = rampColour(a, b, i, count - 1);
    emit changed();
}

void QRGBPalette::replaceDuplicates(const QRGBPal& colour)
{
    if (!colorTable) return;
    const QRGBPal replacement(colour.r, colour.g, colour.b, 255);
    emit changing();
    for (int i = 1; i < QRGBPal::TableSize; ++i) {
        for (int j = i - 1; j >= 1; --j) {
            if (colorTable[j] == colorTable[i]) {
                colorTable[j] = replacement;
                break;
            }
        }
    }
    emit changed();
}

void QRGBPalette::reverse(const uchar* mask, bool keepAlpha)
{
    if (!colorTable) return;
    emit changing();
    int low = 0;
    int high = QRGBPal::TableSize - 1;
    bool endsSwapped = false;
    while (low < high) {
        if (!selected(mask, low)) {
            ++low;
            continue;
        }
        if (!selected(mask, high)) {
            --high;
            continue;
        }
        if (low == 0 && high == QRGBPal::TableSize - 1) endsSwapped = true;
        std::swap(colorTable[low++], colorTable[high--]);
    }
    // The transparent entry is a place, not a colour: its alpha goes back to position 0.
    if (keepAlpha && endsSwapped) std::swap(colorTable[0].a, colorTable[QRGBPal::TableSize - 1].a);
    emit changed();
}

void QRGBPalette::transform(int kind, const uchar* mask)
{
    if (kind < SwapRedBlue || kind > MuchDarker) return;
    changeMasked(mask, [kind](QRGBPal& c) { transformColour(kind, c); });
}

void QRGBPalette::adjust(const uchar* mask, int hue, int saturation)
{
    const int turn = hue % 360;
    const int more = std::clamp(saturation, -255, 255);
    changeMasked(mask, [turn, more](QRGBPal& c) {
        double h, s, l;
        toHsl(c, &h, &s, &l);
        h = std::fmod(std::fmod(h + turn, 360.0) + 360.0, 360.0);
        s = std::clamp(s + more, 0.0, 255.0);
        fromHsl(h, s, l, &c);
    });
}

void QRGBPalette::shift(const uchar* mask, int red, int green, int blue)
{
    const int dr = std::clamp(red, -255, 255), dg = std::clamp(green, -255, 255);
    const int db = std::clamp(blue, -255, 255);
    changeMasked(mask, [dr, dg, db](QRGBPal& c) {
        c.r = clampByte(c.r + dr);
        c.g = clampByte(c.g + dg);
        c.b = clampByte(c.b + db);
    });
}

bool QRGBPalette::fromFile(const QString& path, QString* problem)
{
    auto report = [problem](const QString& text) {
        if (problem) *problem = text;
    };
    report(QString());
    if (!colorTable) {
        report(QStringLiteral("no colour table to read into"));
        return false;
    }
    emit changing();
    const QString suffix = QFileInfo(path).suffix().toLower();
    QFile file(path);
    if (!file.exists()) {
        report(QStringLiteral("no such file"));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        report(QStringLiteral("can't be opened: %1").arg(file.errorString()));
        return false;
    }
    if (QIndexedImagePalette::handles(suffix)) {
        QIndexedImagePalette reader(suffix);
        if (!reader.read(&file, colorTable)) {
            report(reader.errorString());
            return false;
        }
    } else {
        const std::unique_ptr<QAbstractPalette> reader = QAbstractPalette::forFile(suffix, file.peek(4));
        std::memset(static_cast<void*>(colorTable), 0, QRGBPal::TableBytes);
        if (!reader->read(&file, colorTable)) report(reader->errorString());
    }
    colorTable[0].a = 0;
    emit changed();
    return true;
}

bool QRGBPalette::toFile(const QString& path) const
{
    if (!colorTable) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    // QSaveFile::commit() doesn't notice a buffer that could only be written in part (a full disk, a
    // file size limit): flushing first does, and the old file then stays as it was.
    if (!QACTPalette::write(&file, colorTable) || !file.flush()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

QString QRGBPalette::openFilter()
{
    return tr("All palettes") +
           QStringLiteral(" (*.act *.pcx *.png *.bmp *.pal *.aco *.ase *.txt);;"
                          "Adobe Color Table (*.act);;Personal Computer eXchange (*.pcx);;"
                          "Portable Network Graphic (*.png);;Bitmap (*.bmp);;RIFF / Jasc Palette (*.pal);;"
                          "Adobe Color Swatch (*.aco);;Adobe Swatch Exchange (*.ase);;"
                          "Corel Painter Swatches (*.txt)");
}

QString QRGBPalette::saveFilter()
{
    return QStringLiteral("Adobe Color Table (*.act)");
}
