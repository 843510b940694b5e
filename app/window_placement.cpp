#include "app/window_placement.hpp"

#include <QWindow>

namespace zelvaine {
namespace {

// Larger than any screen made: a value beyond it was not written by this game.
constexpr std::int64_t largestSide = 1 << 15;

bool maximizedOrFullScreen(const QWindow& window)
{
    return (window.windowStates() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
}

} // namespace

std::optional<WindowPlacement> loadWindowPlacement(const DefaultsStore& defaults)
{
    const auto width = defaults.integer(keys::windowWidth);
    const auto height = defaults.integer(keys::windowHeight);
    if (!width || !height || *width <= 0 || *height <= 0 || *width > largestSide || *height > largestSide)
        return std::nullopt;
    return WindowPlacement{QSize(static_cast<int>(*width), static_cast<int>(*height)),
                           defaults.boolean(keys::windowMaximized).value_or(false)};
}

void saveWindowPlacement(DefaultsStore& defaults, const WindowPlacement& placement)
{
    if (placement.size.isEmpty()) return;
    defaults.set(keys::windowWidth, std::int64_t{placement.size.width()});
    defaults.set(keys::windowHeight, std::int64_t{placement.size.height()});
    defaults.set(keys::windowMaximized, placement.maximized);
}

WindowPlacement initialWindowPlacement(const std::optional<WindowPlacement>& kept, QSize available)
{
    // The window manager's frame comes on top of the window's own size; this is room for most.
    constexpr int titleBar = 40;
    WindowPlacement placement = kept ? *kept : WindowPlacement{defaultWindowSize, false};
    if (!kept) available.rheight() -= titleBar;
    if (!available.isEmpty()) placement.size = placement.size.boundedTo(available);
    return placement;
}

WindowPlacementTracker::WindowPlacementTracker(QWindow& window) : QObject(&window), window_(window)
{
    // Made before the window manager has had its say: the size asked for is the window's own,
    // even for a window about to open maximised.
    normalSize_ = window.size();
    settle_.setSingleShot(true);
    settle_.setInterval(settleTime);
    connect(&settle_, &QTimer::timeout, this, [this] {
        if (!maximizedOrFullScreen(window_)) normalSize_ = window_.size();
    });
    connect(&window, &QWindow::widthChanged, this, &WindowPlacementTracker::follow);
    connect(&window, &QWindow::heightChanged, this, &WindowPlacementTracker::follow);
    connect(&window, &QWindow::windowStateChanged, this, &WindowPlacementTracker::follow);
}

void WindowPlacementTracker::follow()
{
    // Some window managers resize the window a moment before they say it is maximised: a size
    // counts as the window's own once it has stood for a while in the normal state.
    if (maximizedOrFullScreen(window_)) settle_.stop();
    else settle_.start();
}

WindowPlacement WindowPlacementTracker::placement() const
{
    if (!maximizedOrFullScreen(window_)) return {window_.size(), false};
    return {normalSize_, (window_.windowStates() & Qt::WindowMaximized) != 0};
}

} // namespace zelvaine
