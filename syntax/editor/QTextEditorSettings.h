#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

class QTextEditor;

// The configured look of the code editor: font, tab width, the parts of the gutter, the line and block
// highlights and bracket matching, read from the settings ("font_name", "font_size", "code_*"). Applied
// at start and whenever the options change, to every open editor.
class QTextEditorSettings
{
public:
    // Tabs are as wide as this many spaces of the editor's font.
    static constexpr int TabSpaces = 4;

    static void apply(QTextEditor* editor, const QMap<QString, QVariant>& settings);
};
