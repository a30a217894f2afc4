// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QEventLoop>
#include <QProcess>
#include <QString>

#include <memory>
#include <vector>

class FrameSchedule;
struct Options;
class Reporter;

// Renders a schedule by several processes of this program, each a contiguous part of it.
class WorkerPool
{
public:
    // Workers get the title's text on their standard input, so that all of them see the same.
    WorkerPool(const Options &options, const QString &titleText, Reporter &reporter);
    ~WorkerPool(); // no worker outlives it

    // Returns when every picture is written. Throws the Failure of the first worker that fails,
    // after ending the others; ends the process when it is asked to end.
    void render(const FrameSchedule &schedule);

private:
    void start(const QStringList &arguments);
    void readMessages(QProcess *worker);
    void workerEnded(QProcess *worker, bool succeeded);
    void fail(const QString &message);
    void endWorkers();

    const Options &m_options;
    const QByteArray m_titleText;
    Reporter &m_reporter;
    std::vector<std::unique_ptr<QProcess>> m_workers;
    int m_running = 0;
    QString m_failure;
    QEventLoop m_loop;
};
