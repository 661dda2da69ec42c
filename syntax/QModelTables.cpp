#include "QModelTables.h"

#include "QSyntaxLibrary.h"
#include "QTextElementRegistry.h"

#include <QCoreApplication>

namespace {
QModelTables* current = nullptr;
}

QModelTables::QModelTables(const QString& dataDir)
    : folder(dataDir.isEmpty() ? QCoreApplication::applicationDirPath() : dataDir)
{
    Q_ASSERT_X(!current, "QModelTables", "one set of process-wide tables at a time");
    current = this;
    registerTextElements();
}

QModelTables::~QModelTables()
{
    unregisterTextElements();
    if (current == this) current = nullptr;
}

bool QModelTables::checkers()
{
    if (!current) return false;
    if (current->loaded < 0) {
        current->loaded = loadSyntaxDefinitions(current->folder) ? 1 : 0;
        installSyntaxProcessors();
    }
    return current->loaded == 1;
}

QString QModelTables::dataDir()
{
    return current ? current->folder : QString();
}
