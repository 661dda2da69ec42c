#include "QSnippetManager.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QXmlStreamWriter>

QSnippetManager::QSnippetManager(const QString& directory, QObject* parent)
    : QTemplateStore(directory.isEmpty() ? QCoreApplication::applicationDirPath() + QLatin1String("/snippets")
                                         : directory,
                     QStringLiteral("xml"), parent)
{}

bool QSnippetManager::read(const QString& name, QSnippet* snippet) const
{
    return !name.isEmpty() && snippet->read(path(name));
}

QString QSnippetManager::translate(const QString& text)
{
    return text.isEmpty() ? text : QCoreApplication::translate("QSnippetManager", text.toUtf8().constData());
}

bool QSnippetManager::writeTranslationSource(const QString& name, const QSnippet& snippet,
                                             const QString& path)
{
    QStringList texts;
    for (const QSnippetField& field : snippet.fields)
        texts << field.title << field.valueTitles;
    texts.removeAll(QString());
    texts.removeDuplicates();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral("<!DOCTYPE TS>"));
    xml.writeStartElement(QStringLiteral("TS"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("2.1"));
    xml.writeStartElement(QStringLiteral("context"));
    xml.writeTextElement(QStringLiteral("name"), QStringLiteral("QSnippetManager"));
    for (const QString& text : std::as_const(texts)) {
        xml.writeStartElement(QStringLiteral("message"));
        xml.writeTextElement(QStringLiteral("source"), text);
        xml.writeTextElement(QStringLiteral("comment"), name);
        xml.writeStartElement(QStringLiteral("translation"));
        xml.writeAttribute(QStringLiteral("type"), QStringLiteral("unfinished"));
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return file.commit();
}
