// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>

#include <sys/mount.h>
#include <sys/resource.h>

/// A disk of a few pages in memory, which is soon full. Mounting it takes root's rights.
class SmallDisk
{
public:
    static constexpr int pageSize = 4096; ///< every file takes whole pages

    explicit SmallDisk(int pages)
    {
        const QByteArray options = "size=" + QByteArray::number(pages * pageSize);
        m_isMounted = mount("small", QFile::encodeName(path()).constData(), "tmpfs", 0,
                            options.constData())
                == 0;
        if (!m_isMounted)
            m_problem = QStringLiteral("A small disk can't be mounted: ") + qt_error_string(errno);
    }

    ~SmallDisk()
    {
        if (m_isMounted)
            umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
    }

    QString path() const { return m_folder.path(); }
    QString filePath(const QString &name) const { return m_folder.filePath(name); }

    /// Why there is no such disk; empty when there is.
    QString problem() const { return m_problem; }

private:
    Q_DISABLE_COPY(SmallDisk)

    QTemporaryDir m_folder;
    bool m_isMounted = false;
    QString m_problem;
};

/// No file grows beyond this while it lives: a disk that is full, for which nobody has to be root.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    Q_DISABLE_COPY(FileSizeLimit)

    void (*m_handler)(int);
    rlimit m_before;
};
