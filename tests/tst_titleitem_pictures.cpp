// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextStage.h"
#include "WarningFreeTest.h"

#include <Scene/AdmissionLimits_p.h>

#include <QBuffer>
#include <QClipboard>
#include <QMimeData>

// Pictures that stand in a text itself.

namespace {

QByteArray fileOf(const QImage &image, const char *format)
{
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

QImage plainImage(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QString reference(const QByteArray &file, const char *type = "image/png")
{
    return QStringLiteral("data:%1;base64,%2")
            .arg(QLatin1String(type), QString::fromLatin1(file.toBase64()));
}

/// Green, and half as many pixels as all pictures may have, and some more.
QString largeReference(int rows)
{
    const int side = 4096;
    QImage image(side, int(AdmissionLimits::picturePixels.most / 2 / side) + rows,
                 QImage::Format_Mono);
    image.setColorTable({qRgb(0, 255, 0), qRgb(0, 255, 0)});
    image.fill(0);
    return reference(fileOf(image, "png"));
}

QString pictureElement(const QString &source, int side = 0)
{
    const QString size = side ? QStringLiteral(" width='%1' height='%1'").arg(side) : QString();
    return QStringLiteral("<img src='%1'%2>").arg(source, size);
}

/// What an item with a document of its own shows of a text.
QImage pictureOf(const TitleItem &item)
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.document()->documentLayout()->draw(&painter, QAbstractTextDocumentLayout::PaintContext());
    return image;
}

int countPixels(const TitleItem &item, const QColor &color)
{
    const QImage image = pictureOf(item);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const int difference = std::abs(pixel.red() - color.red())
                    + std::abs(pixel.green() - color.green())
                    + std::abs(pixel.blue() - color.blue());
            count += difference <= 6 ? 1 : 0; // JPEG
        }
    }
    return count;
}

const QColor blue(0, 0, 255);
const QColor green(0, 255, 0);

QByteArray bluePng()
{
    return fileOf(plainImage(QSize(20, 10), blue), "png");
}

} // namespace

class TitleItemPicturesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void shows_data();
    void shows();
    void showsNothing_data();
    void showsNothing();
    void pastes();
    void fillsABackground();
    void limitsTheLength();
    void unpacksOnce();
    void limitsThePixelsOfAll();
    void forgetsThePicturesOfTheTextBefore();
};

void TitleItemPicturesTest::shows_data()
{
    QTest::addColumn<QString>("source");

    const QImage image = plainImage(QSize(20, 10), blue);
    const QString png = reference(bluePng());
    const auto row = [](const char *name, const QString &source) { QTest::newRow(name) << source; };
    row("PNG", png);
    row("PNG with transparency",
        reference(fileOf(image.convertToFormat(QImage::Format_ARGB32), "png")));
    row("PNG of 16 bits", reference(fileOf(image.convertToFormat(QImage::Format_RGBX64), "png")));
    row("JPEG", reference(fileOf(image, "jpeg"), "image/jpeg"));
    row("JPEG that says PNG", reference(fileOf(image, "jpeg")));
    row("PNG that says text", reference(bluePng(), "text/plain"));
    row("without a type", reference(bluePng(), ""));
    row("with a character set", reference(bluePng(), "image/png;charset=utf-8"));
    row("capital letters", QStringLiteral("DATA:") + png.mid(5));
    QString encoded = png;
    row("escaped",
        encoded.replace(QLatin1Char('+'), QLatin1String("%2B"))
                .replace(QLatin1Char('/'), QLatin1String("%2F"))
                .replace(QLatin1Char('='), QLatin1String("%3D")));
    QString broken = png;
    row("spaces", broken.insert(60, QLatin1String("  ")));
}

void TitleItemPicturesTest::shows()
{
    QFETCH(const QString, source);

    TitleItem item(QSizeF(100, 50), nullptr);
    item.setHtml(QStringLiteral("<p>") + pictureElement(source) + QStringLiteral("</p>"));
    QCOMPARE(countPixels(item, blue), 200);
    QCOMPARE(item.boundingRect().width(), 20 + 2 * item.document()->documentMargin());
    item.setHtml(pictureElement(source, 30));
    QCOMPARE(countPixels(item, blue), 900);
}

