// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Reporter.h"

#include "Failure.h"
#include "Signals.h"
#include "WorkerMessage.h"

#include <QRegularExpression>

#include <cstdio>

namespace {

constexpr int longestWarning = 300;
constexpr int mostWarnings = 100;
constexpr int barWidth = 30;
constexpr qint64 millisecondsBetweenBars = 100;

QString oneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

void print(const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
}

bool send(const WorkerMessage &message)
{
    const QByteArray line = message.toLine();
    return std::fwrite(line.constData(), 1, size_t(line.size()), stdout) == size_t(line.size())
            && std::fflush(stdout) == 0;
}

// Where Qt's message handler, a plain function, finds the reporters.
Reporter *failureReporter = nullptr;
Reporter *warningReporter = nullptr;

// The renderer's line and column are those in the text of one frame, which nobody has seen.
QString withoutPlace(const QString &text)
{
    static const QRegularExpression place(QStringLiteral("^<input>:[0-9]+:[0-9]+: "));
    return QString(text).remove(place);
}

void reportQtMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg)
        failureReporter->failure(text); // Qt ends the process afterwards
    else if (warningReporter)
        warningReporter->warning(withoutPlace(text));
}

} // namespace

void Reporter::warning(const QString &text)
{
    const QString line = oneLine(text).trimmed().left(longestWarning);
    if (m_warnings.contains(line) || m_warnings.size() > mostWarnings)
        return;
    m_warnings.insert(line);
    const bool isLast = m_warnings.size() > mostWarnings;
    showWarning(isLast ? QStringLiteral("further warnings are not shown") : line);
}

void Reporter::refuseWarnings() const
{
    if (m_isStrict && !m_warnings.isEmpty())
        throw Failure::rendering(QStringLiteral("warnings count as errors, because of --strict"));
}

ConsoleReporter::ConsoleReporter(bool quiet, bool isStrict)
    : Reporter(isStrict), m_quiet(quiet), m_hasBar(!quiet && isTerminal(stderr))
{
}

void ConsoleReporter::begin(qint64 pictures)
{
    m_total = pictures;
    m_sinceBegin.start();
}

void ConsoleReporter::pictureDone()
{
    ++m_done;
    if (!m_hasBar)
        return;
    const bool isDue = !m_sinceDrawn.isValid() || m_sinceDrawn.elapsed() >= millisecondsBetweenBars;
    if (m_done < m_total && !isDue)
        return;
    m_sinceDrawn.start();
    drawBar();
    if (m_done == m_total)
        print(QStringLiteral("\n"));
}

void ConsoleReporter::failure(const QString &message)
{
    showLine(message);
}

void ConsoleReporter::note(const QString &text)
{
    if (!m_quiet)
        showLine(QStringLiteral("note: %1").arg(text));
}

void ConsoleReporter::showWarning(const QString &line)
{
    if (!m_quiet || isStrict())
        showLine(QStringLiteral("warning: %1").arg(line));
}

void ConsoleReporter::showLine(const QString &line)
{
    wipeBar();
    print(QStringLiteral("titlescene-render: %1\n").arg(oneLine(line)));
}

void ConsoleReporter::drawBar() const
{
    const int filled = int(m_done * barWidth / m_total);
    const double seconds = qMax(qint64(1), m_sinceBegin.elapsed()) / 1000.0;
    print(QStringLiteral("\r[%1%2] %3/%4, %5 a second ")
                  .arg(QString(filled, QLatin1Char('#')),
                       QString(barWidth - filled, QLatin1Char('.')))
                  .arg(m_done)
                  .arg(m_total)
                  .arg(double(m_done) / seconds, 0, 'f', 1));
}

void ConsoleReporter::wipeBar() const
{
    if (m_hasBar && m_done > 0 && m_done < m_total)
        print(QStringLiteral("\r\x1b[K"));
}

void WorkerReporter::pictureDone()
{
    if (!send({WorkerMessage::PictureDone, QString()}))
        throw Failure::rendering(QStringLiteral("the run that this process belongs to has ended"));
}

void WorkerReporter::failure(const QString &message)
{
    send({WorkerMessage::Failed, oneLine(message)});
}

void WorkerReporter::showWarning(const QString &line)
{
    send({WorkerMessage::Warned, line});
}

QtMessageRoute::QtMessageRoute(Reporter *reporter)
{
    failureReporter = reporter;
    m_before = qInstallMessageHandler(reportQtMessage);
}

QtMessageRoute::~QtMessageRoute()
{
    qInstallMessageHandler(m_before);
    failureReporter = nullptr;
    warningReporter = nullptr;
}

void QtMessageRoute::sendWarnings()
{
    warningReporter = failureReporter;
}
