// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "HostileParts.h"

#include <Scene/TitleSvgItem.h>

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <limits>
#include <memory>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

// Titles that were made to do harm go through everything that an editor does with a title: they
// are refused with a reason, or they show what the harmless part of them shows.

namespace {

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

/// Loads, plays, adjusts and clips; the picture at 500 ms of the first play.
QImage handle(SvgDocument &document)
{
    document.setBounds(QRectF(0, 0, 100, 50));
    const QImage picture = renderAt(document, 500);
    for (const int ms : {0, 1500, -1, highest, lowest})
        renderAt(document, ms);
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("xlink:href")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    renderAt(document, 700);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (clipping) {
        clipping->setBounds(QRectF(0, 0, 100, 50));
        renderAt(*clipping, 0);
    }
    return picture;
}

} // namespace

class HostileTitlesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void refuses_data();
    void refuses();
    void refusesFrames_data();
    void refusesFrames();
    void showsTheHarmlessPart_data();
    void showsTheHarmlessPart();
    void tellsWhatIsLeftOut_data();
    void tellsWhatIsLeftOut();
    void opensNoFile_data();
    void opensNoFile();
    void animatesNoForeignReference();
    void adjustsNoForeignReference();
    void adjustsNothingBeyondTheLimits_data();
    void adjustsNothingBeyondTheLimits();
    void boundsCopiesOfClipPaths();
    void boundsTheImageOfAnItem();
};

/// What the renderer does not understand it says in a category of its own.
void HostileTitlesTest::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void HostileTitlesTest::refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("limit");
    for (const RefusedTitle &title : refusedTitles())
        QTest::newRow(title.name) << QString::fromUtf8(title.text) << title.refusal;
}

void HostileTitlesTest::refuses()
{
    QFETCH(QString, text);
    QFETCH(QString, limit);
    SvgDocument document(text);
    QVERIFY(!document.isLoaded());
    QVERIFY2(document.errorString().startsWith(QStringLiteral("line ")),
             qPrintable(document.errorString()));
    QVERIFY2(document.errorString().contains(limit), qPrintable(document.errorString()));
    QVERIFY(!document.errorString().contains(QLatin1Char('\n')));
    QVERIFY(document.documentRoot().isNull());
    QVERIFY(isBlank(handle(document)));
}

void HostileTitlesTest::refusesFrames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("refusal");
    for (const RefusedTitle &title : titlesTurningHostile())
        QTest::newRow(title.name) << QString::fromUtf8(title.text) << title.refusal;
}

/// Before and after it the title shows.
void HostileTitlesTest::refusesFrames()
{
    QFETCH(QString, text);
    QFETCH(QString, refusal);
    SvgDocument document(text);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    const QImage before = renderAt(document, 0);
    QVERIFY(!isBlank(before));
    QVERIFY(isBlank(renderAt(document, 500)));
    QVERIFY2(document.errorString().contains(refusal), qPrintable(document.errorString()));
    document.saveToBuffer();
    QVERIFY(isBlank(renderAt(document, 500)));
    COMPARE_PICTURES(renderAt(document, 0), before, 0);
    QVERIFY(!document.errorString().contains(refusal));
}

void HostileTitlesTest::showsTheHarmlessPart_data()
{
    QTest::addColumn<QString>("text");
    for (const HostileTitle &title : harmlessTitles())
        QTest::newRow(title.name) << QString::fromUtf8(title.text);
}

void HostileTitlesTest::showsTheHarmlessPart()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    SvgDocument twin(svgTitle(redRect()));
    COMPARE_PICTURES(handle(document), renderAt(twin, 0), 0);
}

