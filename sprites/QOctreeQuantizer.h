#pragma once

#include "QRGBPal.h"

#include <QImage>
#include <QList>

#include <array>
#include <memory>

// Octree colour quantizer: images are added pixel by pixel into a tree of up to `depth` levels, one
// bit of red, green and blue per level, and the deepest nodes are merged whenever the leaves exceed
// `maxColors`. Each leaf then gives one colour, the truncated average of its pixels. Everything runs
// in a fixed order, so the same images always give the same table. The program uses (256, 8), and
// (256, 3) for greyscale.
class QOctreeQuantizer
{
public:
    // maxColors is held to 1..256 and depth to 1..8.
    explicit QOctreeQuantizer(int maxColors = 256, int depth = 8);
    ~QOctreeQuantizer();
    QOctreeQuantizer(const QOctreeQuantizer&) = delete;
    QOctreeQuantizer& operator=(const QOctreeQuantizer&) = delete;

    int maxColors() const { return maximum; }
    int depth() const { return levels; }

    // Adds every pixel of an image, taken as RGB32 (alpha is ignored), in scan order.
    void addImage(const QImage& image);
    void addColor(QRgb color);

    // The number of leaves, that is of colours the table will hold.
    int colorCount() const { return leafCount; }
    // The colours of the leaves in tree order, opaque, followed by zero entries up to 256.
    void palette(QRGBPal* table) const;
    QList<QRgb> colorTable() const;
    // An Indexed8 image whose pixels are the leaves their colours fall in; colours that were never
    // added take the nearest colour of the table. The image's table has colorCount() entries.
    QImage toIndexed(const QImage& image) const;

    // One image quantized on its own: the indexed image, and its table in palette if given.
    static QImage quantize(const QImage& image, int maxColors, int depth, QRGBPal* palette = nullptr);
    // A true-colour image made indexed the way the engine draws indexed sprites: index 0 is the
    // transparent colour, so the fully transparent pixels become 0 and every other pixel one of at
    // most 255 colours from index 1 on. The table has 256 entries, entry 0 transparent black.
    static QImage quantizeKeepingTransparency(const QImage& image);

private:
    struct Node;

    // Merges the most recent node of the deepest level that has one; false when none is left.
    bool reduce();
    void number(Node* node, int& next, QList<QRgb>& colours) const;
    int leafIndex(QRgb color) const;

    int maximum;
    int levels;
    int leafCount = 0;
    std::unique_ptr<Node> root;
    // The nodes of each level that can still be merged, the most recent first.
    std::array<QList<Node*>, 8> reducible;
};
