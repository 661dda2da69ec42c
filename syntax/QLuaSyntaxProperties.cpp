#include "QLuaSyntaxProperties.h"

#include "QXmlParser.h"

bool QLuaSyntaxProperties::load(const QString& path)
{
    functions.clear();
    classes.clear();
    QXmlParser xml(path);
    if (!xml.findRoot(QStringLiteral("syntax"))) return false;
    while (xml.nextElement()) {
        if (xml.name() == QLatin1String("function"))
            functions << xml.attribute(QStringLiteral("name"));
        else if (xml.name() == QLatin1String("class"))
            classes << xml.attribute(QStringLiteral("name"));
    }
    return true;
}
