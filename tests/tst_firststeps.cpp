// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QProcess>
#include <QTemporaryDir>

/// The example of which the API documentation shows the code and the pictures, run as a user would.
class FirstStepsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void drawsPictures();
    void showsTheTitle();
    void failsWithoutFolder();
    void saysHowItIsCalled();

private:
    static int run(const QStringList &arguments, QString *errors = nullptr);
};

/// The exit code.
int FirstStepsTest::run(const QStringList &arguments, QString *errors)
{
    QProcess process;
    process.start(QStringLiteral(TITLESCENE_FIRSTSTEPS), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return -1;
    if (errors)
        *errors = QString::fromUtf8(process.readAllStandardError());
    return process.exitCode();
}

void FirstStepsTest::drawsPictures()
{
    const QTemporaryDir folder;
    QCOMPARE(run({QStringLiteral(TITLESCENE_TEMPLATES), folder.path()}), 0);
    const QStringList names{QStringLiteral("decorators.png"), QStringLiteral("documents.png"),
                            QStringLiteral("helpers.png"), QStringLiteral("items.png")};
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), names);
    for (const QString &name : names)
        QVERIFY2(!isBlank(QImage(folder.filePath(name))), qPrintable(name));
}

/// The helper's canvas: bars of the paper above and below the title at three seconds.
void FirstStepsTest::showsTheTitle()
{
    const QTemporaryDir folder;
    QCOMPARE(run({QStringLiteral(TITLESCENE_TEMPLATES), folder.path()}), 0);
    const QImage picture(folder.filePath(QStringLiteral("helpers.png")));
    QCOMPARE(picture.size(), QSize(480, 360));
    QCOMPARE(QColor(picture.pixel(240, 20)), QColor(0x20, 0x24, 0x2c));
    QCOMPARE(QColor(picture.pixel(240, 340)), QColor(0x20, 0x24, 0x2c));

    SvgDocument title(readTemplate(QStringLiteral("opener.svg")));
    title.setBounds(QRectF(0.0, 0.0, 480.0, 270.0));
    const QColor sun(renderAt(title, 3000, Qt::black).pixel(240, 95));
    QCOMPARE(QColor(picture.pixel(240, 45 + 95)), sun);
}

void FirstStepsTest::failsWithoutFolder()
{
    const QTemporaryDir folder;
    QString errors;
    QCOMPARE(run({QStringLiteral(TITLESCENE_TEMPLATES), folder.filePath(QStringLiteral("none"))},
                 &errors),
             1);
    QVERIFY(errors.contains(QLatin1String("can't be written")));
}

void FirstStepsTest::saysHowItIsCalled()
{
    QString errors;
    QCOMPARE(run({}, &errors), 2);
    QVERIFY(errors.contains(QLatin1String("usage: ")));
}

QTEST_MAIN(FirstStepsTest)
#include "tst_firststeps.moc"
