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
            const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - started_;
            std::fprintf(stderr, "frame %.3f ms\n", took.count());
        },
        Qt::DirectConnection);
}

} // namespace zelvaine
