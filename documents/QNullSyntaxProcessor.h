#pragma once

#include "QNullSyntaxHierarchy.h"
#include "QSyntaxProcessor.h"

// The processor of a text that is not coloured or checked: every block gets its data and state 0.
// It may stand in for a language whose own processor is not available, and then reports that
// language as its syntaxType().
class QNullSyntaxProcessor : public QSyntaxProcessor
{
    Q_OBJECT
public:
    explicit QNullSyntaxProcessor(QTextDocument* document, int syntaxType = SyntaxNone);

    QSyntaxHierarchy* hierarchy() override { return &m_hierarchy; }

protected:
    void highlightBlock(const QString& text) override;
    void refreshVersion() override;

private:
    QNullSyntaxHierarchy m_hierarchy;
};
