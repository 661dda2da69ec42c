#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

// One field of a code snippet as its file describes it: the placeholder name, the label the insert
// dialog shows, the kind of input ("string", "int", "float" or "items") and the dialog column.
struct QSnippetField
{
    QString name;
    QString title;
    QString type = QStringLiteral("string");
    int column = 0;
    // For "items": the values put into the code and the titles the user chooses among.
    QStringList values;
    QStringList valueTitles;

    bool operator==(const QSnippetField& other) const;
};

// A code snippet: a code text with "@name" placeholders and the fields that fill them. The file is XML
// with the root "snippet", its "field" elements and one "code" element.
struct QSnippet
{
    // Fields further right than this column are put into it.
    static constexpr int MaxColumn = 10;

    QList<QSnippetField> fields;
    QString code;

    // False, with the snippet untouched, when the file can't be read or is not a snippet.
    bool read(const QString& path);
    bool readXml(const QByteArray& bytes);
    // The file form that the program writes: UTF-8 with CR LF line ends, tab-indented elements.
    QByteArray toXml() const;
    bool write(const QString& path) const;

    // Replaces each "@name" by its value, case sensitive and in the order given, so that a name that
    // begins another ("@a" before "@ab") takes its share of the longer placeholder too.
    static QString fill(QString code, const QList<QPair<QString, QString>>& values);
};
