#include "QIssuesCombo.h"

#include "QSyntaxTextEditor.h"
#include "QTextEditorBlockData.h"

#include <QTextBlock>

QIssuesCombo::QIssuesCombo(QWidget* parent) : QComboBox(parent)
{
    setObjectName(QStringLiteral("issuesBox"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(30);
}

void QIssuesCombo::setText(QSyntaxTextEditor* shown)
{
    disconnect(connection);
    text = shown;
    if (shown)
        connection = connect(shown, &QSyntaxTextEditor::hierarchyUpdated, this, &QIssuesCombo::refresh);
    refresh();
}

QPoint QIssuesCombo::target(int index) const
{
    const QVariant at = itemData(index);
    return at.isValid() ? at.toPoint() : QPoint(-1, -1);
}

void QIssuesCombo::refresh()
{
    const QSignalBlocker blocker(this);
    clear();
    if (!text) return;
    for (QTextBlock block = text->document->firstBlock(); block.isValid(); block = block.next()) {
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        if (!data) continue;
        for (const QSyntaxMessage& message : data->messages) {
            if (message.kind == SyntaxNotice) continue;
            const QString line = tr("Line %1: %2").arg(block.blockNumber() + 1).arg(message.text);
            addItem(line, QPoint(message.start, block.blockNumber()));
        }
    }
    setCurrentIndex(-1);
}
