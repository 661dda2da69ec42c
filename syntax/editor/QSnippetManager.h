#pragma once

#include "QSnippet.h"
#include "QTemplateStore.h"

// The code snippets in the folder "snippets" beside the program. Snippet texts shown to the user are
// translated in this class's context, and a snippet's texts can be written out for translators.
class QSnippetManager : public QTemplateStore
{
    Q_OBJECT
public:
    // The folder beside the program unless another is given.
    explicit QSnippetManager(const QString& directory = QString(), QObject* parent = nullptr);

    // False when the snippet's file doesn't open or is not a snippet.
    bool read(const QString& name, QSnippet* snippet) const;
    static QString translate(const QString& text);
    // A Qt Linguist source with the snippet's field and value titles, the snippet's name as comment.
    static bool writeTranslationSource(const QString& name, const QSnippet& snippet, const QString& path);
};
