#pragma once

#include "store/defaults_store.hpp"

#include <QObject>
#include <QSize>
#include <QTimer>

#include <chrono>
#include <optional>
#include <string_view>

class QWindow;

namespace zelvaine {

namespace keys {
inline constexpr std::string_view windowWidth = "zelvaine.window.width";
inline constexpr std::string_view windowHeight = "zelvaine.window.height";
inline constexpr std::string_view windowMaximized = "zelvaine.window.maximized";
} // namespace keys

// The game window as the player left it: its size when not maximised, and whether it was.
// Where it stood is the window manager's to decide, as on any desktop with several screens.
struct WindowPlacement {
    QSize size;
    bool maximized = false;

    friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// Nothing when no size was kept, or the kept one is no size at all.
std::optional<WindowPlacement> loadWindowPlacement(const DefaultsStore& defaults);
void saveWindowPlacement(DefaultsStore& defaults, const WindowPlacement& placement);

// The size the game window takes on its first start, where the screen has room for it.
inline constexpr QSize defaultWindowSize{1280, 860};

// How the window opens: as it was left, shrunk to the room the screen has now (it may have been
// left on a larger screen); on a first start at its default size, shrunk so that its title bar
// fits on the screen too. `available` is the screen's area without the desktop's panels.
WindowPlacement initialWindowPlacement(const std::optional<WindowPlacement>& kept, QSize available);

// Follows a window's size while it is neither maximised nor full-screen, so that a window closed
// maximised still opens at its own size once the player restores it.
class WindowPlacementTracker : public QObject {
    Q_OBJECT

public:
    explicit WindowPlacementTracker(QWindow& window);

    WindowPlacement placement() const;

    static constexpr std::chrono::milliseconds settleTime{300};

private:
    void follow();

    QWindow& window_;
    QSize normalSize_;
    QTimer settle_;
};

} // namespace zelvaine
