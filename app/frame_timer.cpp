#include "app/frame_timer.hpp"

#include <QQuickWindow>

#include <cstdio>

namespace zelvaine {

FrameTimer::FrameTimer(QQuickWindow* window) : QObject(window)
{
    // Direct connections: both signals come from the thread that renders, which may not be ours.
    connect(
        window, &QQuickWindow::beforeSynchronizing, this, [this] { started_ = std::chrono::steady_clock::now(); },
        Qt::DirectConnection);
    connect(
        window, &QQuickWindow::frameSwapped, this,
        [this] {
            const auto now = std::chrono::steady_clock::now();
            const std::chrono::duration<double, std::milli> took = now - started_;
            // The monotonic clock's reading too, so that a driver of the window can tell how
            // long after its click a frame was shown.
            const std::chrono::duration<double> at = now.time_since_epoch();
            std::fprintf(stderr, "frame %.3f ms at %.6f s\n", took.count(), at.count());
        },
        Qt::DirectConnection);
}

} // namespace zelvaine