void TitleItemPicturesTest::showsNothing_data()
{
    QTest::addColumn<QString>("source");

    const QImage image = plainImage(QSize(20, 10), blue);
    const auto row = [](const char *name, const QString &source) { QTest::newRow(name) << source; };
    row("another kind of picture", reference(fileOf(image, "bmp"), "image/bmp"));
    row("a portable pixmap", reference(fileOf(image, "ppm"), "image/png"));
    row("an SVG document",
        reference("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 10'>"
                  "<rect width='20' height='10' fill='blue'/></svg>",
                  "image/svg+xml"));
    row("not in base64",
        QStringLiteral("data:image/png,") + QString::fromLatin1(bluePng().toPercentEncoding()));
    row("the head of a picture", reference(bluePng().left(40)));
    row("no picture", reference("text"));
    row("nothing", reference(QByteArray()));
    row("data alone", QStringLiteral("data:"));
    row("another scheme", QStringLiteral("x") + reference(bluePng()));
    QByteArray texts;
    for (int i = 0; i <= AdmissionLimits::packedTexts.most; ++i)
        texts.append(QByteArray("\0\0\0\0zTXt\0\0\0\0", 12));
    row("too many packed texts", reference(bluePng().insert(33, texts)));
    QImage large(4096, int(AdmissionLimits::picturePixels.most / 4096) + 1, QImage::Format_Mono);
    large.setColorTable({blue.rgb(), blue.rgb()});
    large.fill(0);
    row("too many pixels", reference(fileOf(large, "png")));
}

/// And what comes after it is shown.
void TitleItemPicturesTest::showsNothing()
{
    QFETCH(const QString, source);

    TitleItem item(QSizeF(100, 50), nullptr);
    item.setHtml(pictureElement(source, 30));
    QCOMPARE(countPixels(item, blue), 0);
    QCOMPARE(countPixels(item, Qt::white), 200 * 100);
    item.setHtml(pictureElement(source) + pictureElement(reference(bluePng())));
    QCOMPARE(countPixels(item, blue), 200);
    QCOMPARE(item.boundingRect().width(), 1 + 20 + 2 * item.document()->documentMargin());
}

void TitleItemPicturesTest::pastes()
{
    TextStage stage;
    QVERIFY(stage.show());
    stage.item->setDocument(nullptr);
    stage.item->setEditable(true);
    auto *data = new QMimeData;
    data->setHtml(pictureElement(reference(bluePng())));
    QApplication::clipboard()->setMimeData(data);
    stage.press(QKeySequence::Paste);
    QCOMPARE(countPixels(*stage.item, blue), 200);
    stage.press(QKeySequence::Undo);
    QCOMPARE(countPixels(*stage.item, blue), 0);
    stage.press(QKeySequence::Redo);
    QCOMPARE(countPixels(*stage.item, blue), 200);
}

void TitleItemPicturesTest::fillsABackground()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    item.setHtml(QStringLiteral("<table width='60' height='40' border='0' cellspacing='0'><tr><td "
                                "style=\"background-image: url(%1)\"></td></tr></table>")
                         .arg(reference(bluePng())));
    QVERIFY(countPixels(item, blue) > 60 * 10);
}

void TitleItemPicturesTest::limitsTheLength()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    const QByteArray file = bluePng();
    const int most = int(AdmissionLimits::pictureLength.most / 4 * 3);
    const auto sizeShown = [&item](const QByteArray &longFile) {
        const QUrl name(reference(longFile));
        return item.document()->resource(QTextDocument::ImageResource, name).value<QImage>().size();
    };
    QCOMPARE(sizeShown(file + QByteArray(most - 100 - file.size(), ' ')), QSize(20, 10));
    QCOMPARE(sizeShown(file + QByteArray(most - file.size(), ' ')), QSize(1, 1));
}

void TitleItemPicturesTest::unpacksOnce()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    const QString source = reference(bluePng());
    item.setHtml(pictureElement(source) + pictureElement(source));
    QCOMPARE(countPixels(item, blue), 400);
    const auto key = [&item, &source] {
        return item.document()
                ->resource(QTextDocument::ImageResource, QUrl(source))
                .value<QImage>()
                .cacheKey();
    };
    const qint64 first = key();
    QCOMPARE(countPixels(item, blue), 400);
    QCOMPARE(key(), first);
}

/// The same picture counts once, however often it is shown.
void TitleItemPicturesTest::limitsThePixelsOfAll()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    const QString first = pictureElement(largeReference(0), 20);
    const QString second = pictureElement(largeReference(1), 20);
    item.setHtml(first + second + first + first);
    QCOMPARE(countPixels(item, green), 3 * 400);
    item.setHtml(second + first + second);
    QCOMPARE(countPixels(item, green), 2 * 400);
}

void TitleItemPicturesTest::forgetsThePicturesOfTheTextBefore()
{
    TitleItem item(QSizeF(100, 50), nullptr);
    const QStringList texts{pictureElement(largeReference(1), 20),
                            pictureElement(largeReference(2), 20)};
    for (const QString &text : texts) {
        item.setHtml(text);
        QCOMPARE(countPixels(item, green), 400);
    }
    // As somebody does who deletes everything.
    QTextCursor all(item.document());
    all.select(QTextCursor::Document);
    all.removeSelectedText();
    all.insertHtml(texts.first());
    QCOMPARE(countPixels(item, green), 400);
}

QTEST_MAIN(TitleItemPicturesTest)
#include "tst_titleitem_pictures.moc"
