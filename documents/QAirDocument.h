#pragma once

#include "QAnimations.h"
#include "QSyntaxTextEditor.h"

// An AIR file on its own, outside a project: the text editor that holds the file and the animation
// model bound to it, as a project has them. The text is loaded and saved through the editor, so a file
// that is not edited is written back byte for byte.
class QAirDocument
{
public:
    QAirDocument();
    // A document that holds text as if it had been loaded.
    explicit QAirDocument(const QString& text);
    ~QAirDocument();

    QAirDocument(const QAirDocument&) = delete;
    QAirDocument& operator=(const QAirDocument&) = delete;

    // The text as the blocks hold it, lines joined by LF.
    QString text() const { return editor.text(); }

    QSyntaxTextEditor editor;
    QAnimations model;
};
