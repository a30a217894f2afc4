// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>
#include <Scene/TitleSvgItem.h>

#include <QGuiApplication>
#include <QStyleOptionGraphicsItem>
#include <QTemporaryDir>

#include <memory>

// What works before there is a QGuiApplication, as in a command that has only a QCoreApplication or
// in a static object: everything but drawing, which says so.

namespace {

QString title()
{
    return svgTitle(QStringLiteral(
            "<style>text { font-family: Sans }</style>"
            "<text y=\"40\" font-size=\"40\">Words <animate attributeName=\"x\" "
            "from=\"0\" to=\"9\" dur=\"1s\"/></text><rect width=\"10\" height=\"10\"/>"));
}

} // namespace

class NoApplicationTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void drawsOnlyWithAGuiApplication_data();
    void drawsOnlyWithAGuiApplication();
};

void NoApplicationTest::drawsOnlyWithAGuiApplication_data()
{
    QTest::addColumn<QString>("application");
    QTest::newRow("none") << QString();
    QTest::newRow("QCoreApplication") << QStringLiteral("core");
    QTest::newRow("QGuiApplication") << QStringLiteral("gui");
}

void NoApplicationTest::drawsOnlyWithAGuiApplication()
{
    QFETCH(QString, application);
    // Where it is not set, an application that starts here would warn of it.
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    int argc = 1;
    char name[] = "tst_noapplication";
    char *argv[] = {name, nullptr};
    std::unique_ptr<QCoreApplication> instance;
    if (application == QLatin1String("core"))
        instance = std::make_unique<QCoreApplication>(argc, argv);
    else if (application == QLatin1String("gui"))
        instance = std::make_unique<QGuiApplication>(argc, argv);
    const bool isGui = application == QLatin1String("gui");

    SvgDocument document(title());
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), 1000);
    document.applyAnimation(500);
    QCOMPARE(savedTree(document)
                     .documentElement()
                     .firstChildElement(QStringLiteral("text"))
                     .attribute(QStringLiteral("x")),
             QStringLiteral("4.500"));
    std::unique_ptr<ExpectedWarning> warning;
    if (!isGui)
        warning = std::make_unique<ExpectedWarning>(QStringLiteral("no QGuiApplication"));
    QCOMPARE(isBlank(renderAt(document, 500)), !isGui);

    TitleSvgItem item(title());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 50));
    QImage picture(100, 50, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    if (!isGui)
        warning = std::make_unique<ExpectedWarning>(QStringLiteral("no QGuiApplication"));
    QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    QCOMPARE(isBlank(picture), !isGui);
}

QTEST_APPLESS_MAIN(NoApplicationTest)

#include "tst_noapplication.moc"
