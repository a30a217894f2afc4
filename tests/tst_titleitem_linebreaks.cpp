// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/TitleItem.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPair>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QVector>

#include <cstdio>
#include <cstring>

// The same text on screens of different scales. The scale holds for a whole process, so each scale
// is one more run of this program, which prints where the lines of its texts break.

namespace {

const char *const printLineBreaks = "--print-line-breaks";

struct Sample
{
    const char *name;
    const char *html;
};

const Sample samples[] = {
        {"Latin",
         "The quick brown fox jumps over the lazy dog while five boxing wizards jump quickly past "
         "it, "
         "illegally filling Wavy AVATAR To."},
        {"Cyrillic", "Съешь ещё этих мягких французских булок, да выпей чаю, а потом ещё немного."},
        {"CJK", "天地玄黄宇宙洪荒日月盈昃辰宿列張寒來暑往秋收冬藏閏餘成歲律呂調陽"},
        {"Arabic", "نص حكيم له سر قاطع وذو شأن عظيم مكتوب على ثوب أخضر ومغلف بجلد أزرق"},
        {"Devanagari", "ऋषियों को सताने वाले दुष्ट राक्षसों के राजा रावण का सर्वनाश करने वाले"},
        {"scripts in one line",
         "Hello Привет 你好世界 مرحبا नमस्ते 안녕하세요 😀🎬 и ещё Καλημέρα, all of them."},
        {"formats in one line",
         "regular <b>bold and wide</b> <i>leaning over</i> <span "
         "style='font-size:20pt'>large</span> "
         "<span style='font-family:DejaVu Serif'>with serifs</span> "
         "<span style='font-size:11px'>measured in pixels</span> <u>underlined</u> "
         "<span style='font-family:DejaVu Sans Mono'>of one width</span>"},
        {"formats and scripts",
         "<b>Жирный</b> <i>наклонный</i> <span style='font-size:20pt'>大きい文字</span> "
         "<span style='font-family:DejaVu Serif'>с засечками 和 serif</span> <b>अक्षर</b> "
         "<span style='font-size:9pt'>small 小さい</span> 😀"},
        {"pixels: letter spacing", "<span style='letter-spacing:2px'>some words spaced out</span>"},
        {"pixels: margins and indents",
         "<h1>A heading of some words</h1><p>and a paragraph that follows it</p>"
         "<ul><li>one item that is long</li><li>another item</li></ul>"},
};

QString lineBreaks(const QTextDocument &document)
{
    QStringList starts;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (int i = 0; i < block.layout()->lineCount(); ++i)
            starts.append(
                    QString::number(block.position() + block.layout()->lineAt(i).textStart()));
    }
    return starts.join(QLatin1Char(' '));
}

void fill(QTextDocument &document, const Sample &sample, const QString &family, qreal pointSize)
{
    QFont font(family);
    font.setPointSizeF(pointSize);
    document.setDefaultFont(font);
    document.setDocumentMargin(0);
    document.setHtml(QString::fromUtf8(sample.html));
}

/// A document that had its width before, and has been laid out for the screen.
void printHandedOver(const Sample &sample, const QString &family, qreal pointSize)
{
    for (const int width : {-1, 120, 260}) {
        QTextDocument document;
        fill(document, sample, family, pointSize);
        document.setTextWidth(width);
        document.size();
        const TitleItem item(QSizeF(480, 200), &document);
        std::printf("%s, %s %g, handed over at %d: %s\n", sample.name, qPrintable(family),
                    pointSize, width, qPrintable(lineBreaks(document)));
        const QRectF bounds = item.boundingRect();
        std::printf("%s, %s %g, size at %d: %g x %g\n", sample.name, qPrintable(family), pointSize,
                    width, bounds.width(), bounds.height());
    }
}

void printSample(const Sample &sample, const QString &family, qreal pointSize)
{
    printHandedOver(sample, family, pointSize);
    QTextDocument document;
    fill(document, sample, family, pointSize);
    auto *item = new TitleItem(QSizeF(480, 200), &document);
    QGraphicsScene scene;
    scene.addItem(item);
    QGraphicsView view(&scene);
    view.show();
    for (const int width : {90, 120, 150, 200, 260, 333, 410, 480}) {
        item->setSize(QSizeF(width, 100));
        view.grab();
        std::printf("%s, %s %g, %d: %s\n", sample.name, qPrintable(family), pointSize, width,
                    qPrintable(lineBreaks(document)));
    }
}

