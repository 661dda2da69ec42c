#include "QTextEditorSettings.h"

#include "QTextEditor.h"

#include <QFontMetricsF>

namespace {

bool flag(const QMap<QString, QVariant>& settings, const char* key, bool fallback)
{
    const QVariant value = settings.value(QLatin1String(key));
    return value.isValid() ? value.toBool() : fallback;
}

} // namespace

void QTextEditorSettings::apply(QTextEditor* editor, const QMap<QString, QVariant>& settings)
{
    if (!editor) return;
    QFont font = editor->font();
    const QString family = settings.value(QStringLiteral("font_name")).toString();
    if (!family.isEmpty()) font.setFamily(family);
    const int size = settings.value(QStringLiteral("font_size")).toInt();
    if (size > 0) font.setPointSize(size);
    // "Courier" is missing on many systems; the substitute must still be a fixed-pitch font.
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    editor->setFont(font);
    // The tab stop is a distance in pixels, so it follows the new font.
    editor->setTabStopDistance(QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')) * TabSpaces);

    editor->setLineNumbersVisible(flag(settings, "code_line_numbers", true));
    editor->setFoldingEnabled(flag(settings, "code_folding_markers", true));
    editor->setHighlightCurrentLine(flag(settings, "code_highlight_line", true));
    editor->setHighlightBlocks(flag(settings, "code_highlight_blocks", false));
    editor->setParenthesesMatching(flag(settings, "code_paren_matching", true));
}
