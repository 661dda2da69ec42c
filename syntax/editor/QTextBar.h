#pragma once

#include <QWidget>

class QComboBox;
class QIssuesCombo;
class QSnippetManager;

// The bar above the text: the code snippets to insert and the findings of the file.
class QTextBar : public QWidget
{
    Q_OBJECT
public:
    QTextBar(QSnippetManager* snippets, QWidget* parent = nullptr);

    QComboBox* snippetBox() const { return snippetCombo; }
    QIssuesCombo* issuesBox() const { return issues; }

private:
    QComboBox* snippetCombo;
    QIssuesCombo* issues;
};
