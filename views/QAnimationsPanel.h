#pragma once

#include <QWidget>

class QAction;
class QAnimationsEditor;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSlider;
class QSpinBox;
class QToolButton;

// The left side panel of the animations editor: where the current action stands in the file, its
// number and name, where the current frame stands in the action and every value of its line and of
// the marks above it. Each control carries the name it is found by in tests and styles.
class QAnimationsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QAnimationsPanel(QAnimationsEditor* editor, QWidget* parent = nullptr);

    // Commits a number still being typed, so that a command that follows sees it.
    void flush();
    QSlider* selector() const { return selection; }
    QLabel* positionLabel() const { return position; }
    QSpinBox* numberBox() const { return number; }
    QLineEdit* nameBox() const { return name; }
    QSlider* frameSelector() const { return frameSelection; }
    QLabel* framePositionLabel() const { return framePosition; }
    QSpinBox* groupBox() const { return group; }
    QSpinBox* imageBox() const { return image; }
    QSpinBox* xBox() const { return x; }
    QSpinBox* yBox() const { return y; }
    QSpinBox* timeBox() const { return time; }
    QComboBox* flipBox() const { return flip; }
    QComboBox* transBox() const { return trans; }
    QSpinBox* srcBox() const { return src; }
    QSpinBox* dstBox() const { return dst; }
    QCheckBox* loopBox() const { return loop; }
    QDoubleSpinBox* scaleXBox() const { return scaleX; }
    QDoubleSpinBox* scaleYBox() const { return scaleY; }
    QDoubleSpinBox* angleBox() const { return angle; }
    QCheckBox* blendMark() const { return iBlend; }
    QCheckBox* offsetMark() const { return iOffset; }
    QCheckBox* scaleMark() const { return iScale; }
    QCheckBox* angleMark() const { return iAngle; }
    QCheckBox* onionBox() const { return onion; }
    // A button for a command's action, placed in the panel's grid of commands.
    QToolButton* addCommand(QAction* action);

private:
    QSpinBox* spin(const char* name, int minimum, int maximum);
    QDoubleSpinBox* real(const char* name, double minimum, double maximum, int decimals);
    QCheckBox* check(const char* name, const QString& text);

    QSlider* selection;
    QLabel* position;
    QSpinBox* number;
    QLineEdit* name;
    QWidget* frameArea;
    QSlider* frameSelection;
    QLabel* framePosition;
    QSpinBox* group;
    QSpinBox* image;
    QSpinBox* x;
    QSpinBox* y;
    QSpinBox* time;
    QComboBox* flip;
    QComboBox* trans;
    QSpinBox* src;
    QSpinBox* dst;
    QCheckBox* loop;
    QDoubleSpinBox* scaleX;
    QDoubleSpinBox* scaleY;
    QDoubleSpinBox* angle;
    QCheckBox* iBlend;
    QCheckBox* iOffset;
    QCheckBox* iScale;
    QCheckBox* iAngle;
    QCheckBox* onion;
    QWidget* commands;
};
