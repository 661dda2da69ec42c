#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

// Turns SIGTERM, SIGINT and SIGHUP into an orderly close of the editor: the handler only writes a
// byte to a socket pair, and the event loop calls close() as if the user had closed the window, with
// its save questions. Without this a terminal's Ctrl+C or a session's end would kill the editor
// without writing its configuration.
class QQuitSignals : public QObject
{
    Q_OBJECT

public:
    explicit QQuitSignals(std::function<void()> close, QObject* parent = nullptr);
    ~QQuitSignals() override;

private:
    void received();

    std::function<void()> closer;
    QSocketNotifier* notifier = nullptr;
};
