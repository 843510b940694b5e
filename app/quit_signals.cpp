#include "app/quit_signals.hpp"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace zelvaine {
namespace {

constexpr std::array caughtSignals{SIGTERM, SIGINT, SIGHUP};

// The handler may only do what is safe in a signal handler: write one byte to a pipe.
volatile sig_atomic_t writeEnd = -1;

void onSignal(int signalNumber)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signalNumber);
    if (writeEnd >= 0) [[maybe_unused]]
        const auto written = write(writeEnd, &byte, 1);
    errno = savedErrno;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    // Interrupted system calls in Qt's or SQLite's threads go on as if nothing had happened.
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : caughtSignals) sigaction(signalNumber, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return; // the defaults stay: no worse than before
    readEnd_ = ends[0];
    writeEnd = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &QuitSignals::readSignals);
    setHandler(onSignal);
}

QuitSignals::~QuitSignals()
{
    if (readEnd_ < 0) return;
    setHandler(SIG_DFL);
    const int end = writeEnd;
    writeEnd = -1;
    close(end);
    notifier_.reset();
    close(readEnd_);
}

void QuitSignals::readSignals()
{
    unsigned char byte = 0;
    while (read(readEnd_, &byte, 1) == 1) {
        // A second signal is someone who will not wait for the save: it ends the process at once.
        // The database never holds half a save, so the game on disk is still whole.
        setHandler(SIG_DFL);
        emit received(byte);
    }
}

} // namespace zelvaine
