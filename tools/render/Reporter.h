// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QElapsedTimer>
#include <QSet>
#include <QString>

// Hears how a run goes and tells it to whoever waits for it.
class Reporter
{
public:
    // Strict: warnings count as errors.
    explicit Reporter(bool isStrict) : m_isStrict(isStrict) {}
    virtual ~Reporter() = default;

    virtual void begin(qint64 pictures) = 0;
    virtual void pictureDone() = 0;
    virtual void failure(const QString &message) = 0;

    // What may surprise and is right.
    virtual void note(const QString &) {}

    // Each distinct text is shown once, as one line of a reasonable length.
    void warning(const QString &text);

    // Throws a Failure when there was a warning that counts as an error.
    void refuseWarnings() const;

protected:
    bool isStrict() const { return m_isStrict; }

private:
    virtual void showWarning(const QString &line) = 0;

    bool m_isStrict;
    QSet<QString> m_warnings;
};

// Writes to standard error, with a progress bar when that is a terminal.
class ConsoleReporter : public Reporter
{
public:
    ConsoleReporter(bool quiet, bool isStrict);

    void begin(qint64 pictures) override;
    void pictureDone() override;
    void failure(const QString &message) override;
    void note(const QString &text) override;

private:
    void showWarning(const QString &line) override;
    void showLine(const QString &line);
    void drawBar() const;
    void wipeBar() const;

    bool m_quiet;
    bool m_hasBar;
    qint64 m_total = 0;
    qint64 m_done = 0;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceDrawn;
};

// Writes messages for the process that started this one to standard output.
class WorkerReporter : public Reporter
{
public:
    using Reporter::Reporter;

    void begin(qint64) override {}
    void pictureDone() override; // throws a Failure when nobody listens any more
    void failure(const QString &message) override;

private:
    void showWarning(const QString &line) override;
};

// Sends Qt's own messages to a reporter as long as it lives: only fatal ones at first, since what
// Qt says of the desktop when it starts (such as a missing runtime folder) is of no concern to a
// program without windows.
class QtMessageRoute
{
public:
    explicit QtMessageRoute(Reporter *reporter);
    ~QtMessageRoute();

    void sendWarnings();

private:
    Q_DISABLE_COPY(QtMessageRoute)
    QtMessageHandler m_before;
};
