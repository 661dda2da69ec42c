#pragma once

#include "FileBytes.h"
#include "QRGBPalette.h"
#include "QSounds.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

// A small character on disk, inside a folder laid out as the engine's: ROOT/data holds the shared
// common states, ROOT/chars/test the character. Its definitions write paths as content made on Windows
// does: backslashes, and names whose case differs from the files. Every file they name is there, so
// that opening it tells of no missing file.
class ProjectFixture
{
public:
    QTemporaryDir root;

    QString character() const { return root.filePath(QStringLiteral("chars/test")); }
    QString def() const { return root.filePath(QStringLiteral("chars/test/test.def")); }
    QString file(const QString& name) const { return root.filePath(QStringLiteral("chars/test/") + name); }

    static QByteArray definitions()
    {
        return "[Info]\r\nname = \"Test\"\r\nmugenversion = 1.0\r\n\r\n[Files]\r\ncmd = test.cmd\r\n"
               "cns = test.cns\r\nstcommon = common1.cns\r\nsprite = Sub\\KFM.SFF\r\n"
               "anim = TEST.air\r\nsound = test.snd\r\npal1 = pal\\p1.act\r\n";
    }

    static QByteArray wav(int channels, int bits, int frames)
    {
        const int bytes = frames * channels * bits / 8;
        QByteArray data(44, '\0');
        auto put = [&](int at, quint32 value, int size) {
            for (int i = 0; i < size; ++i)
                data[at + i] = char(value >> (8 * i));
        };
        data.replace(0, 4, "RIFF");
        put(4, quint32(36 + bytes), 4);
        data.replace(8, 8, "WAVEfmt ");
        put(16, 16, 4);
        put(20, 1, 2);
        put(22, quint32(channels), 2);
        put(24, 11025, 4);
        put(28, quint32(11025 * channels * bits / 8), 4);
        put(32, quint32(channels * bits / 8), 2);
        put(34, quint32(bits), 2);
        data.replace(36, 4, "data");
        put(40, quint32(bytes), 4);
        for (int i = 0; i < bytes; ++i)
            data.append(char(i * 7));
        return data;
    }

    bool write(const QString& name, const QByteArray& bytes) const
    {
        const QString path = root.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        return writeBytes(path, bytes);
    }

    // Writes every file; false when one of them can't be written.
    bool make() const
    {
        QVector<uint> colours(256);
        for (int i = 0; i < 256; ++i)
            colours[i] = qRgb(i, 255 - i, i / 2);
        QSprites sprites;
        QSpritePalette* palette = sprites.addPalette(colours, QSpritePaletteShareMode::NoShare, 1, 1);
        QImage image(8, 6, QImage::Format_Indexed8);
        image.setColorCount(256);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, uint((x + y) % 5));
        for (int index = 0; index < 2; ++index) {
            QSprite* sprite = sprites.add();
            sprite->setImage(image);
            sprite->setInfo(palette, 0, index, 3, 5, 0);
        }
        QSounds sounds;
        sounds.add(0, 0, wav(1, 8, 100));
        sounds.add(1, 2, wav(2, 16, 50));
        QRGBPal table[QRGBPal::TableSize];
        QRGBPalette act(table);
        act.setColor(uchar(3), QColor(10, 20, 30));
        QDir().mkpath(file(QStringLiteral("sub")));
        QDir().mkpath(file(QStringLiteral("pal")));
        return write(QStringLiteral("chars/test/test.def"), definitions()) &&
               write(QStringLiteral("chars/test/test.air"),
                     "; actions\r\n[Begin Action 0]\r\nClsn2Default: 1\r\n Clsn2[0] = -5,0,5,-20\r\n"
                     "0,0, 0,0, 5\r\n0,1, 0,0, 5\r\n") &&
               write(QStringLiteral("chars/test/test.cmd"),
                     "[Command]\nname = \"a\"\ncommand = a\ntime = 1\n\n[Statedef -1]\n") &&
               write(QStringLiteral("chars/test/test.cns"), "[Statedef 0]\ntype = S\n") &&
               write(QStringLiteral("data/common1.cns"), "; shared\n[Statedef 5000]\ntype = S\n") &&
               sprites.toFile(file(QStringLiteral("sub/kfm.sff")), QSprites::Version_200) &&
               sounds.toFile(file(QStringLiteral("test.snd"))) &&
               act.toFile(file(QStringLiteral("pal/P1.act")));
    }
};
