#include "QSnippet.h"

#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>

namespace {

QStringList splitList(const QString& text)
{
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
}

QString escapedText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&amp;"))
        .replace(QLatin1Char('<'), QLatin1String("&lt;"))
        .replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

QString attribute(const char* name, const QString& value)
{
    return QStringLiteral(" %1=\"%2\"").arg(QLatin1String(name), value.toHtmlEscaped());
}

} // namespace

bool QSnippetField::operator==(const QSnippetField& other) const
{
    return name == other.name && title == other.title && type == other.type && column == other.column &&
           values == other.values && valueTitles == other.valueTitles;
}

bool QSnippet::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    return readXml(file.readAll());
}

bool QSnippet::readXml(const QByteArray& bytes)
{
    QXmlStreamReader xml(bytes);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("snippet")) return false;
    QList<QSnippetField> readFields;
    QString readCode;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("field")) {
            const QXmlStreamAttributes attributes = xml.attributes();
            QSnippetField field;
            field.name = attributes.value(QLatin1String("name")).toString();
            field.title = attributes.value(QLatin1String("title")).toString();
            field.type = attributes.value(QLatin1String("type")).toString().toLower();
            field.column = qBound(0, attributes.value(QLatin1String("column")).toInt(), MaxColumn);
            field.values = splitList(attributes.value(QLatin1String("value")).toString());
            field.valueTitles = splitList(attributes.value(QLatin1String("value_title")).toString());
            readFields << field;
            xml.skipCurrentElement();
        } else if (xml.name() == QLatin1String("code")) {
            readCode = xml.readElementText();
        } else {
            xml.skipCurrentElement();
        }
    }
    if (xml.hasError()) return false;
    fields = readFields;
    // The file's CR LF must not reach the editor as characters of their own.
    code = readCode.replace(QLatin1String("\r\n"), QLatin1String("\n"))
               .replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return true;
}

QByteArray QSnippet::toXml() const
{
    const QString end = QStringLiteral("\r\n");
    QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>") + end +
                   QStringLiteral("<snippet>") + end + end;
    for (const QSnippetField& field : fields) {
        text += QStringLiteral("\t<field") + attribute("name", field.name) + attribute("title", field.title) +
                attribute("type", field.type);
        if (field.type == QLatin1String("items")) {
            text += attribute("value", field.values.join(QLatin1Char(',')));
            text += attribute("value_title", field.valueTitles.join(QLatin1Char(',')));
        }
        // The dialogs of the program make fields of the first column only; a file written by hand may
        // place them elsewhere, and editing it must not lose that.
        if (field.column > 0) text += attribute("column", QString::number(field.column));
        text += QStringLiteral("/>") + end;
    }
    if (!fields.isEmpty()) text += end;
    QString body = code;
    body.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\n'), end);
    text += QStringLiteral("\t<code>") + escapedText(body) + QStringLiteral("</code>") + end;
    text += QStringLiteral("</snippet>") + end;
    return text.toUtf8();
}

bool QSnippet::write(const QString& path) const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(toXml());
    return file.commit();
}

QString QSnippet::fill(QString code, const QList<QPair<QString, QString>>& values)
{
    for (const auto& [name, value] : values)
        if (!name.isEmpty()) code.replace(QLatin1Char('@') + name, value, Qt::CaseSensitive);
    return code;
}
