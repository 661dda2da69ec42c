#pragma once

#include "QProjectTypes.h"

#include <QString>
#include <memory>

class QCliContext;
class QProject;

// Opening a project from the command line as the editor opens it: the definitions file with every file
// it names, or an old single-file font. With the checkers, each text file is checked in the project's
// version, as the editor's issue list shows it.
class QCliProject
{
public:
    // The open project, or null after printing why it failed.
    static std::unique_ptr<QProject> open(QCliContext& context, const QString& path, bool withCheckers);

    static QString typeName(QProjectType type);
    // "1.0" for 0x1000000; the third and fourth parts only when set.
    static QString versionText(quint32 version);
};
