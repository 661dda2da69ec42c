#pragma once

#include <QString>
#include <QStringList>

// Writes the sample character Roan into a folder "Roan" below a given one: definitions, sprites with
// palettes, palette files, animations, commands, states and sounds. The same program writes the same
// bytes on every run.
class QSampleCharacter
{
public:
    static QString name() { return QStringLiteral("Roan"); }

    // Creates the folder as needed; false with errorString() when a file can't be made.
    bool write(const QString& parentFolder);
    QString errorString() const { return error; }
    // The files written so far, as full paths.
    const QStringList& written() const { return files; }

private:
    bool writeBytes(const QString& path, const QByteArray& bytes);
    bool fail(const QString& path, const QString& problem);

    QString error;
    QStringList files;
};
