#include "QOctreeQuantizer.h"

#include <QHash>

#include <algorithm>
#include <cstring>

struct QOctreeQuantizer::Node
{
    bool leaf = false;
    int index = 0;
    quint64 count = 0;
    quint64 red = 0;
    quint64 green = 0;
    quint64 blue = 0;
    std::unique_ptr<Node> children[8];
};

namespace {

int childIndex(QRgb color, int level)
{
    const int bit = 0x80 >> level;
    return ((qRed(color) & bit) ? 4 : 0) | ((qGreen(color) & bit) ? 2 : 0) | ((qBlue(color) & bit) ? 1 : 0);
}

} // namespace

QOctreeQuantizer::QOctreeQuantizer(int maxColors, int depth)
    : maximum(std::clamp(maxColors, 1, 256)), levels(std::clamp(depth, 1, 8)), root(std::make_unique<Node>())
{
    // The root can be merged too, so that fewer than eight colours can be asked for.
    reducible[0].append(root.get());
}

QOctreeQuantizer::~QOctreeQuantizer() = default;

void QOctreeQuantizer::addImage(const QImage& image)
{
    if (image.isNull()) return;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < rgb.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
        for (int x = 0; x < rgb.width(); ++x)
            addColor(line[x]);
    }
}

void QOctreeQuantizer::addColor(QRgb color)
{
    Node* node = root.get();
    for (int level = 0; level < levels && !node->leaf; ++level) {
        std::unique_ptr<Node>& child = node->children[childIndex(color, level)];
        if (!child) {
            child = std::make_unique<Node>();
            if (level + 1 == levels) {
                child->leaf = true;
                ++leafCount;
            } else {
                reducible[level + 1].prepend(child.get());
            }
        }
        node = child.get();
    }
    ++node->count;
    node->red += qRed(color);
    node->green += qGreen(color);
    node->blue += qBlue(color);
    while (leafCount > maximum && reduce()) {}
}

bool QOctreeQuantizer::reduce()
{
    int level = levels - 1;
    while (level >= 0 && reducible[level].isEmpty())
        --level;
    if (level < 0) return false;
    Node* node = reducible[level].takeFirst();
    int merged = 0;
    for (std::unique_ptr<Node>& child : node->children) {
        if (!child) continue;
        node->count += child->count;
        node->red += child->red;
        node->green += child->green;
        node->blue += child->blue;
        child.reset();
        ++merged;
    }
    node->leaf = true;
    leafCount += 1 - merged;
    return true;
}

void QOctreeQuantizer::number(Node* node, int& next, QList<QRgb>& colours) const
{
    if (node->leaf) {
        node->index = next++;
        if (node->count == 0) {
            colours.append(qRgb(0, 0, 0));
        } else {
            colours.append(qRgb(int(node->red / node->count), int(node->green / node->count),
                                int(node->blue / node->count)));
        }
        return;
    }
    for (const std::unique_ptr<Node>& child : node->children)
        if (child) number(child.get(), next, colours);
}

QList<QRgb> QOctreeQuantizer::colorTable() const
{
    QList<QRgb> colours;
    int next = 0;
    number(root.get(), next, colours);
    return colours;
}

void QOctreeQuantizer::palette(QRGBPal* table) const
{
    std::memset(static_cast<void*>(table), 0, QRGBPal::TableBytes);
    const QList<QRgb> colours = colorTable();
    for (int i = 0; i < colours.size() && i < QRGBPal::TableSize; ++i)
        table[i] = QRGBPal::fromRgb(colours.at(i));
}

int QOctreeQuantizer::leafIndex(QRgb color) const
{
    const Node* node = root.get();
    for (int level = 0; level < levels && !node->leaf; ++level) {
        node = node->children[childIndex(color, level)].get();
        if (!node) return -1;
    }
    return node->leaf ? node->index : -1;
}

QImage QOctreeQuantizer::toIndexed(const QImage& image) const
{
    if (image.isNull()) return QImage();
    QList<QRgb> colours = colorTable();
    if (colours.isEmpty()) colours.append(qRgb(0, 0, 0));
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    QImage result(rgb.size(), QImage::Format_Indexed8);
    if (result.isNull()) return QImage();
    result.setColorTable(colours);
    QHash<QRgb, uchar> strangers;
    for (int y = 0; y < rgb.height(); ++y) {
        const QRgb* in = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
        uchar* out = result.scanLine(y);
        for (int x = 0; x < rgb.width(); ++x) {
            const int leaf = leafIndex(in[x]);
            if (leaf >= 0) {
                out[x] = uchar(leaf);
                continue;
            }
            auto known = strangers.constFind(in[x]);
            if (known == strangers.constEnd()) {
                int best = 0;
                int bestDistance = 0x7FFFFFFF;
                for (int i = 0; i < colours.size(); ++i) {
                    const int dr = qRed(colours.at(i)) - qRed(in[x]);
                    const int dg = qGreen(colours.at(i)) - qGreen(in[x]);
                    const int db = qBlue(colours.at(i)) - qBlue(in[x]);
                    const int distance = dr * dr + dg * dg + db * db;
                    if (distance < bestDistance) {
                        best = i;
                        bestDistance = distance;
                    }
                }
                known = strangers.insert(in[x], uchar(best));
            }
            out[x] = known.value();
        }
    }
    return result;
}

QImage QOctreeQuantizer::quantize(const QImage& image, int maxColors, int depth, QRGBPal* palette)
{
    QOctreeQuantizer quantizer(maxColors, depth);
    quantizer.addImage(image);
    if (palette) quantizer.palette(palette);
    return quantizer.toIndexed(image);
}

QImage QOctreeQuantizer::quantizeKeepingTransparency(const QImage& source)
{
    const QImage image = source.convertToFormat(QImage::Format_ARGB32);
    QOctreeQuantizer quantizer(255, 8);
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(row[x]) != 0) quantizer.addColor(row[x]);
    }
    QImage indexed(image.size(), QImage::Format_Indexed8);
    QList<QRgb> table(QRGBPal::TableSize, 0);
    const QList<QRgb> colours = quantizer.colorTable();
    for (int i = 0; i < colours.size() && i + 1 < QRGBPal::TableSize; ++i)
        table[i + 1] = colours.at(i);
    indexed.setColorTable(table);
    if (indexed.isNull()) return indexed;
    indexed.fill(0);
    if (quantizer.colorCount() == 0) return indexed;
    const QImage leaves = quantizer.toIndexed(image);
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const uchar* leaf = leaves.constScanLine(y);
        uchar* out = indexed.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            out[x] = qAlpha(row[x]) == 0 ? 0 : uchar(leaf[x] + 1);
    }
    return indexed;
}
