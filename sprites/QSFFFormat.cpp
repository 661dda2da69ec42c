#include "QSFFFormat.h"

#include <QImage>

namespace QSFF {

QByteArray magic()
{
    return QByteArray("ElecbyteSpr", MagicSize);
}

QByteArray headerText()
{
    QByteArray text("Made in Orlenmark\nPowered by Tavrel 3\nhttps://tavrel.invalid/");
    text.append('\0');
    text.append(QByteArray(HeaderTextSize - text.size(), '\0'));
    return text;
}

quint32 parseVersion(const QString& text)
{
    for (quint32 version : {Version101, Version200, Version201})
        if (text == versionText(version)) return version;
    return 0;
}

QString versionText(quint32 version)
{
    switch (version) {
    case Version101:
        return QStringLiteral("1.01");
    case Version200:
        return QStringLiteral("2.00");
    case Version201:
        return QStringLiteral("2.01");
    default:
        return QStringLiteral("%1.%2.%3.%4")
            .arg(version >> 24)
            .arg((version >> 16) & 0xFF)
            .arg((version >> 8) & 0xFF)
            .arg(version & 0xFF);
    }
}

QString formatName(int format)
{
    switch (format) {
    case RawFormat:
        return QStringLiteral("raw");
    case NoDataFormat:
        return QStringLiteral("none");
    case RLE8Format:
        return QStringLiteral("rle8");
    case RLE5Format:
        return QStringLiteral("rle5");
    case LZ5Format:
        return QStringLiteral("lz5");
    case PNG8Format:
        return QStringLiteral("png8");
    case PNG24Format:
        return QStringLiteral("png24");
    case PNG32Format:
        return QStringLiteral("png32");
    case PcxFormat:
        return QStringLiteral("pcx");
    default:
        return QString::number(format);
    }
}

int imageFormatOfDepth(int depth)
{
    switch (depth) {
    case 5:
    case 8:
        return QImage::Format_Indexed8;
    case 24:
        return QImage::Format_RGB32;
    case 32:
        return QImage::Format_ARGB32;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace QSFF
