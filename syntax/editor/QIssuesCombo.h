#pragma once

#include <QComboBox>
#include <QPointer>

class QSyntaxTextEditor;

// The findings of the shown file, one entry each with its line, read from the blocks whenever the
// file's issues are rebuilt.
class QIssuesCombo : public QComboBox
{
    Q_OBJECT
public:
    explicit QIssuesCombo(QWidget* parent = nullptr);

    void setText(QSyntaxTextEditor* text);
    // The 0-based block (y) and column (x) of an entry; (-1, -1) outside the list.
    QPoint target(int index) const;

public Q_SLOTS:
    void refresh();

private:
    QPointer<QSyntaxTextEditor> text;
    QMetaObject::Connection connection;
};
