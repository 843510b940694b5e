#pragma once

#include <QObject>

#include <chrono>

class QQuickWindow;

namespace zelvaine {

// For the frame benchmarks: writes each frame's whole time, from the start of its
// synchronisation with the scene to the end of its swap, to standard error as
// "frame 3.412 ms at 5123.456789 s" (the monotonic clock at the end of the swap). The render
// loop's own report counts whole milliseconds only.
class FrameTimer : public QObject {
public:
    explicit FrameTimer(QQuickWindow* window);

private:
    // Touched only by the thread that renders the window.
    std::chrono::steady_clock::time_point started_;
};

} // namespace zelvaine