void HostileTitlesTest::tellsWhatIsLeftOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    const QString moving = QStringLiteral(
            "<rect width=\"9\" height=\"9\"><animate attributeName=\"id\" values=\"a;b\" "
            "dur=\"1s\"/></rect>");
    const auto add = [&moving](const char *name, const QString &content, const char *told) {
        QTest::newRow(name) << svgTitle(moving + QLatin1Char('\n') + content)
                            << QString::fromLatin1(told);
    };
    add("nothing", redRect(), "");
    add("file", imageElement(QStringLiteral("a.png")),
        "line 2: a picture is left out: it is no PNG or JPEG in the title, or too large");
    const auto picture = [](int width, int height) {
        QByteArray file;
        QBuffer buffer(&file);
        QImage image(width, height, QImage::Format_Mono);
        image.fill(0);
        image.save(&buffer, "png");
        return imageElement(QStringLiteral("data:image/png;base64,")
                            + QString::fromLatin1(file.toBase64()));
    };
    add("8K", picture(7680, 4320), "");
    add("too many pixels", picture(7680, 4320) + QLatin1Char('\n') + picture(4096, 4096),
        "line 3: a picture is left out: the number of pixels of all pictures exceeds 37748736");
    QTest::newRow("style sheet") << QStringLiteral("<?xml-stylesheet href=\"a.css\"?>")
                    + svgTitle(redRect() + moving)
                                 << QStringLiteral(
                                            "line 1: a style sheet outside the title is left out");
}

void HostileTitlesTest::tellsWhatIsLeftOut()
{
    QFETCH(QString, text);
    QFETCH(QString, told);
    SvgDocument document(text);
    const auto isTold = [&] {
        return document.isLoaded()
                && (told.isEmpty() ? !document.errorString().contains(QLatin1String("left out"))
                                   : document.errorString() == told);
    };
    QVERIFY2(isTold(), qPrintable(document.errorString()));
    for (const int time : {0, 700, 2000}) {
        document.applyAnimation(time);
        QVERIFY2(isTold(), qPrintable(document.errorString()));
    }
    document.saveToBuffer();
    document.viewBox();
    QVERIFY2(isTold(), qPrintable(document.errorString()));
}

void HostileTitlesTest::opensNoFile_data()
{
    QTest::addColumn<QString>("text"); // %1 stands for the file
    for (const HostileTitle &title : titlesNamingFile())
        QTest::newRow(title.name) << QString::fromUtf8(title.text);
}

/// Neither a picture or a style sheet that would be seen nor a pipe, which would never end.
void HostileTitlesTest::opensNoFile()
{
    QFETCH(QString, text);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    SvgDocument twin(svgTitle(redRect()));
    const QImage expected = renderAt(twin, 0);

    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    if (text.contains(QStringLiteral("xml-stylesheet"))) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write("rect { fill: #0000ff; opacity: 0.5 }") > 0);
    }
    SvgDocument document(QString(text).replace(QStringLiteral("%1"), path));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    COMPARE_PICTURES(handle(document), expected, 0);

#ifdef Q_OS_UNIX
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    SvgDocument waiting(QString(text).replace(QStringLiteral("%1"), pipe));
    COMPARE_PICTURES(handle(waiting), expected, 0);
#endif
}

void HostileTitlesTest::animatesNoForeignReference()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    SvgDocument document(svgTitle(
            redRect()
            + QStringLiteral(
                      "<image width=\"100\" height=\"50\" xlink:href=\"#a\"><animate"
                      " attributeName=\"xlink:href\" from=\"a\" to=\"%1\" dur=\"1s\"/></image>")
                      .arg(path)));
    QVERIFY(document.isLoaded());
    SvgDocument twin(svgTitle(redRect()));
    COMPARE_PICTURES(handle(document), renderAt(twin, 0), 0);
    QVERIFY(!savedTree(document)
                     .elementsByTagName(QStringLiteral("image"))
                     .item(0)
                     .toElement()
                     .attribute(QStringLiteral("xlink:href"))
                     .contains(path));
}

void HostileTitlesTest::adjustsNoForeignReference()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("canary.png"));
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString embedded = QStringLiteral("data:image/png;base64,")
            + QString::fromLatin1(file.readAll().toBase64());

    SvgDocument document(svgTitle(redRect() + imageElement(QStringLiteral("a.png"))));
    const QImage before = renderAt(document, 0);
    document.prepareAdjustedAttibutes({QStringLiteral("xlink:href")});
    document.adjustAttribute(QStringLiteral("xlink:href"), path);
    COMPARE_PICTURES(renderAt(document, 0), before, 0);
    document.adjustAttribute(QStringLiteral("xlink:href"), embedded);
    QCOMPARE(renderAt(document, 0).pixelColor(90, 45), QColor(Qt::blue));
}

