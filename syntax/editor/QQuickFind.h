#pragma once

#include "QQuickFindOption.h"

#include <QWidget>

class QKeyEvent;
class QLineEdit;
class QToolButton;

// The search bar under the text: a find line, a replace line and the switches of the search. It only
// asks; the editor that is current does the finding and replacing.
class QQuickFind : public QWidget
{
    Q_OBJECT
public:
    explicit QQuickFind(QWidget* parent = nullptr);

    QLineEdit* findLine() const { return findText; }
    QLineEdit* replaceLine() const { return replaceText; }
    QQuickFindOptions options() const;
    void setOption(QQuickFindOption option, bool on);

    // Shows the bar with the find line focused and its text selected, seeded with text when given.
    void open(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;

Q_SIGNALS:
    void doFind(const QString& text, const QQuickFindOptions& options);
    void doReplace(const QString& source, const QString& dest, const QQuickFindOptions& options, bool all);
    // The user closed the bar; the text takes the focus back.
    void closed();

private:
    // A switch whose state the configuration keeps under key between runs.
    QToolButton* addSwitch(const QString& text, const QString& tip, const char* key);

    QLineEdit* findText;
    QLineEdit* replaceText;
    QMap<QQuickFindOption, QToolButton*> switches;
};
