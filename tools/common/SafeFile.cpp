// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SafeFile.h"

#include "Failure.h"
#include "Signals.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QRandomGenerator>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace {

std::filesystem::path systemPath(const QString &path)
{
    return std::filesystem::path(QFile::encodeName(path).toStdString());
}

// The file that takes the bytes, beside the one that it is to become: removed unless it has become
// it. Its own name is short, so that there is one wherever there is one for the other.
class NewFile
{
public:
    explicit NewFile(const QString &target)
        : m_target(target),
          m_file(QFileInfo(target).path()
                 + QStringLiteral("/.new-%1").arg(QRandomGenerator::system()->generate64(), 0, 36))
    {
    }

    ~NewFile()
    {
        if (m_isThere)
            m_file.remove();
    }

    // All of these throw the reason.

    void write(const QByteArray &bytes)
    {
        // Without a buffer, so that every error is one of write() itself.
        m_isThere = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
        check(m_isThere);
        // A disk that gets full takes a part first, and refuses the next.
        for (int written = 0; written < bytes.size();) {
            const qint64 count = m_file.write(bytes.constData() + written, bytes.size() - written);
            check(count > 0);
            written += int(count);
        }
    }

    void takePermissions()
    {
        const QFileInfo info(m_target);
        check(!info.exists() || m_file.setPermissions(info.permissions()));
    }

    void replaceTarget()
    {
        m_file.close();
        check(m_file.error() == QFileDevice::NoError);
        std::error_code error;
        std::filesystem::rename(systemPath(m_file.fileName()), systemPath(m_target), error);
        if (error)
            throw QString::fromStdString(error.message());
        m_isThere = false;
    }

private:
    Q_DISABLE_COPY(NewFile)

    void check(bool isDone) const
    {
        if (!isDone)
            throw m_file.errorString();
    }

    QString m_target;
    QFile m_file;
    bool m_isThere = false;
};

// What a path leads to.
QString targetOf(const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

// Renaming would put a file in the place of a device, and overwrite what is protected.
void refuseToReplace(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        throw Failure(path, QStringLiteral("is not a regular file"));
    if (info.exists() && !info.isWritable())
        throw Failure(path, qt_error_string(EACCES));
}

} // namespace

void writeFile(const QString &path, const QByteArray &bytes)
{
    refuseToReplace(path);
    // An interruption waits until the new file is gone: renamed, or removed after an error.
    const SignalHold hold;
    try {
        NewFile file(targetOf(path));
        file.write(bytes);
        file.takePermissions();
        file.replaceTarget();
    } catch (const QString &reason) {
        throw Failure(path, reason);
    }
}

void writePng(const QString &path, const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(image))
        throw Failure(path, writer.errorString());
    writeFile(path, buffer.data());
}
