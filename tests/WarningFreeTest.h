// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QtTest>

#include <QObject>
#include <QString>
#include <QVector>

/// Announces one warning that the code under test is about to print.
///
///     const ExpectedWarning expected(QStringLiteral("unknown unit"));
///     document.load(text);
///
/// The message must contain the text. It is swallowed; when none has come by the end of the scope,
/// the test function fails. Works in tests derived from WarningFreeTest only, and takes the place
/// of QTest::ignoreMessage() there.
class ExpectedWarning
{
public:
    explicit ExpectedWarning(const QString &text);
    ~ExpectedWarning();

    /// Whether the message was announced; every announcement is good for one message.
    static bool take(const QString &message);

private:
    Q_DISABLE_COPY(ExpectedWarning)

    static QVector<ExpectedWarning *> &pending();

    const QString m_text;
};

/// The base class of the tests: a warning or critical message that the running test function did
/// not announce with ExpectedWarning fails it.
class WarningFreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Runs before everything else in the test class, but after QtTest has installed its own message
    // handler, which must stay the one below.
    void initTestCase_data();
};
