#pragma once

#include <QFile>
#include <QString>
#include <QXmlStreamAttributes>
#include <QXmlStreamReader>

class QIODevice;

// A forward-only walk over the start elements of an XML data file. The usual use is
//
//     QXmlParser xml(path);
//     if (!xml.findRoot("history"))
//         return;
//     while (xml.nextElement())
//         if (xml.name() == "entry")
//             add(xml.attribute("name"), xml.attribute("file"));
//
// and, to read only what is inside one element,
//
//     int parent = xml.depth();
//     while (xml.nextElement(parent))
//         ...;
//
// Depths count from 1 for the root. Malformed XML simply ends the walk; hasError() tells afterwards.
class QXmlParser
{
public:
    // Reads a device that is open for reading, or opens it read-only. The device is not owned.
    explicit QXmlParser(QIODevice* device);
    // Opens and owns the file at path.
    explicit QXmlParser(const QString& path);

    QXmlParser(const QXmlParser&) = delete;
    QXmlParser& operator=(const QXmlParser&) = delete;

    // Whether there is a readable device at all (false for a missing file).
    bool isOpen() const { return m_open; }

    // Reads up to the root element; true if it has the given name. When it has not, the walk is over and
    // nextElement() gives nothing, so callers do not read a foreign document by mistake.
    bool findRoot(const QString& name);

    // Moves to the next start element in document order. With within > 0, stops (false) as soon as the
    // element open at that depth closes, so only its descendants are visited. False at the end of the
    // document or on an error.
    bool nextElement(int within = 0);

    // The current element: its name, its attributes and its depth (1 for the root). After text() the
    // element is closed, but name() and attribute() still describe it.
    QString name() const { return m_name; }
    QString attribute(const QString& name) const { return m_attributes.value(name).toString(); }
    bool hasAttribute(const QString& name) const { return m_attributes.hasAttribute(name); }
    const QXmlStreamAttributes& attributes() const { return m_attributes; }
    int depth() const { return m_depth; }

    // Reads the whole text of the current element, that of its children included, and closes it. Asking
    // again gives the same text.
    QString text();

    bool hasError() const { return m_reader.hasError(); }
    QString errorString() const { return m_reader.errorString(); }

private:
    QFile m_file;
    QXmlStreamReader m_reader;
    QString m_name;
    QString m_text;
    QXmlStreamAttributes m_attributes;
    int m_depth = 0;
    bool m_open = false;
    bool m_rootRejected = false;
    bool m_textRead = false;
};
