// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>

// Why a run ends without having written what was asked for. Thrown where the trouble is noticed
// and turned into one line on standard error and the exit code in main().
class Failure
{
public:
    enum Code { NotRendered = 1, WrongUsage = 2 };

    // A failure to read, draw or write `subject` (a file name, most often).
    Failure(const QString &subject, const QString &reason)
        : m_message(QStringLiteral("%1: %2").arg(subject, reason)), m_reason(reason),
          m_code(NotRendered)
    {
    }

    // A failure whose message is complete as it stands.
    static Failure rendering(const QString &message) { return Failure(message, NotRendered); }

    // A command line that cannot be carried out.
    static Failure usage(const QString &message) { return Failure(message, WrongUsage); }

    QString message() const { return m_message; }
    QString reason() const { return m_reason; } // without the subject
    Code code() const { return m_code; }

private:
    Failure(const QString &message, Code code) : m_message(message), m_reason(message), m_code(code)
    {
    }

    QString m_message;
    QString m_reason;
    Code m_code;
};
