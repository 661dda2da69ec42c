#include "QXmlParser.h"

#include <QIODevice>

QXmlParser::QXmlParser(QIODevice* device)
{
    if (device && (device->isOpen() ? device->isReadable() : device->open(QIODevice::ReadOnly))) {
        m_open = true;
        m_reader.setDevice(device);
    }
}

QXmlParser::QXmlParser(const QString& path) : m_file(path)
{
    if (m_file.open(QIODevice::ReadOnly)) {
        m_open = true;
        m_reader.setDevice(&m_file);
    }
}

bool QXmlParser::findRoot(const QString& name)
{
    if (!m_open || m_depth != 0 || m_rootRejected) return false;
    if (!nextElement() || m_name != name) {
        m_rootRejected = true;
        return false;
    }
    return true;
}

bool QXmlParser::nextElement(int within)
{
    if (!m_open || m_rootRejected) return false;
    // A text() read that closed the element at `within` already left it.
    if (within > 0 && m_depth < within) return false;
    while (!m_reader.atEnd()) {
        switch (m_reader.readNext()) {
        case QXmlStreamReader::StartElement:
            ++m_depth;
            m_name = m_reader.name().toString();
            m_attributes = m_reader.attributes();
            m_textRead = false;
            m_text.clear();
            return true;
        case QXmlStreamReader::EndElement:
            --m_depth;
            if (m_depth < within) return false;
            break;
        default:
            break;
        }
    }
    return false;
}

QString QXmlParser::text()
{
    if (m_textRead || m_reader.tokenType() != QXmlStreamReader::StartElement) return m_text;
    m_text = m_reader.readElementText(QXmlStreamReader::IncludeChildElements);
    if (m_reader.tokenType() == QXmlStreamReader::EndElement) --m_depth;
    m_textRead = true;
    return m_text;
}
