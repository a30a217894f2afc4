// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Signals.h"

#include <cstdlib>

#ifdef Q_OS_UNIX

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// What the signal handler may touch.
volatile sig_atomic_t caughtSignal = 0;
volatile sig_atomic_t wakeUpDescriptor = -1;

void catchSignal(int number)
{
    const int savedErrno = errno;
    caughtSignal = number;
    const char byte = 0;
    // A full pipe wakes the event loop just as well.
    if (write(wakeUpDescriptor, &byte, sizeof byte) < 0) {
    }
    errno = savedErrno;
}

} // namespace

bool isTerminal(FILE *stream)
{
    return isatty(fileno(stream)) == 1;
}

void reportWriteSignalsAsErrors()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

SignalHold::SignalHold()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &m_before);
}

SignalHold::~SignalHold()
{
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

class InterruptionWatch::Private
{
public:
    explicit Private(const std::function<void()> &interrupted)
    {
        if (pipe(m_pipe) != 0)
            return;
        for (int descriptor : m_pipe) {
            fcntl(descriptor, F_SETFD, FD_CLOEXEC);
            fcntl(descriptor, F_SETFL, O_NONBLOCK);
        }
        m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this, interrupted] {
                             m_notifier->setEnabled(false);
                             interrupted();
                         });
        wakeUpDescriptor = m_pipe[1];
        catchSignals();
    }

    ~Private()
    {
        for (size_t i = 0; i < std::size(endingSignals); ++i)
            sigaction(endingSignals[i], &m_before[i], nullptr);
        wakeUpDescriptor = -1;
        for (int descriptor : m_pipe)
            close(descriptor);
    }

private:
    void catchSignals()
    {
        struct sigaction action = {};
        action.sa_handler = catchSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        for (size_t i = 0; i < std::size(endingSignals); ++i) {
            sigaction(endingSignals[i], &action, &m_before[i]);
            if (m_before[i].sa_handler == SIG_IGN) // as for a job in the background: it stays so
                sigaction(endingSignals[i], &m_before[i], nullptr);
        }
    }

    int m_pipe[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> m_notifier;
    struct sigaction m_before[std::size(endingSignals)] = {};
};

bool InterruptionWatch::wasInterrupted()
{
    return caughtSignal != 0;
}

void InterruptionWatch::endProcess()
{
    std::signal(caughtSignal, SIG_DFL);
    std::raise(caughtSignal);
    std::abort();
}

#else

bool isTerminal(FILE *)
{
    return false;
}

void reportWriteSignalsAsErrors() {}

SignalHold::SignalHold() = default;
SignalHold::~SignalHold() = default;

class InterruptionWatch::Private
{
public:
    explicit Private(const std::function<void()> &) {}
};

bool InterruptionWatch::wasInterrupted()
{
    return false;
}

void InterruptionWatch::endProcess()
{
    std::abort();
}

#endif

InterruptionWatch::InterruptionWatch(const std::function<void()> &interrupted)
    : d(std::make_unique<Private>(interrupted))
{
}

InterruptionWatch::~InterruptionWatch() = default;
