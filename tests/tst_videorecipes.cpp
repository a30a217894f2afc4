// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtEndian>

#include <memory>
#include <random>

namespace {

constexpr int millisecondsToWait = 120000;
constexpr int columns = 16;
constexpr int rows = 9;
constexpr int cell = 120; // pixels, in a video of 1920x1080
constexpr int lastFrame = 1;
const QSize frameSize(columns *cell, rows *cell);

// Cells of all sorts of colours, opaque but for the last two rows, and something that moves.
QByteArray colourfulTitle()
{
    std::mt19937 random(1);
    const auto channel = [&random] {
        const int kind = int(random() % 3);
        return kind == 0 ? 0 : kind == 1 ? 255 : int(random() % 256);
    };
    QString cells = QStringLiteral("<rect width=\"12\" height=\"12\" fill=\"#ff6a4d\"/>");
    for (int i = 1; i < columns * rows; ++i) {
        const bool isOpaque = i < columns * (rows - 2);
        cells += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"12\" height=\"12\" fill=\"%3\""
                                " fill-opacity=\"%4\"/>")
                         .arg(i % columns * 12)
                         .arg(i / columns * 12)
                         .arg(QColor(channel(), channel(), channel()).name())
                         .arg(isOpaque ? 1.0 : i % columns / 16.0);
    }
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 192 108\">%1"
                          "<rect y=\"10\" width=\"4\" height=\"4\"><animate attributeName=\"x\""
                          " from=\"0\" to=\"184\" dur=\"80ms\"/></rect></svg>")
            .arg(cells)
            .toUtf8();
}

// The shell commands below a heading of the README, each block on its own.
QStringList commandsBelow(const QString &heading)
{
    const QString text = readText(QStringLiteral(TITLESCENE_README));
    const int begin = text.indexOf(QStringLiteral("\n%1\n").arg(heading));
    const int end = text.indexOf(QStringLiteral("\n## "), begin + 1);
    static const QRegularExpression block(QStringLiteral("```bash\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList blocks;
    auto matches = block.globalMatch(text.mid(begin, end - begin));
    while (matches.hasNext())
        blocks += matches.next().captured(1);
    return blocks;
}

struct Video
{
    QString name;
    QStringList decoder; // ffmpeg's options
    int alphaBits;       // as decoded
    bool isAlphaLossless;
};

} // namespace

Q_DECLARE_METATYPE(Video)

// The videos that the README's commands make, seen through the eyes of those who read them.
class TestVideoRecipes : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_folder.reset(); }

    void coloursAreThoseOfTheTitle_data();
    void coloursAreThoseOfTheTitle();
    void tagsSayHowToReadTheColours_data();
    void tagsSayHowToReadTheColours();

private:
    QByteArray run(const QString &program, const QStringList &arguments, bool &isDone) const;
    QByteArray decoded(const Video &video, const QString &filter, const QStringList &format) const;
    QImage decodedColours(const Video &video) const;
    QImage decodedAlpha(const Video &video) const;
    static void addVideos(bool withTags);

    std::unique_ptr<QTemporaryDir> m_folder;
};

QByteArray TestVideoRecipes::run(const QString &program, const QStringList &arguments,
                                 bool &isDone) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       QFileInfo(QStringLiteral(TITLESCENE_RENDER)).path() + QLatin1Char(':')
                               + environment.value(QStringLiteral("PATH")));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder->path());
    process.start(program, arguments);
    process.closeWriteChannel();
    isDone = process.waitForFinished(millisecondsToWait)
            && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isDone)
        qInfo("%s", process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

void TestVideoRecipes::initTestCase()
{
    if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty())
        QSKIP("ffmpeg is not installed");
    m_folder = std::make_unique<QTemporaryDir>();
    QFile title(m_folder->filePath(QStringLiteral("opener.svg")));
    QVERIFY(title.open(QIODevice::WriteOnly));
    title.write(colourfulTitle());
    title.close();

    const QStringList blocks = commandsBelow(QStringLiteral("### Videos with alpha"));
    QCOMPARE(blocks.size(), 2);
    const QString between = QStringLiteral("mv opener.mov from-pipe.mov\n"
                                           "titlescene-render opener.svg -o frames"
                                           " --size 1920x1080\n");
    bool isDone = false;
    run(QStringLiteral("bash"),
        {QStringLiteral("-e"), QStringLiteral("-c"),
         blocks.first() + between + blocks.last()
                 + QStringLiteral("mv opener.mov from-files.mov\n")},
        isDone);
    QVERIFY(isDone);
}

QByteArray TestVideoRecipes::decoded(const Video &video, const QString &filter,
                                     const QStringList &format) const
{
    bool isDone = false;
    const QByteArray bytes =
            run(QStringLiteral("ffmpeg"),
                QStringList{QStringLiteral("-loglevel"), QStringLiteral("error")} + video.decoder
                        + QStringList{QStringLiteral("-i"), video.name, QStringLiteral("-vf"),
                                      QStringLiteral("select=eq(n\\,%1),").arg(lastFrame) + filter,
                                      QStringLiteral("-frames:v"), QStringLiteral("1"),
                                      QStringLiteral("-f"), QStringLiteral("rawvideo")}
                        + format + QStringList(QStringLiteral("-")),
                isDone);
    return isDone ? bytes : QByteArray();
}

