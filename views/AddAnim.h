#pragma once

#include <QDialog>
#include <QSet>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;

// Asks for a new action: its number, an optional name, and the time its frames get when the action is
// made of pictures. A number that the file already has is refused while it is typed.
class AddAnim : public QDialog
{
    Q_OBJECT

public:
    explicit AddAnim(QWidget* parent = nullptr, bool askTime = true);

    // The numbers taken already; the first free one from 0 is offered.
    void setUsedNumbers(const QSet<int>& numbers);
    int number() const;
    void setNumber(int value);
    QString name() const;
    void setName(const QString& value);
    int frameTime() const;
    void setFrameTime(int ticks);

    QSpinBox* numberBox() const { return numberField; }
    QLineEdit* nameBox() const { return nameField; }
    QSpinBox* timeBox() const { return timeField; }

public Q_SLOTS:
    // Refused while the number is taken.
    void accept() override;

private:
    void check();

    QSpinBox* numberField;
    QLineEdit* nameField;
    QSpinBox* timeField;
    QLabel* warning;
    QDialogButtonBox* buttons;
    QSet<int> used;
};
