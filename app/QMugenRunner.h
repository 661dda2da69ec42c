#pragma once

#include <QObject>

class QInterface;
class QWidget;

// Tests the open work in the real game: writes the projects that the chosen command line names into
// the game's folders under throw-away names, runs the game without blocking the window, and removes
// what it wrote when the game ends.
class QMugenRunner : public QObject
{
    Q_OBJECT
public:
    QMugenRunner(QInterface* iface, QWidget* window);

    bool isRunning() const { return !finished; }

public Q_SLOTS:
    void run();
    void mugenFinished(int exitCode);

private:
    // The executable and its command line, asked for when there are several; false when cancelled.
    bool choose(QString* exe, QString* params);

    QInterface* iface;
    QWidget* window;
    bool finished = true;
};
