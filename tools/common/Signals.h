// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QtGlobal>

#include <cstdio>
#include <functional>
#include <memory>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

bool isTerminal(FILE *stream);

// Lets a write that cannot succeed (nobody reads the pipe, the file would be too large) fail with
// an error that is reported, instead of ending the process.
void reportWriteSignalsAsErrors();

// Puts off every signal as long as it lives. Where there are no signals it does nothing.
class SignalHold
{
public:
    SignalHold();
    ~SignalHold();

private:
    Q_DISABLE_COPY(SignalHold)
#ifdef Q_OS_UNIX
    sigset_t m_before;
#endif
};

// Takes the signals that ask the process to end (SIGINT, SIGTERM, SIGHUP) while it lives, for a
// process that has something to end first.
class InterruptionWatch
{
public:
    // `interrupted` is called from the event loop.
    explicit InterruptionWatch(const std::function<void()> &interrupted);
    ~InterruptionWatch();

    static bool wasInterrupted();

    // Ends the process by the signal that it was asked to end with.
    [[noreturn]] static void endProcess();

private:
    Q_DISABLE_COPY(InterruptionWatch)
    class Private;
    std::unique_ptr<Private> d;
};
