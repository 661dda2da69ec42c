#include "QSyntaxFormats.h"

QSyntaxFormats* syntaxFormats = nullptr;

QSyntaxFormats::QSyntaxFormats() : baseFont(QStringLiteral("Courier"), 10)
{
    baseFont.setFixedPitch(true);
    baseFont.setStyleHint(QFont::Monospace);
    for (QTextCharFormat& format : formats)
        format.setFont(baseFont);
}

void QSyntaxFormats::setFont(const QFont& font)
{
    baseFont = font;
    for (QTextCharFormat& format : formats) {
        const bool bold = format.fontWeight() > QFont::Normal;
        const bool italic = format.fontItalic();
        format.setFont(baseFont);
        format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
        format.setFontItalic(italic);
    }
}

QString QSyntaxFormats::colorsetKey(int slot)
{
    static const char* const keys[] = {"comment",    "number",  "string", "keyword", "block",
                                       "controller", "trigger", "const",  "value"};
    if (slot < 0 || slot >= int(sizeof(keys) / sizeof(keys[0]))) return QString();
    return QString::fromLatin1(keys[slot]);
}
