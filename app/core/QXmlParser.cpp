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

// Read here rather than by QXmlStreamReader::readElementText, which calls itself for every child
// element: a file nested a few hundred thousand levels deep would overflow the stack.
QString QXmlParser::text()
{
    if (m_textRead || m_reader.tokenType() != QXmlStreamReader::StartElement) return m_text;
    m_textRead = true;
    m_text.clear();
    int nested = 0;
    while (!m_reader.atEnd()) {
        switch (m_reader.readNext()) {
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            m_text += m_reader.text();
            break;
        case QXmlStreamReader::StartElement:
            ++nested;
            break;
        case QXmlStreamReader::EndElement:
            if (nested-- == 0) {
                --m_depth;
                return m_text;
            }
            break;
        default:
            break;
        }
    }
    return m_text;
}
