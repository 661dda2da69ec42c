#include "QTranslationUnit.h"

bool QTranslationUnit::loadFile(const QString& path)
{
    if (!load(path)) return false;
    fileName = path;
    return true;
}