QImage TestVideoRecipes::decodedColours(const Video &video) const
{
    const QByteArray bytes =
            decoded(video,
                    QStringLiteral("scale=in_color_matrix=bt709:in_range=tv"
                                   ":flags=accurate_rnd+full_chroma_int+full_chroma_inp"),
                    {QStringLiteral("-pix_fmt"), QStringLiteral("rgb24")});
    const QImage image(frameSize, QImage::Format_RGB888);
    if (image.sizeInBytes() != bytes.size())
        return QImage();
    return QImage(reinterpret_cast<const uchar *>(bytes.constData()), frameSize.width(),
                  frameSize.height(), QImage::Format_RGB888)
            .copy();
}

// As it is in the file: ffmpeg's own conversions to 8 bits are only nearly right.
QImage TestVideoRecipes::decodedAlpha(const Video &video) const
{
    const QByteArray bytes = decoded(video, QStringLiteral("extractplanes=a"), {});
    const int pixels = frameSize.width() * frameSize.height();
    const int bytesEach = video.alphaBits > 8 ? 2 : 1;
    if (bytes.size() != pixels * bytesEach)
        return QImage();
    const int most = (1 << video.alphaBits) - 1;
    QImage image(frameSize, QImage::Format_Alpha8);
    for (int i = 0; i < pixels; ++i) {
        const auto *const source =
                reinterpret_cast<const uchar *>(bytes.constData()) + i * bytesEach;
        const int value = bytesEach == 2 ? qFromLittleEndian<quint16>(source) : *source;
        image.scanLine(i / frameSize.width())[i % frameSize.width()] =
                uchar(qRound(value * 255.0 / most));
    }
    return image;
}

void TestVideoRecipes::addVideos(bool withTags)
{
    QTest::addColumn<Video>("video");

    QTest::newRow("ProRes from the pipe")
            << Video{QStringLiteral("from-pipe.mov"), QStringList(), 12, true};
    QTest::newRow("ProRes from files")
            << Video{QStringLiteral("from-files.mov"), QStringList(), 12, true};
    QTest::newRow("VP9") << Video{QStringLiteral("opener.webm"),
                                  {QStringLiteral("-c:v"), QStringLiteral("libvpx-vp9")},
                                  8,
                                  false};
    if (!withTags) {
        QTest::newRow("QuickTime Animation")
                << Video{QStringLiteral("opener-lossless.mov"), QStringList(), 8, true};
    }
}

void TestVideoRecipes::coloursAreThoseOfTheTitle_data()
{
    addVideos(false);
}

void TestVideoRecipes::coloursAreThoseOfTheTitle()
{
    QFETCH(Video, video);

    const QString picture =
            QStringLiteral("frames/frame-%1.png").arg(lastFrame, 6, 10, QLatin1Char('0'));
    const QImage expected =
            QImage(m_folder->filePath(picture)).convertToFormat(QImage::Format_ARGB32);
    const QImage colours = decodedColours(video);
    const QImage alpha = decodedAlpha(video);
    QCOMPARE(expected.size(), frameSize);
    QCOMPARE(colours.size(), frameSize);
    QCOMPARE(alpha.size(), frameSize);

    int opaqueCells = 0;
    for (int i = 0; i < columns * rows; ++i) {
        const QPoint centre(i % columns * cell + cell / 2, i / columns * cell + cell / 2);
        const QColor wanted = expected.pixelColor(centre);
        QCOMPARE(alpha.pixelColor(centre).alpha(), wanted.alpha());
        if (wanted.alpha() != 255)
            continue;
        ++opaqueCells;
        const QColor found = colours.pixelColor(centre);
        QVERIFY2(channelDifference(found.rgba(), wanted.rgba()) <= 2,
                 qPrintable(wanted.name() + QStringLiteral(" became ") + found.name()));
    }
    QCOMPARE(opaqueCells, columns * (rows - 2));
    if (video.isAlphaLossless)
        QVERIFY(alpha == expected.convertToFormat(QImage::Format_Alpha8));
}

void TestVideoRecipes::tagsSayHowToReadTheColours_data()
{
    addVideos(true);
}

void TestVideoRecipes::tagsSayHowToReadTheColours()
{
    QFETCH(Video, video);

    bool isDone = false;
    const QByteArray tags = run(
            QStringLiteral("ffprobe"),
            {QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-show_entries"),
             QStringLiteral("stream=color_range,color_space,color_transfer,color_primaries"),
             QStringLiteral("-of"), QStringLiteral("csv=p=0"), video.name},
            isDone);
    QVERIFY(isDone);
    QCOMPARE(tags, QByteArray("tv,bt709,bt709,bt709\n"));
}

QTEST_MAIN(TestVideoRecipes)
#include "tst_videorecipes.moc"
