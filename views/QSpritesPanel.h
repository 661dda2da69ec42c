#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;
class QSpinBox;
class QSpritesEditor;
class QToolButton;

// The left side panel of the sprites editor: where the current sprite stands in the file, its group,
// number and axis, its flags, the view switches and the onion skin. Each control carries the name of
// the command it stands for, so tests and the key table find it by that name.
class QSpritesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QSpritesPanel(QSpritesEditor* editor, QWidget* parent = nullptr);

    // Commits a number still being typed, so a command that follows sees it.
    void flush();
    QSlider* selector() const { return selection; }
    QSpinBox* groupBox() const { return group; }
    QSpinBox* numberBox() const { return number; }
    QSpinBox* xBox() const { return x; }
    QSpinBox* yBox() const { return y; }
    QLabel* infoLabel() const { return info; }
    QLabel* positionLabel() const { return position; }
    // A button that triggers a command's action, placed in the panel.
    QToolButton* addCommand(QAction* action);

private:
    QSpinBox* spin(const char* name, int minimum, int maximum);

    QSlider* selection;
    QLabel* position;
    QSpinBox* group;
    QSpinBox* number;
    QSpinBox* x;
    QSpinBox* y;
    QCheckBox* decLoad;
    QCheckBox* transparent;
    QCheckBox* switchPal;
    QLabel* info;
    QCheckBox* onion;
    QSlider* onionSelection;
    QLabel* onionText;
    QWidget* commands;
};
