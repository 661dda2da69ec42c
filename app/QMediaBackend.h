#pragma once

#include <QString>
#include <QStringList>

// Decides once per run whether Qt Multimedia can play here, before anything of it is made in this
// process. Qt 6.4's GStreamer back end crashes inside QMediaPlayer's constructor when GStreamer's
// plugins are missing, so each candidate back end is tried in tavrel-media-probe first; the first
// that loads a WAV is chosen (through QT_MEDIA_BACKEND when it is not the default one).
class QMediaBackend
{
public:
    // True when a back end works; else false with a reason fit for the user.
    static bool ready(QString* reason);
    // The back end chosen by ready(): empty for Qt's default.
    static QString chosen();
    // The probe program; by default tavrel-media-probe beside the running program.
    static void setProbeProgram(const QString& path);
    // Forgets the decision, so that the next ready() asks again (for tests).
    static void reset();
    // The back ends tried in order: Qt's default, then FFmpeg. An explicit QT_MEDIA_BACKEND is the
    // user's choice and the only one tried.
    static QStringList candidates();
};
