#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QSlider;
class QSoundsEditor;
class QSpinBox;
class QToolButton;

// The left side panel of the sounds editor: where the current sound stands in the file, its group and
// sample number, the facts of its WAV and the play controls. Each control carries the name of the
// command it stands for, so tests and the key table find it by that name.
class QSoundsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QSoundsPanel(QSoundsEditor* editor, QWidget* parent = nullptr);

    // Commits a number still being typed, so a command that follows sees it.
    void flush();
    QSlider* selector() const { return selection; }
    QSpinBox* groupBox() const { return group; }
    QSpinBox* numberBox() const { return number; }
    QLabel* infoLabel() const { return info; }
    QLabel* positionLabel() const { return position; }
    // A button that triggers a command's action, placed in the panel.
    QToolButton* addCommand(QAction* action);

private:
    QSpinBox* spin(const char* name);

    QSlider* selection;
    QLabel* position;
    QSpinBox* group;
    QSpinBox* number;
    QLabel* info;
    QWidget* commands;
};
