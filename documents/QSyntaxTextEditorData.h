#pragma once

#include <QObject>

class QSyntaxTextEditor;
class QTextDocument;

// Rides on the QTextDocument of a QSyntaxTextEditor, so that whoever holds only the document (the code
// editor widget, scripts) finds its editor and encoding.
class QSyntaxTextEditorData : public QObject
{
    Q_OBJECT
public:
    QSyntaxTextEditorData(QSyntaxTextEditor* editor, QTextDocument* document);

    // The data on a document, or null for a document no QSyntaxTextEditor owns.
    static QSyntaxTextEditorData* of(const QTextDocument* document);

    QSyntaxTextEditor* editor;
    // Index into the encoding table (QTextEncoding); 0 is the system locale's.
    int codec = 0;
};
