// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "Compositor.h"

#include <QObject>
#include <QString>

/// Writes the frames of a project as a sequence of PNG files, one for each turn of the event loop,
/// so that the window stays alive meanwhile.
class PngExport : public QObject
{
    Q_OBJECT

public:
    PngExport(const Project &project, const QString &folder, QObject *parent = nullptr);
    ~PngExport() override;

    int frameCount() const;

    static QString fileName(int frame);

public Q_SLOTS:
    void start();

    /// The files that are written already stay.
    void cancel();

Q_SIGNALS:
    void progress(int framesWritten);

    // One of these comes, once, and nothing after it.
    void finished();
    void failed(const QString &reason);
    void cancelled();

private:
    void writeNext();

    Compositor m_compositor;
    QString m_folder;
    int m_frameCount;
    int m_next = 0;
    bool m_running = false;
};
