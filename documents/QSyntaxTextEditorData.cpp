#include "QSyntaxTextEditorData.h"

#include <QTextDocument>

QSyntaxTextEditorData::QSyntaxTextEditorData(QSyntaxTextEditor* editor, QTextDocument* document)
    : QObject(document), editor(editor)
{}

QSyntaxTextEditorData* QSyntaxTextEditorData::of(const QTextDocument* document)
{
    return document ? document->findChild<QSyntaxTextEditorData*>(QString(), Qt::FindDirectChildrenOnly)
                    : nullptr;
}