int printAllLineBreaks()
{
    std::printf("scale %g, %g dots per inch\n", qApp->devicePixelRatio(),
                QGuiApplication::primaryScreen()->logicalDotsPerInch());
    for (const Sample &sample : samples) {
        for (const char *family : {"DejaVu Sans", "DejaVu Serif"}) {
            for (const qreal pointSize : {9.0, 11.0, 13.5, 24.0})
                printSample(sample, QString::fromLatin1(family), pointSize);
        }
    }
    return 0;
}

/// The machine's fonts, with this way to hint glyphs.
QString fontSettings(const QString &hinting)
{
    return QStringLiteral("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                          "<fontconfig><include>/etc/fonts/fonts.conf</include>"
                          "<match target=\"pattern\"><edit name=\"hintstyle\" mode=\"assign\" "
                          "binding=\"strong\"><const>%1</const></edit></match>"
                          "<match target=\"font\"><edit name=\"hintstyle\" mode=\"assign\">"
                          "<const>%1</const></edit></match></fontconfig>")
            .arg(hinting);
}

/// What a run with these environment variables prints, line by line.
QStringList printed(const QVector<QPair<QString, QString>> &variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, value] : variables)
        environment.insert(name, value);
    QProcess run;
    run.setProcessEnvironment(environment);
    run.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(printLineBreaks)});
    if (!run.waitForFinished() || run.exitStatus() != QProcess::NormalExit || run.exitCode() != 0)
        return QStringList();
    return QString::fromUtf8(run.readAllStandardOutput()).split(QLatin1Char('\n'));
}

QStringList printedAtScale(const QString &scale, const QString &settingsFile)
{
    return printed({{QStringLiteral("QT_SCALE_FACTOR"), scale},
                    {QStringLiteral("FONTCONFIG_FILE"), settingsFile}});
}

QStringList printedAtResolution(const QString &dotsPerInch)
{
    return printed({{QStringLiteral("QT_FONT_DPI"), dotsPerInch}});
}

} // namespace

class TitleItemLineBreaksTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void sameAtEveryScale_data();
    void sameAtEveryScale();
    void fontsAreMeasuredAtOneResolution();
};

void TitleItemLineBreaksTest::sameAtEveryScale_data()
{
    QTest::addColumn<QString>("hinting");
    QTest::addColumn<QString>("scale");

    // Stronger hinting makes the widths of glyphs whole pixels, but only on unscaled screens.
    for (const char *hinting : {"hintnone", "hintslight"}) {
        for (const char *scale : {"1.25", "1.5", "2", "3"})
            QTest::addRow("%s, scale %s", hinting, scale)
                    << QString::fromLatin1(hinting) << QString::fromLatin1(scale);
    }
}

void TitleItemLineBreaksTest::sameAtEveryScale()
{
    QFETCH(const QString, hinting);
    QFETCH(const QString, scale);

    const QTemporaryDir folder;
    QFile settings(folder.filePath(QStringLiteral("fonts.conf")));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write(fontSettings(hinting).toUtf8());
    settings.close();

    QStringList plain = printedAtScale(QStringLiteral("1"), settings.fileName());
    QStringList scaled = printedAtScale(scale, settings.fileName());
    QVERIFY(plain.value(0).startsWith(QLatin1String("scale 1,")));
    QVERIFY(scaled.value(0).startsWith(QStringLiteral("scale %1,").arg(scale)));
    plain.removeFirst();
    scaled.removeFirst();
    QVERIFY(plain.size() > 500);
    QCOMPARE(scaled, plain);
}

/// But for lengths in pixels, which are as long as on the screen.
void TitleItemLineBreaksTest::fontsAreMeasuredAtOneResolution()
{
    QStringList usual = printedAtResolution(QStringLiteral("96"));
    QStringList high = printedAtResolution(QStringLiteral("192"));
    QVERIFY(usual.value(0).endsWith(QLatin1String(" 96 dots per inch")));
    QVERIFY(high.value(0).endsWith(QLatin1String(" 192 dots per inch")));
    const QRegularExpression oneResolution(QStringLiteral("^(?!scale|pixels)."));
    usual = usual.filter(oneResolution);
    high = high.filter(oneResolution);
    QVERIFY(usual.size() > 500);
    QCOMPARE(high, usual);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], printLineBreaks) == 0)
        return printAllLineBreaks();
    TitleItemLineBreaksTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_titleitem_linebreaks.moc"
