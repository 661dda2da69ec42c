#include "QTextSearch.h"

#include <QRegularExpression>
#include <QTextDocument>

namespace {

QTextDocument::FindFlags flagsOf(const QQuickFindOptions& options)
{
    QTextDocument::FindFlags flags;
    if (options.value(QQuickFindOption::CaseSensitive)) flags |= QTextDocument::FindCaseSensitively;
    if (options.value(QQuickFindOption::Backward)) flags |= QTextDocument::FindBackward;
    return flags;
}

QRegularExpression expressionOf(const QString& text, const QQuickFindOptions& options)
{
    return QRegularExpression(text, options.value(QQuickFindOption::CaseSensitive)
                                        ? QRegularExpression::NoPatternOption
                                        : QRegularExpression::CaseInsensitiveOption);
}

} // namespace

QTextCursor QTextSearch::find(const QTextDocument* document, const QString& text,
                              const QQuickFindOptions& options, const QTextCursor& from)
{
    if (!document || text.isEmpty()) return QTextCursor();
    const QTextDocument::FindFlags flags = flagsOf(options);
    if (options.value(QQuickFindOption::RegularExpression)) {
        const QRegularExpression expression = expressionOf(text, options);
        // An invalid pattern finds nothing rather than whatever Qt makes of it.
        if (!expression.isValid()) return QTextCursor();
        return document->find(expression, from, flags);
    }
    return document->find(text, from, flags);
}

QTextCursor QTextSearch::findFromEdge(const QTextDocument* document, const QString& text,
                                      const QQuickFindOptions& options)
{
    if (!document) return QTextCursor();
    QTextCursor from(const_cast<QTextDocument*>(document));
    if (options.value(QQuickFindOption::Backward)) from.movePosition(QTextCursor::End);
    return find(document, text, options, from);
}

bool QTextSearch::isHit(const QString& selected, const QString& text, const QQuickFindOptions& options)
{
    if (selected.isEmpty() || text.isEmpty()) return false;
    if (options.value(QQuickFindOption::RegularExpression))
        return expressionOf(QStringLiteral("\\A(?:%1)\\z").arg(text), options).match(selected).hasMatch();
    return selected.compare(text, options.value(QQuickFindOption::CaseSensitive) ? Qt::CaseSensitive
                                                                                 : Qt::CaseInsensitive) == 0;
}

int QTextSearch::replaceAll(QTextDocument* document, const QString& source, const QString& dest,
                            const QQuickFindOptions& options, QTextCursor* last)
{
    if (!document || source.isEmpty()) return 0;
    QQuickFindOptions forward = options;
    forward.insert(QQuickFindOption::Backward, false);
    QTextCursor edit(document);
    QTextCursor from(document);
    int replaced = 0;
    for (;;) {
        const QTextCursor hit = find(document, source, forward, from);
        if (hit.isNull()) break;
        if (replaced == 0) edit.beginEditBlock();
        edit.setPosition(hit.selectionStart());
        edit.setPosition(hit.selectionEnd(), QTextCursor::KeepAnchor);
        edit.insertText(dest);
        ++replaced;
        from = edit;
        // An empty hit would be found again at the same place.
        if (hit.selectionStart() == hit.selectionEnd() && !from.movePosition(QTextCursor::NextCharacter))
            break;
    }
    if (replaced > 0) edit.endEditBlock();
    if (last) *last = edit;
    return replaced;
}
