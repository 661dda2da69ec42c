#pragma once

#include <QString>
#include <QStringList>

// Finds the files that a definitions file names as the engine finds them. Content made on Windows
// writes paths with backslashes and in any case, so on a case-sensitive file system a name is looked
// up part by part in its folder when the exact name is missing. Files shared by all content (such as
// "common1.cns") are found in the engine's data folder and its root when the project's folder lacks
// them. A name is bytes in its author's code page, while a disk of this system names files in UTF-8:
// so a name is looked for in each of its spellings, the one of the definitions' own codec first.
class QProjectPaths
{
public:
    // Backslashes become slashes.
    static QString normalized(const QString& name);
    // The existing file that base + "/" + name means, matching each part without regard to case when
    // needed; empty when there is none.
    static QString locate(const QString& base, const QString& name);
    // locate() in base, then in the engine's data folder, then in the engine's root; empty when none
    // of them has it. A stage names its sprites relative to the engine's stages folder, which is
    // searched last when stage is set.
    static QString find(const QString& base, const QString& name, bool stage = false);
    // The nearest folder at or above folder that holds a "data" folder (in any case): where the engine
    // runs from. Empty when there is none within a few levels.
    static QString engineRoot(const QString& folder);
    // The file a project reads: what find() finds, else base + "/" + name as written, which then
    // simply fails to load.
    static QString resolve(const QString& base, const QString& name);

    // The names that a name read from definitions in the codec at index may stand for: the name itself,
    // then every other exact reading of its bytes (QCharsetDetector::readings). bytes are the name as
    // the file has them; when empty, the name encoded in the codec.
    static QStringList spellings(const QString& name, const QByteArray& bytes, int codec);
    // find() of the first spelling that exists.
    static QString find(const QString& base, const QStringList& spellings, bool stage = false);
};
