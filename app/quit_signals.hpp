#pragma once

// A logout, a shutdown or Ctrl+C in a terminal asks the game to stop with a signal. Left to its
// default, the signal ends the process on the spot and the last deferred save with it; here it
// only quits the event loop, so that the game ends the way a closed window ends it.

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace zelvaine {

class QuitSignals : public QObject {
    Q_OBJECT
public:
    // Catches SIGTERM, SIGINT and SIGHUP from now on. One instance per process.
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

signals:
    // On the thread that made this object, outside the signal handler.
    void received(int signalNumber);

private:
    void readSignals();

    int readEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace zelvaine
