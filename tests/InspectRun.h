// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "TitleTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>

/// What a run of titlescene-inspect gives.
struct InspectResult
{
    int exitCode = -1; ///< -1: ended by a signal
    QString output;
    QString errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output.toUtf8()).object(); }
    QJsonArray problems() const { return json().value(QLatin1String("problems")).toArray(); }
    QStringList lines() const { return output.split(QLatin1Char('\n')); }
};

/// Runs the command as a user runs it, without a display.
inline InspectResult runInspect(const QStringList &arguments,
                                const QByteArray &input = QByteArray(),
                                const QString &folder = QDir::tempPath())
{
    constexpr int millisecondsToWait = 120000;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    // In a build with sanitizers their report of known leaks would mix with the errors.
    const QString sanitizer = QStringLiteral("LSAN_OPTIONS");
    environment.insert(sanitizer,
                       environment.value(sanitizer) + QStringLiteral(":print_suppressions=0"));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral(TITLESCENE_INSPECT), arguments);
    process.write(input);
    process.closeWriteChannel();

    InspectResult result;
    if (process.waitForFinished(millisecondsToWait) && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

/// Inspects the text of a title.
inline InspectResult inspectTitle(const QString &title,
                                  const QStringList &arguments = QStringList())
{
    return runInspect(QStringList(QStringLiteral("-")) + arguments, title.toUtf8());
}

/// A problem of the JSON report as one line.
inline QString problemText(const QJsonObject &problem)
{
    return QStringLiteral("%1:%2: %3: %4 [%5]")
            .arg(problem.value(QLatin1String("line")).toInt())
            .arg(problem.value(QLatin1String("column")).toInt())
            .arg(problem.value(QLatin1String("severity")).toString(),
                 problem.value(QLatin1String("reason")).toString(),
                 problem.value(QLatin1String("code")).toString());
}

/// A title of which everything plays as in a browser.
inline QString cleanTitle()
{
    return svgTitle(QStringLiteral(
            "<defs><g id=\"dot\"><circle r=\"4\" style=\"fill:#00ff00\"/></g></defs>\n"
            "<rect id=\"bar\" width=\"9\" height=\"9\" fill=\"#ff0000\">\n"
            "<animate id=\"in\" attributeName=\"x\" from=\"0\" to=\"50\" dur=\"2s\""
            " fill=\"freeze\"/>\n"
            "<animate id=\"CONCLUSION\" attributeName=\"opacity\" values=\"1;0\""
            " begin=\"in.end+1s\" dur=\"500ms\"/></rect>\n"
            "<use xlink:href=\"#dot\"/>\n"
            "<g><animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"90\""
            " begin=\"250ms\" dur=\"1s\" repeatCount=\"2\"/></g>\n"));
}

/// A text with a "^" in front of what a problem is about.
struct MarkedText
{
    QString text; ///< without it
    int line;
    int column;

    explicit MarkedText(QString marked)
    {
        const int at = marked.indexOf(QLatin1Char('^'));
        const QString before = marked.left(at);
        line = before.count(QLatin1Char('\n')) + 1;
        column = at - before.lastIndexOf(QLatin1Char('\n'));
        text = marked.remove(at, 1);
    }
};

/// Whether the manual page of the command lists the code of a problem.
inline bool isInManualPage(QString code)
{
    code.replace(QLatin1Char('-'), QLatin1String("\\-"));
    return readText(QStringLiteral(TITLESCENE_INSPECT_MANUAL))
            .contains(QStringLiteral("\n.TP\n.B ") + code + QLatin1Char('\n'));
}

/// Verifies that one problem with this code is told of a title, at its "^", with a part of the
/// reason and with a remedy: a note in a data row whose name says so, a warning in any other.
inline void verifyOneProblem(const QString &title, const QString &code, const QString &reason)
{
    const MarkedText marked(title);
    const bool isNote = QByteArray(QTest::currentDataTag()).startsWith("note: ");

    const InspectResult result = inspectTitle(marked.text, {QStringLiteral("--json")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, isNote ? 0 : 1);

    QStringList all;
    QJsonObject found;
    for (const QJsonValue &value : result.problems()) {
        const QJsonObject problem = value.toObject();
        all += problemText(problem);
        if (problem.value(QLatin1String("code")).toString() == code)
            found = problem;
        else
            // The document type stands beside what is wrong with its entities.
            QCOMPARE(problem.value(QLatin1String("code")).toString(),
                     QStringLiteral("document-type"));
    }
    QVERIFY2(!found.isEmpty(), qPrintable(all.join(QLatin1Char('\n'))));
    QCOMPARE(all.filter(QLatin1Char('[') + code + QLatin1Char(']')).size(), 1);
    QCOMPARE(found.value(QLatin1String("severity")).toString(),
             isNote ? QStringLiteral("note") : QStringLiteral("warning"));
    QCOMPARE(found.value(QLatin1String("line")).toInt(), marked.line);
    QCOMPARE(found.value(QLatin1String("column")).toInt(), marked.column);
    QVERIFY2(found.value(QLatin1String("reason")).toString().contains(reason),
             qPrintable(all.join(QLatin1Char('\n'))));
    QVERIFY(!found.value(QLatin1String("remedy")).toString().isEmpty());
    QVERIFY2(isInManualPage(code), "the manual page lists the code");
}
