#pragma once

#include <QWidget>

// The content of a side panel: an ordinary widget that asks the window's splitter for the width its
// controls were laid out for, whatever its layout alone would ask.
class QSidePanelPage : public QWidget
{
    Q_OBJECT

public:
    QSidePanelPage(int preferredWidth, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    int width;
};
