#pragma once

#include "QRGBPal.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

class QIODevice;

// The base of the palette file readers. A reader fills a table of 256 colours from a device and
// answers whether the content was what it expects; a refused or short file still leaves whatever was
// read in the table. Readers never trust a count or size from the file beyond the 256 entries of the
// table and the bytes the device really holds.
class QAbstractPalette
{
public:
    virtual ~QAbstractPalette();

    virtual bool read(QIODevice* device, QRGBPal* target) = 0;

    // Why the last read() answered false; empty after a successful one.
    QString errorString() const { return error; }

    // The reader for a file: by suffix ("aco" is always ACO), else by its first four bytes ("RIFF",
    // "JASC", "ASEF", "ROWS"), else ACT. Colour tables of images are not chosen here.
    static std::unique_ptr<QAbstractPalette> forFile(const QString& suffix, const QByteArray& firstBytes);

protected:
    bool fail(const QString& reason);
    bool succeed();
    // Up to maxBytes from a device, read in steps so that a short file never costs the whole maximum.
    static QByteArray readAtMost(QIODevice* device, qint64 maxBytes);
    // The text lines of a device of at most maxBytes, split at "\r" and "\n", empty lines dropped.
    static QList<QByteArray> readLines(QIODevice* device, qint64 maxBytes);
    // Reverses the order of all 256 entries, so that file colour 0 becomes colour 255.
    static void reverseTable(QRGBPal* table);

private:
    QString error;
};
