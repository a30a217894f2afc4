// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WorkerPool.h"

#include "Failure.h"
#include "FrameSchedule.h"
#include "Options.h"
#include "Reporter.h"
#include "Signals.h"
#include "WorkerMessage.h"

#include <QCoreApplication>

namespace {

constexpr int millisecondsToEnd = 5000;

} // namespace

WorkerPool::WorkerPool(const Options &options, const QString &titleText, Reporter &reporter)
    : m_options(options), m_titleText(titleText.toUtf8()), m_reporter(reporter)
{
}

WorkerPool::~WorkerPool()
{
    endWorkers();
}

void WorkerPool::render(const FrameSchedule &schedule)
{
    const InterruptionWatch watch([this] { m_loop.quit(); });

    const qint64 count = schedule.count();
    const qint64 parts = qMin<qint64>(count, m_options.jobs);
    for (qint64 part = 0; part < parts; ++part) {
        const qint64 first = part * count / parts;
        const qint64 last = (part + 1) * count / parts - 1;
        start(m_options.workerArguments(schedule.argumentsFor(first, last)));
    }

    if (m_failure.isEmpty()) // otherwise a worker has not even started
        m_loop.exec();
    endWorkers();
    if (InterruptionWatch::wasInterrupted())
        InterruptionWatch::endProcess();
    if (!m_failure.isEmpty())
        throw Failure::rendering(m_failure);
}

void WorkerPool::start(const QStringList &arguments)
{
    m_workers.push_back(std::make_unique<QProcess>());
    QProcess *worker = m_workers.back().get();

    QObject::connect(worker, &QProcess::readyReadStandardOutput, worker,
                     [this, worker] { readMessages(worker); });
    QObject::connect(worker, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), worker,
                     [this, worker](int exitCode, QProcess::ExitStatus status) {
                         workerEnded(worker, status == QProcess::NormalExit && exitCode == 0);
                     });
    QObject::connect(worker, &QProcess::errorOccurred, worker,
                     [this, worker](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             workerEnded(worker, false);
                     });

    ++m_running;
    worker->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    worker->start(QCoreApplication::applicationFilePath(), arguments);
    worker->write(m_titleText);
    worker->closeWriteChannel();
}

void WorkerPool::readMessages(QProcess *worker)
{
    while (worker->canReadLine()) {
        const WorkerMessage message = WorkerMessage::fromLine(worker->readLine());
        switch (message.kind) {
        case WorkerMessage::PictureDone:
            m_reporter.pictureDone();
            break;
        case WorkerMessage::Warned:
            m_reporter.warning(message.text);
            break;
        case WorkerMessage::Failed:
            fail(message.text);
            break;
        }
    }
}

void WorkerPool::workerEnded(QProcess *worker, bool succeeded)
{
    readMessages(worker);
    --m_running;
    if (!succeeded)
        fail(QStringLiteral("a worker process failed: %1").arg(worker->errorString()));
    else if (m_running == 0)
        m_loop.quit();
}

// The first failure is the one to report: the later ones may follow from ending the workers.
void WorkerPool::fail(const QString &message)
{
    if (m_failure.isEmpty())
        m_failure = message;
    m_loop.quit();
}

void WorkerPool::endWorkers()
{
    for (const auto &worker : m_workers) {
        worker->disconnect();
        worker->terminate();
    }
    for (const auto &worker : m_workers) {
        if (!worker->waitForFinished(millisecondsToEnd))
            worker->kill();
    }
    m_workers.clear();
}
