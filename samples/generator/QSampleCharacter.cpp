#include "QSampleCharacter.h"

#include "QACTPalette.h"
#include "QSampleAnimations.h"
#include "QSamplePalettes.h"
#include "QSampleSounds.h"
#include "QSampleSprites.h"
#include "QSampleTexts.h"
#include "QSounds.h"
#include "QSprites.h"

#include <QDir>
#include <QSaveFile>

bool QSampleCharacter::fail(const QString& path, const QString& problem)
{
    error = QStringLiteral("%1: %2").arg(path, problem);
    return false;
}

bool QSampleCharacter::writeBytes(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return fail(path, file.errorString());
    files << path;
    return true;
}

bool QSampleCharacter::write(const QString& parentFolder)
{
    const QString folder = QDir(parentFolder).filePath(name());
    if (!QDir().mkpath(folder)) return fail(folder, QStringLiteral("the folder can't be made"));
    const QDir dir(folder);
    const QString base = dir.filePath(name());

    if (!writeBytes(base + QStringLiteral(".def"), QSampleTexts::definitions())) return false;

    const QSampleSprites drawings;
    QSprites sprites;
    QString problem;
    if (!drawings.fill(sprites, &problem)) return fail(base + QStringLiteral(".sff"), problem);
    if (!sprites.toFile(base + QStringLiteral(".sff"), QSprites::Version_200))
        return fail(base + QStringLiteral(".sff"), QStringLiteral("the sprite file can't be written"));
    files << base + QStringLiteral(".sff");

    for (int number = 1; number <= QSamplePalettes::Count; ++number) {
        const QString path = base + QString::number(number) + QStringLiteral(".act");
        QSaveFile file(path);
        const QSamplePalettes::Table table = QSamplePalettes::table(number);
        if (!file.open(QIODevice::WriteOnly) || !QACTPalette::write(&file, table.data()) || !file.commit())
            return fail(path, QStringLiteral("the palette can't be written"));
        files << path;
    }

    if (!writeBytes(base + QStringLiteral(".air"), QSampleAnimations::text(drawings))) return false;
    if (!writeBytes(base + QStringLiteral(".cmd"), QSampleTexts::commands())) return false;
    if (!writeBytes(base + QStringLiteral(".cns"), QSampleTexts::states())) return false;

    QSounds sounds;
    QSampleSounds::fill(sounds);
    if (!sounds.toFile(base + QStringLiteral(".snd")))
        return fail(base + QStringLiteral(".snd"), sounds.errorString());
    files << base + QStringLiteral(".snd");
    return true;
}
