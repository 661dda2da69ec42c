#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;
class QVBoxLayout;

// A side panel of the window: a title line over one content widget. The content belongs to whoever
// gave it (an editor's tree, a side editor); the panel only shows it and hands it back hidden.
class QPanelWidget : public QFrame
{
    Q_OBJECT
public:
    explicit QPanelWidget(QWidget* parent = nullptr);

    QString title() const;
    QWidget* content() const { return m_content; }
    // Shows another content widget; the one shown before is hidden and parented back to nowhere it
    // would be drawn. Null leaves the panel empty.
    void setContent(QWidget* content);

public Q_SLOTS:
    void setTitle(const QString& title);

private:
    QLabel* titleLabel;
    QVBoxLayout* column;
    QPointer<QWidget> m_content;
};
