#pragma once

#include <QDialog>

class QSpinBox;

// The small tool window of the extra cross: its position in sprite pixels relative to the main axis.
class ExAxisDlg : public QDialog
{
    Q_OBJECT

public:
    explicit ExAxisDlg(QWidget* parent = nullptr);

    QPoint value() const;
    // From the view: shows the position without sending it back.
    void setValue(QPoint position);
    QSpinBox* xBox() const { return x; }
    QSpinBox* yBox() const { return y; }

Q_SIGNALS:
    void axisChanged(QPoint position);
    void axisClose();

public Q_SLOTS:
    void valueChanged(int);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QSpinBox* x;
    QSpinBox* y;
    bool guard = false;
};
