// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

namespace {

QtMessageHandler previousHandler = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const bool isWarning = type == QtWarningMsg || type == QtCriticalMsg;
    if (isWarning && ExpectedWarning::take(message))
        return;
    previousHandler(type, context, message);
    if (isWarning)
        QTest::qFail("A warning that no ExpectedWarning announced", __FILE__, __LINE__);
}

} // namespace

ExpectedWarning::ExpectedWarning(const QString &text) : m_text(text)
{
    pending().append(this);
}

ExpectedWarning::~ExpectedWarning()
{
    if (!pending().removeOne(this))
        return;
    const QString failure = QStringLiteral("The expected warning did not come: ") + m_text;
    QTest::qFail(qPrintable(failure), __FILE__, __LINE__);
}

bool ExpectedWarning::take(const QString &message)
{
    for (ExpectedWarning *expected : pending()) {
        if (message.contains(expected->m_text)) {
            pending().removeOne(expected);
            return true;
        }
    }
    return false;
}

QVector<ExpectedWarning *> &ExpectedWarning::pending()
{
    static QVector<ExpectedWarning *> announcements;
    return announcements;
}

void WarningFreeTest::initTestCase_data()
{
    previousHandler = qInstallMessageHandler(handleMessage);
}
