// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PngExport.h"

#include <Failure.h>
#include <FrameNames.h>
#include <SafeFile.h>

#include <QDir>
#include <QTimer>

PngExport::PngExport(const Project &project, const QString &folder, QObject *parent)
    : QObject(parent), m_compositor(project), m_folder(folder), m_frameCount(project.frameCount())
{
}

PngExport::~PngExport() = default;

int PngExport::frameCount() const
{
    return m_frameCount;
}

QString PngExport::fileName(int frame)
{
    return frameFileName(frame);
}

void PngExport::start()
{
    m_running = true;
    QTimer::singleShot(0, this, &PngExport::writeNext);
}

void PngExport::cancel()
{
    if (!m_running)
        return;
    m_running = false;
    Q_EMIT cancelled();
}

void PngExport::writeNext()
{
    if (!m_running)
        return;
    const QString path = QDir(m_folder).filePath(fileName(m_next));
    try {
        writePng(path, m_compositor.frame(m_next * frameLength));
    } catch (const Failure &failure) {
        m_running = false;
        Q_EMIT failed(
                QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), failure.reason()));
        return;
    }
    ++m_next;
    Q_EMIT progress(m_next);
    if (!m_running)
        return;
    if (m_next < m_frameCount) {
        QTimer::singleShot(0, this, &PngExport::writeNext);
        return;
    }
    m_running = false;
    Q_EMIT finished();
}
