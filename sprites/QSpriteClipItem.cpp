#include "QSpriteClipItem.h"

#include "QSprite.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QVariantMap>

namespace {

const char* const GroupKey = "group";
const char* const IndexKey = "index";
const char* const XKey = "xaxis";
const char* const YKey = "yaxis";
const char* const FlagsKey = "flags";
const char* const ImageKey = "image";

} // namespace

QSpriteClipItem QSpriteClipItem::fromSprite(const QSprite* sprite)
{
    QSpriteClipItem item;
    if (!sprite) return item;
    item.group = sprite->itemGroup();
    item.index = sprite->itemIndex();
    item.x = sprite->offsetX();
    item.y = sprite->offsetY();
    item.flags = sprite->flags();
    item.image = sprite->image(QSpriteImagePalette::Default);
    return item;
}

QString QSpriteClipItem::mimeType()
{
    return QStringLiteral("application/x-tavrel-sprites");
}

QMimeData* QSpriteClipItem::toMimeData(const QList<QSpriteClipItem>& items)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << quint32(items.size());
    for (const QSpriteClipItem& item : items) {
        QVariantMap fields;
        fields.insert(QLatin1String(GroupKey), item.group);
        fields.insert(QLatin1String(IndexKey), item.index);
        fields.insert(QLatin1String(XKey), item.x);
        fields.insert(QLatin1String(YKey), item.y);
        fields.insert(QLatin1String(FlagsKey), uint(item.flags));
        fields.insert(QLatin1String(ImageKey), item.image);
        out << fields;
    }
    auto* data = new QMimeData;
    data->setData(mimeType(), bytes);
    if (!items.isEmpty() && !items.first().image.isNull()) data->setImageData(items.first().image);
    return data;
}

QList<QSpriteClipItem> QSpriteClipItem::fromMimeData(const QMimeData* data)
{
    QList<QSpriteClipItem> items;
    if (!data) return items;
    if (data->hasFormat(mimeType())) {
        const QByteArray bytes = data->data(mimeType());
        QDataStream in(bytes);
        in.setVersion(QDataStream::Qt_6_0);
        quint32 count = 0;
        in >> count;
        for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
            QVariantMap fields;
            in >> fields;
            if (in.status() != QDataStream::Ok) break;
            QSpriteClipItem item;
            item.group = fields.value(QLatin1String(GroupKey)).toInt();
            item.index = fields.value(QLatin1String(IndexKey)).toInt();
            item.x = fields.value(QLatin1String(XKey)).toInt();
            item.y = fields.value(QLatin1String(YKey)).toInt();
            item.flags = quint16(fields.value(QLatin1String(FlagsKey)).toUInt());
            item.image = fields.value(QLatin1String(ImageKey)).value<QImage>();
            items.append(item);
        }
        return items;
    }
    if (data->hasImage()) {
        QSpriteClipItem item;
        item.image = data->imageData().value<QImage>();
        if (!item.image.isNull()) items.append(item);
    }
    return items;
}
