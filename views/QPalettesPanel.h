#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QPaletteWidget;
class QPalettesEditor;
class QSlider;
class QSpinBox;
class QToolButton;

// The right side panel of the palettes editor: where the current palette stands among the file's
// palettes, its group and number, its colours, and buttons for the commands. Controls carry the names
// of the commands they stand for, so tests and the key table find them.
class QPalettesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QPalettesPanel(QPalettesEditor* editor, QWidget* parent = nullptr);

    QSlider* selector() const { return selection; }
    QLabel* positionLabel() const { return position; }
    QSpinBox* groupBox() const { return group; }
    QSpinBox* numberBox() const { return number; }
    QPaletteWidget* colors() const { return grid; }
    // A button that triggers a command's action, placed with the navigation or with the colour
    // commands.
    QToolButton* addNavigation(QAction* action);
    QToolButton* addCommand(QAction* action);

private:
    QSpinBox* spin(const char* name);
    static QToolButton* addButton(QWidget* holder, QAction* action);

    QSlider* selection;
    QLabel* position;
    QSpinBox* group;
    QSpinBox* number;
    QPaletteWidget* grid;
    QWidget* navigation;
    QWidget* commands;
};
