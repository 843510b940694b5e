// The game window opens as the player left it: its own size, and maximised or not.

#include "app/window_placement.hpp"
#include "store/in_memory_defaults_store.hpp"

#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

TEST(WindowPlacement, IsKeptAndReadBackAndNonsenseIsIgnored)
{
    InMemoryDefaultsStore defaults;
    EXPECT_FALSE(loadWindowPlacement(defaults)) << "a first start keeps the window's own size";
    saveWindowPlacement(defaults, {QSize(1100, 720), true});
    EXPECT_EQ(loadWindowPlacement(defaults), (WindowPlacement{QSize(1100, 720), true}));

    // Written by something else, or damaged: the window's own size instead.
    defaults.set(keys::windowWidth, std::int64_t{-5});
    EXPECT_FALSE(loadWindowPlacement(defaults));
    defaults.set(keys::windowWidth, std::string("wide"));
    EXPECT_FALSE(loadWindowPlacement(defaults));
    defaults.set(keys::windowWidth, std::int64_t{1} << 40);
    EXPECT_FALSE(loadWindowPlacement(defaults));
    defaults.set(keys::windowWidth, std::int64_t{1100});
    defaults.set(keys::windowMaximized, std::int64_t{1});
    EXPECT_EQ(loadWindowPlacement(defaults), (WindowPlacement{QSize(1100, 720), false}));

    // A window that never had a size keeps nothing.
    InMemoryDefaultsStore fresh;
    saveWindowPlacement(fresh, {QSize(), true});
    EXPECT_FALSE(fresh.value(keys::windowMaximized));
}

// A size left on a larger screen shrinks to this one; a first start leaves room for the title bar.
TEST(WindowPlacement, TheWindowOpensWithinTheScreen)
{
    const QSize laptop(1366, 740);
    EXPECT_EQ(initialWindowPlacement(WindowPlacement{QSize(2400, 1500), true}, laptop), (WindowPlacement{laptop, true}));
    EXPECT_EQ(initialWindowPlacement(WindowPlacement{QSize(1000, 700), false}, laptop),
              (WindowPlacement{QSize(1000, 700), false}));
    EXPECT_EQ(initialWindowPlacement(std::nullopt, laptop), (WindowPlacement{QSize(1280, 700), false}));
    EXPECT_EQ(initialWindowPlacement(std::nullopt, QSize(1920, 1080)), (WindowPlacement{defaultWindowSize, false}));
    EXPECT_EQ(initialWindowPlacement(std::nullopt, QSize()), (WindowPlacement{defaultWindowSize, false}))
        << "no screen known";
}

// The size kept is the window's own, not the screen's it takes while maximised, whichever the
// window manager reports first: the new size or the new state.
TEST(WindowPlacement, AMaximisedWindowKeepsItsOwnSize)
{
    const int settled = static_cast<int>(WindowPlacementTracker::settleTime.count()) + 100;
    for (const bool sizeFirst : {false, true}) {
        SCOPED_TRACE(sizeFirst ? "size first" : "state first");
        QWindow window;
        window.resize(1280, 860);
        WindowPlacementTracker tracker(window);
        window.resize(1000, 700);
        EXPECT_EQ(tracker.placement(), (WindowPlacement{QSize(1000, 700), false}));
        QTest::qWait(settled);

        if (sizeFirst) window.resize(1920, 1080);
        window.setWindowStates(Qt::WindowMaximized);
        window.resize(1920, 1080);
        QTest::qWait(settled);
        EXPECT_EQ(tracker.placement(), (WindowPlacement{QSize(1000, 700), true}));

        window.setWindowStates(Qt::WindowNoState);
        window.resize(1000, 700);
        EXPECT_EQ(tracker.placement(), (WindowPlacement{QSize(1000, 700), false}));
    }
}

// A window opened maximised from the last run still knows its own size to go back to.
TEST(WindowPlacement, AWindowOpenedMaximisedKnowsItsOwnSize)
{
    QWindow window;
    window.resize(1000, 700);
    window.setWindowStates(Qt::WindowMaximized);
    WindowPlacementTracker tracker(window);
    window.resize(1920, 1080);
    QTest::qWait(static_cast<int>(WindowPlacementTracker::settleTime.count()) + 100);
    EXPECT_EQ(tracker.placement(), (WindowPlacement{QSize(1000, 700), true}));
}

} // namespace
} // namespace zelvaine