void HostileTitlesTest::adjustsNothingBeyondTheLimits_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("harmful");
    QTest::addColumn<QString>("harmless");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("number") << QStringLiteral(
            "<path d=\"M 0 9 H 50\" stroke=\"red\" stroke-width=\"5\" stroke-dasharray=\"50\"/>")
                            << QStringLiteral("d") << QStringLiteral("M -1e20 -1e20 H 2")
                            << QStringLiteral("M 0 29 H 50") << QStringLiteral("magnitude");
    QTest::newRow("dashes") << QStringLiteral(
            "<path d=\"M 0 9 H 90\" stroke=\"red\" stroke-width=\"5\" stroke-dasharray=\"50\"/>")
                            << QStringLiteral("stroke-dasharray") << repeated("1 ", 1025)
                            << QStringLiteral("9") << QStringLiteral("number of dashes");
    QTest::newRow("references in rings")
            << QStringLiteral("<g id=\"a\">%1%2</g><g transform=\"translate(50,0)\"><use "
                              "xlink:href=\"#none\"/></g>")
                       .arg(redRect(), repeated("<use xlink:href=\"#none\"/>", 64))
            << QStringLiteral("xlink:href") << QStringLiteral("#a") << QStringLiteral("#b")
            << QStringLiteral("ring of references");
}

/// What would be refused in a template is refused from an application as well, which may have it
/// from a stranger.
void HostileTitlesTest::adjustsNothingBeyondTheLimits()
{
    QFETCH(QString, content);
    QFETCH(QString, name);
    QFETCH(QString, harmful);
    QFETCH(QString, harmless);
    QFETCH(QString, refusal);
    SvgDocument document(svgTitle(content));
    document.prepareAdjustedAttibutes({name});
    const QImage before = renderAt(document, 0);
    document.adjustAttribute(name, harmful);
    QVERIFY2(document.errorString().contains(refusal), qPrintable(document.errorString()));
    QVERIFY(!savedText(document).contains(harmful.toUtf8() + '"'));
    COMPARE_PICTURES(renderAt(document, 0), before, 0);

    document.adjustAttribute(name, harmless);
    QVERIFY(!document.errorString().contains(refusal));
    QVERIFY(savedText(document).contains(name.toUtf8() + "=\"" + harmless.toUtf8() + '"'));
}

/// Each level is copied again for all the levels around it.
void HostileTitlesTest::boundsCopiesOfClipPaths()
{
    const auto copied = [](int leaves) {
        SvgDocument document(svgTitle(repeated("<clipPath>", 200) + repeated("<g/>", leaves)
                                      + repeated("</clipPath>", 200)));
        const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
        return clipping ? savedTree(*clipping).elementsByTagName(QStringLiteral("g")).count() : -1;
    };
    QCOMPARE(copied(900), 200 * 900);
    QCOMPARE(copied(2000), 0);
}

/// The template says how large the picture is that an item puts together; 30,000 by 30,000 pixels
/// are 3.6 GB.
void HostileTitlesTest::boundsTheImageOfAnItem()
{
    const auto drawn = [](int size) {
        const QString text =
                svgTitle(QStringLiteral("<clipPath/><rect width=\"%1\" height=\"%1\"/>"))
                        .replace(QStringLiteral("0 0 100 50"), QStringLiteral("0 0 %1 %1"))
                        .arg(size);
        TitleSvgItem item(text);
        item.setPaintOnImage(true);
        QImage picture(10, 10, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        item.paint(&painter, nullptr);
        return picture.pixelColor(5, 5);
    };
    QCOMPARE(drawn(1'000), QColor(Qt::black));
    QCOMPARE(drawn(30'000), QColor(Qt::transparent));
}

QTEST_MAIN(HostileTitlesTest)

#include "tst_hostiletitles.moc"
