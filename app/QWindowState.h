#pragma once

#include <QMap>
#include <QPoint>
#include <QRect>
#include <QString>

class QMugenModel;

// What the window looks like between runs, as plain values: read from the configuration at start,
// taken from the window and written back when it closes. Keeping it apart from the window lets the
// keys and their fallbacks be checked without showing one.
struct QWindowState
{
    // A floating tool window: whether it was open, and where.
    struct Floating
    {
        bool shown = false;
        QPoint position;
    };

    // The floating tools that remember themselves, by their key names.
    static const QStringList floatingNames;

    QRect geometry{0, 0, 580, 750};
    int state = 0;
    bool showActionList = true;
    bool showLeftPanel = true;
    bool showRightPanel = true;
    bool showOrganizer = false;
    bool showQuickSearch = false;
    // 0 leaves the dock as wide as Qt makes it.
    int actionListWidth = 0;
    int actionListArea = 1; // Qt::LeftDockWidgetArea
    bool mainToolbar = true;
    bool extraToolbar = true;
    // Whether the extra tool bar starts a row of its own, and whether the main one comes first.
    bool toolbarBreak = false;
    bool toolbarFirst = true;
    QMap<QString, Floating> floating;

    // Keys missing from the configuration keep the values above.
    void read(QMugenModel& config);
    void write(QMugenModel& config) const;
};
