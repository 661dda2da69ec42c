#pragma once

#include <QString>

// Finds the files that a definitions file names as the engine finds them. Content made on Windows
// writes paths with backslashes and in any case, so on a case-sensitive file system a name is looked
// up part by part in its folder when the exact name is missing. Files shared by all content (such as
// "common1.cns") are found in the engine's data folder and its root when the project's folder lacks
// them.
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
};
