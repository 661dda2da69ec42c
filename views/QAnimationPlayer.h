#pragma once

#include <QPoint>

class QAnimation;
class QAnimationFrame;

// The clock of animation playback, apart from wall time: each tick() is one game tick (1/60 s). It
// decides which frame is shown and how interpolation marks bend its look, so a test can step through
// seconds of an action and read what each tick shows. Every tick reads the action afresh: frames may
// be added, removed or retimed while it plays.
class QAnimationPlayer
{
public:
    static constexpr int TicksPerSecond = 60;
    static constexpr double TickMs = 1000.0 / TicksPerSecond;

    // What the view shows for the current tick.
    struct Look
    {
        int frame = -1;
        QPoint offset;
        double scaleX = 1;
        double scaleY = 1;
        double angle = 0;
        int source = 256;
        int destination = 256;
    };

    // Starts at a frame of the action, at its first tick.
    void start(QAnimation* action, int frame);
    void stop() { action = nullptr; }
    bool isRunning() const { return action != nullptr; }

    // Advances one tick; true when the frame shown changed. The first tick after start() shows the start
    // frame at its tick 0.
    bool tick();

    int frameIndex() const { return current; }
    // The ticks the current frame has been shown before the present one.
    int ticksInFrame() const { return ticks; }
    Look look() const { return shown; }

    // The frame that follows index: the next one, or from the last the one marked LoopStart, else 0.
    static int nextFrame(const QAnimation* action, int index);
    // The look of a frame at tick t of its time, bent towards the next frame by its marks.
    static Look lookAt(const QAnimation* action, int index, int t);

private:
    QAnimation* action = nullptr;
    int current = 0;
    int ticks = 0;
    bool started = false;
    Look shown;
};
