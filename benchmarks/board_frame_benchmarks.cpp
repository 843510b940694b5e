// Frame costs of the board with Qt Quick's software renderer, the slowest one a player may get:
// a 10-card string dragged across a full table, and the table under falling confetti. Each
// frame is one pointer move (or one clock tick) followed by a complete render of the window.

#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/card_drag_controller.hpp"
#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <time.h>

#include <algorithm>
#include <memory>
#include <vector>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

using testing::cards;

// Ten columns of ten or more cards, the first ending in an 11-card string, a full hand and
// some foundations: the busiest table a drag crosses.
GameState fullTable()
{
    GameState s = testing::knownDeal();
    s.tableau[0] = cards("4C 5D 6S KS QH JS 10H 9S 8H 7S 6H 5S 4H 3S");
    return s;
}

// The main thread's own processor time: the work of a frame, whatever else the machine runs.
double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class Board {
public:
    Board()
    {
        window.resize(1600, 1000);
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Zelvaine/qml/GameView.qml")));
        view.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
            {{"board", QVariant::fromValue(&board)}, {"preferences", QVariant::fromValue(&preferencesModel)}})));
        view->setParentItem(window.contentItem());
        view->setSize(QSizeF(1600, 1000));
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) qFatal("the window never showed");
        frame();
    }

    // One complete frame: pending events, polish, sync and a full render.
    double frame()
    {
        const double start = threadMilliseconds();
        QCoreApplication::processEvents();
        const QImage image = window.grabWindow();
        benchmark::DoNotOptimize(image.constBits());
        return threadMilliseconds() - start;
    }

    QQuickItem* find(QQuickItem* root, const QString& name) const
    {
        if (root->objectName() == name) return root;
        for (QQuickItem* child : root->childItems()) {
            if (QQuickItem* found = find(child, name)) return found;
        }
        return nullptr;
    }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    GameStore store{fullTable(), defaults, sound};
    GameBoard board{store, &preferences};
    PreferencesModel preferencesModel{preferences};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;
};

void reportFrames(benchmark::State& state, std::vector<double> frames)
{
    if (frames.empty()) return;
    std::sort(frames.begin(), frames.end());
    const auto at = [&](double q) { return frames[static_cast<std::size_t>(q * static_cast<double>(frames.size() - 1))]; };
    state.counters["p50_ms"] = at(0.5);
    state.counters["p95_ms"] = at(0.95);
    state.counters["max_ms"] = frames.back();
}

void BM_dragTenCardStringFrame(benchmark::State& state)
{
    Board board;
    QQuickItem* queen = board.find(board.view.get(), "tableau-0-4");
    const QPoint grip = queen->mapToScene(QPointF(queen->width() / 2, 6)).toPoint();
    std::vector<double> frames;
    for (auto _ : state) {
        QTest::mousePress(&board.window, Qt::LeftButton, {}, grip);
        // Across the whole table and back, a pointer event per frame.
        for (int step = 1; step <= 120; ++step) {
            const double t = step <= 60 ? step / 60.0 : (120 - step) / 60.0;
            const QPoint at = grip + QPoint(static_cast<int>(t * 1300), static_cast<int>(t * 200));
            const double start = threadMilliseconds();
            QTest::mouseMove(&board.window, at);
            board.frame();
            frames.push_back(threadMilliseconds() - start);
        }
        if (!board.view->findChild<CardDragController*>()->active()) state.SkipWithError("the string did not lift");
        QTest::mouseRelease(&board.window, Qt::LeftButton, {}, grip + QPoint(1300, 200));
        QTest::qWait(500);
    }
    reportFrames(state, frames);
}
BENCHMARK(BM_dragTenCardStringFrame)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

// The table alone, then under confetti a second into its fall: the difference is the confetti's.
void BM_tableFrame(benchmark::State& state)
{
    Board board;
    std::vector<double> frames;
    for (auto _ : state) frames.push_back(board.frame());
    reportFrames(state, frames);
}
BENCHMARK(BM_tableFrame)->Iterations(120)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_confettiFrame(benchmark::State& state)
{
    Board board;
    QQuickItem* confetti = nullptr;
    for (QQuickItem* item : board.view->childItems()) {
        if (QByteArray(item->metaObject()->className()).contains("ConfettiItem")) confetti = item;
    }
    if (!confetti) {
        state.SkipWithError("no confetti layer");
        return;
    }
    confetti->setProperty("startedAt", static_cast<double>(QDateTime::currentMSecsSinceEpoch() - 1000));
    std::vector<double> frames;
    for (auto _ : state) {
        confetti->update();
        frames.push_back(board.frame());
    }
    reportFrames(state, frames);
}
BENCHMARK(BM_confettiFrame)->Iterations(120)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace zelvaine

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
