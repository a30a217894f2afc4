// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <set>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int millisecondsToWait = 60000;

// A red square that moves 2 pixels a frame at 25 frames a second, for one second, above a
// half-transparent green bar.
QByteArray movingTitle()
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 64 36\">"
           "<rect x=\"0\" y=\"10\" width=\"10\" height=\"10\" fill=\"#ff0000\">"
           "<animate attributeName=\"x\" from=\"0\" to=\"50\" dur=\"1s\" fill=\"freeze\"/></rect>"
           "<rect x=\"20\" y=\"24\" width=\"20\" height=\"8\" fill=\"#00ff00\""
           " fill-opacity=\"0.5\"/>"
           "</svg>";
}

// Clip paths, opacity of its own on the root, several animations that the renderer and the
// document play: whatever depends on the process or on the frame before would show.
QByteArray clippedTitle()
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 64 36\" width=\"64\""
           " height=\"36\" opacity=\"0.75\" fill=\"blue\" stroke=\"none\" id=\"t\" class=\"c\""
           " version=\"1.1\">"
           "<clipPath id=\"hole\"><rect x=\"24\" y=\"8\" width=\"16\" height=\"16\"/></clipPath>"
           "<rect width=\"64\" height=\"36\" fill=\"#ff0000\" opacity=\"0.5\">"
           "<animate attributeName=\"opacity\" values=\"0.2;1;0.2\" begin=\"0.2s\" dur=\"0.6s\"/>"
           "<animate attributeName=\"fill\" from=\"#ff0000\" to=\"#00ffff\" begin=\"0.4s\""
           " dur=\"0.5s\"/></rect>"
           "<g><animateTransform attributeName=\"transform\" type=\"translate\" from=\"0 0\""
           " to=\"30 4\" begin=\"0s\" dur=\"1s\" fill=\"freeze\"/>"
           "<circle cx=\"10\" cy=\"20\" r=\"7.3\" fill=\"#20a040\"/></g>"
           "</svg>";
}

QByteArray stillTitle(const QByteArray &content)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 64 36\">" + content + "</svg>";
}

QByteArray redTitle()
{
    return stillTitle("<rect width=\"64\" height=\"36\" fill=\"#ff0000\"/>");
}

// Long enough never to be rendered to its end here.
QByteArray endlessTitle()
{
    return stillTitle("<rect width=\"9\" height=\"9\"><animate attributeName=\"x\" from=\"0\""
                      " to=\"50\" dur=\"20000s\"/></rect>");
}

QString frameName(int frame)
{
    return QStringLiteral("frame-%1.png").arg(frame, 6, 10, QLatin1Char('0'));
}

struct Result
{
    int exitCode = -1; // -1: ended by a signal
    QByteArray output;
    QByteArray errors;

    QList<QByteArray> errorLines() const
    {
        QList<QByteArray> lines = errors.split('\n');
        if (lines.constLast().isEmpty())
            lines.removeLast();
        return lines;
    }
};

// The moving title as the library paints it, with straight colours.
QImage movingTitleAt(int ms)
{
    SvgDocument document(QString::fromUtf8(movingTitle()));
    return renderAt(document, ms).convertToFormat(QImage::Format_ARGB32);
}

constexpr QRgb red = 0xffff0000;
constexpr QRgb nothing = 0;

// The other end of a terminal that a process writes to.
class Terminal
{
public:
    Terminal() : m_descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (grantpt(m_descriptor) != 0 || unlockpt(m_descriptor) != 0)
            return;
        m_name = QFile::decodeName(ptsname(m_descriptor));
        // Held open: what was written can be read after the process has ended.
        m_ownEnd = ::open(QFile::encodeName(m_name).constData(), O_RDWR | O_NOCTTY);
    }

    ~Terminal()
    {
        ::close(m_ownEnd);
        ::close(m_descriptor);
    }

    QString name() const { return m_name; }

    QByteArray written() const
    {
        QByteArray result;
        char buffer[4096];
        for (;;) {
            const ssize_t count = ::read(m_descriptor, buffer, sizeof buffer);
            if (count <= 0)
                return result;
            result.append(buffer, int(count));
        }
    }

private:
    Q_DISABLE_COPY(Terminal)
    int m_descriptor;
    int m_ownEnd = -1;
    QString m_name;
};

// A pipe with a name: its end is reached when every process that writes to it has ended.
class NamedPipe
{
public:
    explicit NamedPipe(const QString &path) : m_path(path)
    {
        const QByteArray name = QFile::encodeName(path);
        if (mkfifo(name.constData(), 0600) == 0)
            m_descriptor = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }

    ~NamedPipe() { ::close(m_descriptor); }

    QString path() const { return m_path; }

    bool waitForEnd() const
    {
        pollfd waiting = {m_descriptor, POLLIN, 0};
        while (poll(&waiting, 1, millisecondsToWait) > 0) {
            char buffer[4096];
            if (::read(m_descriptor, buffer, sizeof buffer) == 0)
                return true;
        }
        return false;
    }

private:
    Q_DISABLE_COPY(NamedPipe)
    QString m_path;
    int m_descriptor = -1;
};

} // namespace

class TestRender : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void writesEveryFrame();
    void countsFrames_data();
    void countsFrames();
    void takesFramesAtTruncatedTimes();
    void writesAStillTitleAsOneFrame();
    void writesARangeOfFrames_data();
    void writesARangeOfFrames();
    void hasNothingToDoPastTheEnd_data();
    void hasNothingToDoPastTheEnd();
    void writesGivenTimes();
    void fitsTheTitleIntoASize_data();
    void fitsTheTitleIntoASize();
    void cutsTheTitleAtItsBounds();
    void paintsTheBackground_data();
    void paintsTheBackground();
    void recolours();
    void erasesClippedShapesButNotTheBackground();
    void writesRawFramesLikeThePngFiles();
    void isTheSameInAnySplit();
    void sharesGivenTimesAmongJobs();
    void writesAContactSheet();
    void putsACheckerboardBehindTransparentPicturesOnly();
    void readsStandardInput_data();
    void readsStandardInput();
    void readsEncodings_data();
    void readsEncodings();
    void makesFolders();
    void replacesOlderFrames();
    void namesFilesInUtf8WhateverTheLocale();
    void showsHelpAndVersion_data();
    void showsHelpAndVersion();
    void refusesWithOneLine_data();
    void refusesWithOneLine();
    void reportsAFullDisk();
    void reportsAFullDevice();
    void reportsAReaderThatHasGone();
    void keepsDevices();
    void reportsAFailingWorker();
    void showsEachWarningOnce_data();
    void showsEachWarningOnce();
    void showsProgressOnATerminalOnly();
    void keepsRawPicturesOffTerminals();
    void leavesNothingBehindWhenEnded_data();
    void leavesNothingBehindWhenEnded();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &content) const;
    QStringList files(const QString &folder) const;
    QImage picture(const QString &name) const;
    QMap<QString, QByteArray> contents(const QString &folder) const;
    void prepare(QProcess &process, const QString &program, const QStringList &arguments) const;
    Result run(const QStringList &arguments, const QByteArray &input = QByteArray()) const;
    Result finish(QProcess &process, const QByteArray &input = QByteArray()) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRender::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    write(QStringLiteral("moving.svg"), movingTitle());
    write(QStringLiteral("clipped.svg"), clippedTitle());
    write(QStringLiteral("red.svg"), redTitle());
}

void TestRender::cleanup()
{
    m_folder.reset();
}

void TestRender::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QStringList TestRender::files(const QString &folder) const
{
    return QDir(path(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

// As straight, not premultiplied, colours.
QImage TestRender::picture(const QString &name) const
{
    return QImage(path(name)).convertToFormat(QImage::Format_ARGB32);
}

QMap<QString, QByteArray> TestRender::contents(const QString &folder) const
{
    QMap<QString, QByteArray> result;
    const QStringList names = files(folder);
    for (const QString &name : names) {
        QFile file(path(folder) + QLatin1Char('/') + name);
        if (file.open(QIODevice::ReadOnly))
            result.insert(name, file.readAll());
    }
    return result;
}

// Without a display, and without a word of which platform to use.
void TestRender::prepare(QProcess &process, const QString &program,
                         const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));

    // In a build with sanitizers their report of known leaks would mix with the errors.
    const QString sanitizer = QStringLiteral("LSAN_OPTIONS");
    environment.insert(sanitizer,
                       environment.value(sanitizer) + QStringLiteral(":print_suppressions=0"));

    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder->path());
    process.setProgram(program);
    process.setArguments(arguments);
}

Result TestRender::run(const QStringList &arguments, const QByteArray &input) const
{
    QProcess process;
    prepare(process, QStringLiteral(TITLESCENE_RENDER), arguments);
    return finish(process, input);
}

Result TestRender::finish(QProcess &process, const QByteArray &input) const
{
    process.start();
    process.write(input);
    process.closeWriteChannel();

    Result result;
    if (process.waitForFinished(millisecondsToWait) && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

void TestRender::writesEveryFrame()
{
    const Result result =
            run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames/")});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 0);

    const QStringList names = files(QStringLiteral("frames"));
    QCOMPARE(names.size(), 25);
    for (int frame = 0; frame < 25; ++frame) {
        QCOMPARE(names.at(frame), frameName(frame));
        const QImage image = picture(QStringLiteral("frames/") + names.at(frame));
        QCOMPARE(image.size(), QSize(64, 36));
        QCOMPARE(image.pixel(2 * frame, 15), red);
        QCOMPARE(image.pixel(2 * frame + 9, 15), red);
        QCOMPARE(image.pixel(2 * frame + 10, 15), nothing);
        COMPARE_PICTURES(image, movingTitleAt(frame * 40), 0);
    }
}

void TestRender::countsFrames_data()
{
    QTest::addColumn<QString>("rate");
    QTest::addColumn<int>("count");

    QTest::newRow("25") << QStringLiteral("25") << 25;
    QTest::newRow("10") << QStringLiteral("10") << 10;
    QTest::newRow("29.97") << QStringLiteral("29.97") << 30;
    QTest::newRow("30000/1001") << QStringLiteral("30000/1001") << 30;
    QTest::newRow("23.976") << QStringLiteral("23.976") << 24;
    QTest::newRow("one in two seconds") << QStringLiteral("1/2") << 1;
    QTest::newRow("0.5") << QStringLiteral("0.5") << 1;
    QTest::newRow("every millisecond") << QStringLiteral("1000") << 1000;
}

void TestRender::countsFrames()
{
    QFETCH(QString, rate);
    QFETCH(int, count);

    const Result result = run({QStringLiteral("moving.svg"), QStringLiteral("-o"),
                               QStringLiteral("frames"), QStringLiteral("--fps"), rate});
    QCOMPARE(result.exitCode, 0);
    const QStringList names = files(QStringLiteral("frames"));
    QCOMPARE(names.size(), count);
    QCOMPARE(names.constLast(), frameName(count - 1));
}

void TestRender::takesFramesAtTruncatedTimes()
{
    // 20 * 1001 / 30 is 667.33, 29 * 1001 / 30 is 967.63
    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--fps"), QStringLiteral("30000/1001")})
                     .exitCode,
             0);

    COMPARE_PICTURES(picture(QStringLiteral("frames/frame-000020.png")), movingTitleAt(667), 0);
    COMPARE_PICTURES(picture(QStringLiteral("frames/frame-000029.png")), movingTitleAt(967), 0);
    QVERIFY(movingTitleAt(967) != movingTitleAt(968));
}

void TestRender::writesAStillTitleAsOneFrame()
{
    QCOMPARE(run({QStringLiteral("red.svg"), QStringLiteral("-o"), QStringLiteral("frames")})
                     .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("frames")), QStringList{QStringLiteral("frame-000000.png")});
    const QImage image = picture(QStringLiteral("frames/frame-000000.png"));
    QCOMPARE(image.size(), QSize(64, 36));
    QVERIFY(isBlank(image));
    QCOMPARE(image.pixel(0, 0), red);
}

void TestRender::writesARangeOfFrames_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    QTest::newRow("range") << QStringLiteral("3-7") << 3 << 7;
    QTest::newRow("single") << QStringLiteral("12") << 12 << 12;
    QTest::newRow("to itself") << QStringLiteral("12-12") << 12 << 12;
    QTest::newRow("to the last") << QStringLiteral("20-24") << 20 << 24;
    QTest::newRow("past the last") << QStringLiteral("20-29") << 20 << 24;
}

void TestRender::writesARangeOfFrames()
{
    QFETCH(QString, range);
    QFETCH(int, first);
    QFETCH(int, last);

    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--frames"), range})
                     .exitCode,
             0);
    QStringList expected;
    for (int frame = first; frame <= last; ++frame)
        expected += frameName(frame);
    QCOMPARE(files(QStringLiteral("frames")), expected);

    const QImage image = picture(QStringLiteral("frames/") + expected.constFirst());
    QCOMPARE(image.pixel(2 * first, 15), red);
    QCOMPARE(image.pixel(2 * first + 10, 15), nothing);
}

void TestRender::hasNothingToDoPastTheEnd_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<bool>("isNoteShown");

    QTest::newRow("frames") << QStringLiteral("-o frames --frames 25-30") << true;
    QTest::newRow("a single frame") << QStringLiteral("-o frames --frames 25") << true;
    QTest::newRow("far away") << QStringLiteral("-o frames --frames 9999999998-9999999999") << true;
    QTest::newRow("workers") << QStringLiteral("-o frames --frames 25-30 --jobs 2") << true;
    QTest::newRow("raw") << QStringLiteral("--raw --frames 25-30") << true;
    QTest::newRow("contact sheet")
            << QStringLiteral("--contact-sheet sheet.png --frames 25-30") << true;
    QTest::newRow("strict") << QStringLiteral("-o frames --frames 25-30 --strict") << true;
    QTest::newRow("quiet") << QStringLiteral("-o frames --frames 25-30 --quiet") << false;
}

void TestRender::hasNothingToDoPastTheEnd()
{
    QFETCH(QString, arguments);
    QFETCH(bool, isNoteShown);

    const QStringList before = files(QString());
    const Result result =
            run(QStringList(QStringLiteral("moving.svg")) + arguments.split(QLatin1Char(' ')));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QByteArray());
    const QByteArray first = arguments.contains(QStringLiteral("9999999998")) ? "9999999998" : "25";
    QCOMPARE(result.errors,
             isNoteShown ? "titlescene-render: note: moving.svg: nothing to do, since frame "
                             + first + " is past the last frame, 24\n"
                         : QByteArray());
    QCOMPARE(files(QString()), before);
}

void TestRender::writesGivenTimes()
{
    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--at"), QStringLiteral("480,1500,-200,0")})
                     .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("frames")),
             QStringList({QStringLiteral("at--00000200ms.png"), QStringLiteral("at-00000000ms.png"),
                          QStringLiteral("at-00000480ms.png"),
                          QStringLiteral("at-00001500ms.png")}));

    COMPARE_PICTURES(picture(QStringLiteral("frames/at--00000200ms.png")), movingTitleAt(-200), 0);
    COMPARE_PICTURES(picture(QStringLiteral("frames/at-00000480ms.png")), movingTitleAt(480), 0);
    const QImage frozen = picture(QStringLiteral("frames/at-00001500ms.png"));
    QCOMPARE(frozen.pixel(49, 15), nothing);
    QCOMPARE(frozen.pixel(50, 15), red);
}

void TestRender::fitsTheTitleIntoASize_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("place");

    QTest::newRow("twice") << QStringLiteral("128x72") << QSize(128, 72) << QRect(0, 0, 128, 72);
    QTest::newRow("bars above and below")
            << QStringLiteral("128x128") << QSize(128, 128) << QRect(0, 28, 128, 72);
    QTest::newRow("bars left and right")
            << QStringLiteral("100x36") << QSize(100, 36) << QRect(18, 0, 64, 36);
    QTest::newRow("smaller") << QStringLiteral("32x20") << QSize(32, 20) << QRect(0, 1, 32, 18);
    QTest::newRow("between pixels")
            << QStringLiteral("100x100") << QSize(100, 100) << QRect(0, 22, 100, 56);
    QTest::newRow("flat") << QStringLiteral("1x16384") << QSize(1, 16384) << QRect(0, 8191, 1, 1);
}

void TestRender::fitsTheTitleIntoASize()
{
    QFETCH(QString, size);
    QFETCH(QSize, canvas);
    QFETCH(QRect, place);

    QCOMPARE(run({QStringLiteral("red.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--size"), size, QStringLiteral("--background"),
                  QStringLiteral("navy")})
                     .exitCode,
             0);

    QImage expected(canvas, QImage::Format_ARGB32);
    expected.fill(QColor(QStringLiteral("navy")));
    QPainter(&expected).fillRect(place, QColor(red));
    const QImage image = picture(QStringLiteral("frames/frame-000000.png"));
    if (place.size() == canvas)
        QVERIFY(image == expected);
    else
        COMPARE_PICTURES(image, expected, 0);
}

void TestRender::cutsTheTitleAtItsBounds()
{
    write(QStringLiteral("overflowing.svg"),
          stillTitle("<rect x=\"-99\" y=\"-99\" width=\"300\" height=\"300\" fill=\"#ff0000\"/>"));
    QCOMPARE(run({QStringLiteral("overflowing.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--size"), QStringLiteral("64x56")})
                     .exitCode,
             0);

    QImage expected(64, 56, QImage::Format_ARGB32);
    expected.fill(Qt::transparent);
    QPainter(&expected).fillRect(QRect(0, 10, 64, 36), QColor(red));
    COMPARE_PICTURES(picture(QStringLiteral("frames/frame-000000.png")), expected, 0);
}

void TestRender::paintsTheBackground_data()
{
    QTest::addColumn<QString>("background");
    QTest::addColumn<QRgb>("empty");
    QTest::addColumn<QRgb>("underHalfGreen");

    // The bar's opacity of 0.5 is drawn as 128 of 255.
    QTest::newRow("name") << QStringLiteral("blue") << qRgb(0, 0, 255) << qRgb(0, 128, 127);
    QTest::newRow("#rrggbb") << QStringLiteral("#ff0000") << qRgb(255, 0, 0) << qRgb(127, 128, 0);
    QTest::newRow("#rgb") << QStringLiteral("#f00") << qRgb(255, 0, 0) << qRgb(127, 128, 0);
    QTest::newRow("#aarrggbb") << QStringLiteral("#ff0000ff") << qRgb(0, 0, 255)
                               << qRgb(0, 128, 127);
    QTest::newRow("#argb") << QStringLiteral("#f00f") << qRgb(0, 0, 255) << qRgb(0, 128, 127);
    QTest::newRow("half") << QStringLiteral("#80ff0000") << qRgba(255, 0, 0, 128)
                          << qRgba(85, 170, 0, 192);
    QTest::newRow("transparent") << QStringLiteral("transparent") << nothing
                                 << qRgba(0, 255, 0, 128);
}

void TestRender::paintsTheBackground()
{
    QFETCH(QString, background);
    QFETCH(QRgb, empty);
    QFETCH(QRgb, underHalfGreen);

    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--frames"), QStringLiteral("0"), QStringLiteral("--background"),
                  background})
                     .exitCode,
             0);
    const QImage image = picture(QStringLiteral("frames/frame-000000.png"));
    QCOMPARE(image.pixel(63, 0), empty);
    QCOMPARE(image.pixel(0, 15), red);
    const QRgb mixed = image.pixel(30, 28);
    QVERIFY2(channelDifference(mixed, underHalfGreen) <= 1, qPrintable(QString::number(mixed, 16)));
}

void TestRender::recolours()
{
    write(QStringLiteral("lines.svg"),
          stillTitle("<rect x=\"2\" y=\"2\" width=\"20\" height=\"20\" fill=\"#ff0000\"/>"
                     "<path d=\"M40 0v36\" stroke=\"#00ff00\" stroke-width=\"8\" fill=\"none\"/>"
                     "<path d=\"M50 0h10v36z\" fill=\"none\"/>"));
    QCOMPARE(run({QStringLiteral("lines.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--color"), QStringLiteral("#123456")})
                     .exitCode,
             0);
    const QImage image = picture(QStringLiteral("frames/frame-000000.png"));
    QCOMPARE(image.pixel(10, 10), qRgb(0x12, 0x34, 0x56));
    QCOMPARE(image.pixel(40, 10), qRgb(0x12, 0x34, 0x56));
    QCOMPARE(image.pixel(57, 4), nothing);
}

void TestRender::erasesClippedShapesButNotTheBackground()
{
    write(QStringLiteral("hole.svg"),
          stillTitle("<clipPath id=\"c\"><rect x=\"20\" y=\"10\" width=\"20\" height=\"10\"/>"
                     "</clipPath><rect width=\"64\" height=\"36\" fill=\"#ff0000\"/>"));
    QCOMPARE(run({QStringLiteral("hole.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--background"), QStringLiteral("blue")})
                     .exitCode,
             0);

    QImage expected(64, 36, QImage::Format_ARGB32);
    expected.fill(QColor(red));
    QPainter(&expected).fillRect(QRect(20, 10, 20, 10), Qt::blue);
    COMPARE_PICTURES(picture(QStringLiteral("frames/frame-000000.png")), expected, 0);

    QCOMPARE(run({QStringLiteral("hole.svg"), QStringLiteral("-o"), QStringLiteral("frames")})
                     .exitCode,
             0);
    QCOMPARE(picture(QStringLiteral("frames/frame-000000.png")).pixel(30, 15), nothing);
}

void TestRender::writesRawFramesLikeThePngFiles()
{
    const QString title = QStringLiteral("clipped.svg");
    const QStringList size{QStringLiteral("--size"), QStringLiteral("50x50")};
    QCOMPARE(
            run(QStringList{title, QStringLiteral("-o"), QStringLiteral("frames")} + size).exitCode,
            0);
    const Result raw = run(QStringList{title, QStringLiteral("--raw")} + size);
    QCOMPARE(raw.errors, QByteArray());
    QCOMPARE(raw.exitCode, 0);

    QByteArray expected;
    for (int frame = 0; frame < 25; ++frame) {
        const QImage image = picture(QStringLiteral("frames/") + frameName(frame));
        QVERIFY(!isBlank(image));
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = qPremultiply(image.pixel(x, y));
                for (int channel : {qBlue(pixel), qGreen(pixel), qRed(pixel), qAlpha(pixel)})
                    expected += char(channel);
            }
        }
    }
    QCOMPARE(raw.output.size(), 25 * 50 * 50 * 4);
    QVERIFY(raw.output == expected);
}

void TestRender::isTheSameInAnySplit()
{
    const auto render = [this](const QString &folder, const QStringList &more) {
        QStringList arguments{QStringLiteral("clipped.svg"), QStringLiteral("-o"), folder};
        const Result result = run(arguments += more);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.exitCode, 0);
    };
    const QString frames = QStringLiteral("--frames");
    const QString jobs = QStringLiteral("--jobs");
    render(QStringLiteral("whole"), {jobs, QStringLiteral("1")});
    render(QStringLiteral("four jobs"), {jobs, QStringLiteral("4")});
    render(QStringLiteral("a job for each core"), {jobs, QStringLiteral("auto")});
    render(QStringLiteral("more jobs than frames"), {jobs, QStringLiteral("40")});
    render(QStringLiteral("parts"), {frames, QStringLiteral("13-24")});
    render(QStringLiteral("parts"), {frames, QStringLiteral("12")});
    render(QStringLiteral("parts"), {frames, QStringLiteral("0-11"), jobs, QStringLiteral("2")});

    const auto whole = contents(QStringLiteral("whole"));
    QCOMPARE(whole.size(), 25);
    const std::set<QByteArray> distinct(whole.begin(), whole.end());
    QVERIFY(distinct.size() > 20);
    QVERIFY(contents(QStringLiteral("four jobs")) == whole);
    QVERIFY(contents(QStringLiteral("a job for each core")) == whole);
    QVERIFY(contents(QStringLiteral("more jobs than frames")) == whole);
    QVERIFY(contents(QStringLiteral("parts")) == whole);
}

void TestRender::sharesGivenTimesAmongJobs()
{
    const QStringList arguments{QStringLiteral("clipped.svg"),
                                QStringLiteral("--at"),
                                QStringLiteral("-100,900,300,500,0"),
                                QStringLiteral("--size"),
                                QStringLiteral("80x80"),
                                QStringLiteral("--background"),
                                QStringLiteral("#80ffffff"),
                                QStringLiteral("--color"),
                                QStringLiteral("green")};
    QCOMPARE(run(arguments + QStringList{QStringLiteral("-o"), QStringLiteral("one")}).exitCode, 0);
    QCOMPARE(run(arguments
                 + QStringList{QStringLiteral("-o"), QStringLiteral("three"),
                               QStringLiteral("--jobs"), QStringLiteral("3")})
                     .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("one")).size(), 5);
    QVERIFY(contents(QStringLiteral("three")) == contents(QStringLiteral("one")));
}

void TestRender::writesAContactSheet()
{
    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("--contact-sheet"),
                  QStringLiteral("sheet.png"), QStringLiteral("--background"),
                  QStringLiteral("white")})
                     .exitCode,
             0);
    QCOMPARE(files(QString()),
             QStringList({QStringLiteral("clipped.svg"), QStringLiteral("moving.svg"),
                          QStringLiteral("red.svg"), QStringLiteral("sheet.png")}));

    // 24 of the 25 frames, six in a row, each 320x180 with 12 around it and 24 below for its time
    const QImage sheet = picture(QStringLiteral("sheet.png"));
    QCOMPARE(sheet.size(), QSize(12 + 6 * (320 + 12), 12 + 4 * (180 + 24 + 12)));
    const auto cell = [&sheet](int column, int row) {
        return sheet.copy(12 + column * 332, 12 + row * 216, 320, 204);
    };
    const int scale = 5;
    const QImage first = cell(0, 0);
    QCOMPARE(first.pixel(0 * scale + 2, 15 * scale), red);
    QCOMPARE(first.pixel(9 * scale + 2, 15 * scale), red);
    QCOMPARE(first.pixel(10 * scale + 2, 15 * scale), qRgb(255, 255, 255));
    const QImage last = cell(5, 3);
    QCOMPARE(last.pixel(47 * scale + 2, 15 * scale), qRgb(255, 255, 255));
    QCOMPARE(last.pixel(48 * scale + 2, 15 * scale), red);
    QCOMPARE(last.pixel(57 * scale + 2, 15 * scale), red);

    const QRect label(0, 180, 320, 24);
    QVERIFY(!isBlank(first.copy(label)));
    QVERIFY(first.copy(label) != last.copy(label));
}

void TestRender::putsACheckerboardBehindTransparentPicturesOnly()
{
    const auto corner = [this](const QString &background) {
        const Result result =
                run({QStringLiteral("moving.svg"), QStringLiteral("--at"), QStringLiteral("0"),
                     QStringLiteral("--contact-sheet"), QStringLiteral("sheet.png"),
                     QStringLiteral("--background"), background});
        return result.exitCode == 0 ? picture(QStringLiteral("sheet.png")).copy(12, 12, 32, 32)
                                    : QImage();
    };
    const QImage transparent = corner(QStringLiteral("transparent"));
    QCOMPARE(transparent.pixel(0, 0), transparent.pixel(8, 8));
    QCOMPARE(transparent.pixel(8, 0), transparent.pixel(0, 8));
    QVERIFY(transparent.pixel(0, 0) != transparent.pixel(8, 0));

    const QImage opaque = corner(QStringLiteral("white"));
    QVERIFY(isBlank(opaque));
    QCOMPARE(opaque.pixel(0, 0), qRgb(255, 255, 255));
}

void TestRender::readsStandardInput_data()
{
    QTest::addColumn<QString>("jobs");

    QTest::newRow("one process") << QStringLiteral("1");
    QTest::newRow("two workers") << QStringLiteral("2");
}

void TestRender::readsStandardInput()
{
    QFETCH(QString, jobs);

    QCOMPARE(run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("expected")})
                     .exitCode,
             0);
    QCOMPARE(run({QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("frames"),
                  QStringLiteral("--jobs"), jobs},
                 movingTitle())
                     .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("frames")).size(), 25);
    QVERIFY(contents(QStringLiteral("frames")) == contents(QStringLiteral("expected")));
}

void TestRender::readsEncodings_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QString text = QString::fromUtf8(redTitle());
    const auto declared = [&text](const QString &encoding) {
        return QStringLiteral("<?xml version=\"1.0\" encoding=\"%1\"?>").arg(encoding) + text;
    };
    const auto utf16 = [](const QString &string, bool isBigEndian) {
        QByteArray bytes = isBigEndian ? QByteArray("\xfe\xff", 2) : QByteArray("\xff\xfe", 2);
        for (const QChar unit : string) {
            bytes += isBigEndian ? char(unit.row()) : char(unit.cell());
            bytes += isBigEndian ? char(unit.cell()) : char(unit.row());
        }
        return bytes;
    };
    const QByteArray mark("\xef\xbb\xbf");
    QTest::newRow("UTF-8") << text.toUtf8();
    QTest::newRow("UTF-8 with a mark") << mark + text.toUtf8();
    QTest::newRow("UTF-8 with a mark, declared")
            << mark + declared(QStringLiteral("UTF-8")).toUtf8();
    QTest::newRow("UTF-16, little endian") << utf16(text, false);
    QTest::newRow("UTF-16, big endian") << utf16(text, true);
    QTest::newRow("UTF-16, declared") << utf16(declared(QStringLiteral("UTF-16")), false);
    QTest::newRow("ISO 8859-1, declared") << declared(QStringLiteral("ISO-8859-1"))
                                                     .toLatin1()
                                                     .replace("<rect", "<desc>\xe9</desc><rect");
}

void TestRender::readsEncodings()
{
    QFETCH(QByteArray, bytes);

    const Result result =
            run({QStringLiteral("-"), QStringLiteral("-o"), QStringLiteral("frames")}, bytes);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(picture(QStringLiteral("frames/frame-000000.png")).pixel(5, 5), red);
}

void TestRender::makesFolders()
{
    QCOMPARE(run({QStringLiteral("red.svg"), QStringLiteral("-o"), QStringLiteral("a/b/c")})
                     .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("a/b/c")), QStringList{QStringLiteral("frame-000000.png")});
}

void TestRender::replacesOlderFrames()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("frames")));
    write(QStringLiteral("frames/frame-000000.png"), "an older file");
    write(QStringLiteral("frames/other.txt"), "of the user");
    QCOMPARE(run({QStringLiteral("red.svg"), QStringLiteral("-o"), QStringLiteral("frames")})
                     .exitCode,
             0);
    QCOMPARE(picture(QStringLiteral("frames/frame-000000.png")).pixel(5, 5), red);
    QCOMPARE(contents(QStringLiteral("frames")).value(QStringLiteral("other.txt")),
             QByteArray("of the user"));
}

void TestRender::namesFilesInUtf8WhateverTheLocale()
{
    const QString name = QString::fromUtf8("\xd1\x82\xd0\xb8\xd1\x82\xd1\x80");
    write(name + QStringLiteral(".svg"), movingTitle());

    QProcess process;
    prepare(process, QStringLiteral(TITLESCENE_RENDER),
            {name + QStringLiteral(".svg"), QStringLiteral("-o"), name, QStringLiteral("--jobs"),
             QStringLiteral("2")});
    QProcessEnvironment environment = process.processEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    QCOMPARE(finish(process).exitCode, 0);
    QCOMPARE(files(name).size(), 25);
}

void TestRender::showsHelpAndVersion_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("fragment");

    QTest::newRow("--help") << QStringLiteral("--help") << QByteArray("--contact-sheet <FILE>");
    QTest::newRow("-h") << QStringLiteral("-h") << QByteArray("Usage: ");
    QTest::newRow("--version") << QStringLiteral("--version") << QByteArray("titlescene-render ");
}

void TestRender::showsHelpAndVersion()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, fragment);

    const Result result = run({option});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QByteArray());
    QVERIFY2(result.output.contains(fragment), result.output.constData());
    QVERIFY(!result.output.contains("--worker"));
}

void TestRender::refusesWithOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");

    const auto words = [](const char *line) {
        return line[0] ? QString::fromUtf8(line).split(QLatin1Char(' ')) : QStringList();
    };
    const auto fails = [&words](const char *line, const char *message) {
        QTest::newRow(line) << words(line) << 1 << QByteArray(message);
    };
    const auto wrong = [&words](const char *line, const char *message) {
        QTest::newRow(line[0] ? line : "nothing") << words(line) << 2 << QByteArray(message);
    };

    fails("missing.svg -o frames", "missing.svg: No such file");
    fails(". -o frames", ".: ");
    fails("broken.svg -o frames", "broken.svg: ");
    fails("broken.svg -o frames --jobs 2", "broken.svg: ");
    fails("broken.svg --raw", "broken.svg: ");
    fails("broken.svg --contact-sheet sheet.png", "broken.svg: ");
    fails("empty.svg -o frames", "empty.svg: ");
    fails("text.svg -o frames", "text.svg: ");
    fails("unbounded.svg -o frames", "unbounded.svg: no usable view box");
    fails("latin1.svg -o frames", "latin1.svg: not valid UTF-8");
    fails("truncated-utf16.svg -o frames", "truncated-utf16.svg: not valid UTF-16");
    fails("wide.svg -o frames", "wide.svg: a picture of 16385x10 pixels is too large");
    fails("huge.svg -o frames", "huge.svg: a picture of 16000x16000 pixels is too large");
    fails("huge.svg --contact-sheet sheet.png", "huge.svg: a picture of");
    fails("moving.svg -o red.svg", "red.svg: is a file, not a folder");
    fails("moving.svg -o red.svg/frames", "red.svg/frames: ");
    fails("moving.svg -o red.svg --jobs 2", "red.svg: is a file, not a folder");
    fails("moving.svg -o /proc/self/task", "/proc/self/task/frame-000000.png: ");
    fails("moving.svg --contact-sheet missing/sheet.png", "missing/sheet.png: ");
    fails("moving.svg --contact-sheet .", ".: is not a regular file");

    wrong("", "no title given");
    wrong("-o frames", "no title given");
    wrong("moving.svg red.svg -o frames", "red.svg");
    wrong("moving.svg", "nothing to write");
    wrong("moving.svg --contact-sheet=", "--contact-sheet \"\"");
    wrong("moving.svg --output= --raw", "--output \"\"");
    wrong("moving.svg -o frames --fast", "'fast'");
    wrong("moving.svg -o", "-o");
    wrong("moving.svg -o frames --fps 0", "--fps 0: ");
    wrong("moving.svg -o frames --fps -25", "--fps -25: ");
    wrong("moving.svg -o frames --fps 1/0", "--fps 1/0: ");
    wrong("moving.svg -o frames --fps fast", "--fps fast: ");
    wrong("moving.svg -o frames --fps 1000.1", "--fps 1000.1: ");
    wrong("moving.svg -o frames --fps 99999999999999999999", "--fps 9");
    wrong("moving.svg -o frames --frames 5-3", "--frames 5-3: ");
    wrong("moving.svg -o frames --frames -3", "--frames -3: ");
    wrong("moving.svg -o frames --frames x", "--frames x: ");
    wrong("moving.svg -o frames --frames=", "--frames : ");
    wrong("moving.svg -o frames --at 1,,2", "--at 1,,2: ");
    wrong("moving.svg -o frames --at 1.5", "--at 1.5: ");
    wrong("moving.svg -o frames --at 3000000000", "--at 3000000000: ");
    wrong("moving.svg -o frames --at 1 --fps 25", "--at cannot be combined with --fps");
    wrong("moving.svg -o frames --at 1 --frames 1", "--at cannot be combined with --frames");
    wrong("moving.svg -o frames --size 100", "--size 100: ");
    wrong("moving.svg -o frames --size 0x100", "--size: ");
    wrong("moving.svg -o frames --size 16385x1", "--size: ");
    wrong("moving.svg -o frames --size 16000x16000", "--size: ");
    wrong("moving.svg -o frames --background bleu", "--background bleu: ");
    wrong("moving.svg -o frames --color bleu", "--color bleu: ");
    wrong("moving.svg -o frames --color #80ff0000", "--color #80ff0000: ");
    wrong("moving.svg -o frames --jobs -1", "--jobs -1: ");
    wrong("moving.svg -o frames --jobs many", "--jobs many: ");
    wrong("moving.svg --raw -o frames", "--raw cannot be combined with --output");
    wrong("moving.svg --raw --jobs 2", "--raw writes the frames in order from one process");
}

void TestRender::refusesWithOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);

    write(QStringLiteral("broken.svg"), stillTitle("<rect>"));
    write(QStringLiteral("empty.svg"), QByteArray());
    write(QStringLiteral("text.svg"), "no markup\nat all\n");
    write(QStringLiteral("unbounded.svg"), "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    write(QStringLiteral("latin1.svg"), stillTitle("<text>\xe9</text>"));
    write(QStringLiteral("truncated-utf16.svg"), QByteArray("\xff\xfe<\0s", 5));
    write(QStringLiteral("wide.svg"),
          "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16385 10\"/>");
    write(QStringLiteral("huge.svg"),
          "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16000 16000\"/>");
    const QStringList before = files(QString());

    const Result result = run(arguments);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.errors.startsWith("titlescene-render: "), result.errors.constData());
    QVERIFY2(result.errors.contains(message), result.errors.constData());
    QCOMPARE(result.errorLines().size(), 1);
    QVERIFY(result.errors.endsWith('\n'));
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(files(QString()), before);
}

void TestRender::reportsAFullDisk()
{
    // A limit of the shell's stands for the full disk: nothing can be written into any file.
    for (const QString &jobs : {QStringLiteral("1"), QStringLiteral("2")}) {
        QProcess process;
        prepare(process, QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("ulimit -f 0 && exec \"$0\" \"$@\""),
                 QStringLiteral(TITLESCENE_RENDER), QStringLiteral("moving.svg"),
                 QStringLiteral("-o"), QStringLiteral("frames"), QStringLiteral("--jobs"), jobs});
        const Result result = finish(process);
        QCOMPARE(result.exitCode, 1);
        QCOMPARE(result.errorLines().size(), 1);
        QVERIFY2(result.errors.startsWith("titlescene-render: frames/frame-0000"),
                 result.errors.constData());
        QCOMPARE(files(QStringLiteral("frames")), QStringList());
    }
}

void TestRender::reportsAFullDevice()
{
    QProcess process;
    prepare(process, QStringLiteral(TITLESCENE_RENDER),
            {QStringLiteral("moving.svg"), QStringLiteral("--raw")});
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    const Result result = finish(process);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors,
             QByteArray("titlescene-render: standard output: No space left on device\n"));
}

void TestRender::reportsAReaderThatHasGone()
{
    write(QStringLiteral("endless.svg"), endlessTitle());
    QProcess process;
    prepare(process, QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"),
             QStringLiteral("{ \"$0\" \"$@\"; echo $? >exit-code; } | head -c 1000 >/dev/null"),
             QStringLiteral(TITLESCENE_RENDER), QStringLiteral("endless.svg"),
             QStringLiteral("--raw")});
    const Result result = finish(process);
    QCOMPARE(result.errors, QByteArray("titlescene-render: standard output: Broken pipe\n"));
    QCOMPARE(readText(path(QStringLiteral("exit-code"))), QStringLiteral("1\n"));
}

void TestRender::keepsDevices()
{
    // Root could replace a device by a file; a pipe is as good to see that it is not done.
    const NamedPipe pipe(path(QStringLiteral("pipe")));
    const Result result = run({QStringLiteral("moving.svg"), QStringLiteral("--contact-sheet"),
                               QStringLiteral("pipe")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors, QByteArray("titlescene-render: pipe: is not a regular file\n"));
    QVERIFY(!QFileInfo(pipe.path()).isFile());
}

void TestRender::reportsAFailingWorker()
{
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("frames/frame-000020.png")));
    const Result result =
            run({QStringLiteral("moving.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
                 QStringLiteral("--jobs"), QStringLiteral("2")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors,
             QByteArray("titlescene-render: frames/frame-000020.png: is not a regular file\n"));
    QVERIFY(!files(QStringLiteral("frames")).contains(QStringLiteral("frame-000021.png")));
}

void TestRender::showsEachWarningOnce_data()
{
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<int>("count");

    QTest::newRow("one process") << QStringList() << 1;
    QTest::newRow("two workers") << QStringList{QStringLiteral("--jobs"), QStringLiteral("2")} << 1;
    QTest::newRow("quiet") << QStringList{QStringLiteral("--quiet")} << 0;
    QTest::newRow("quiet workers")
            << QStringList{QStringLiteral("--quiet"), QStringLiteral("--jobs"), QStringLiteral("2")}
            << 0;
}

void TestRender::showsEachWarningOnce()
{
    QFETCH(QStringList, more);
    QFETCH(int, count);

    write(QStringLiteral("unresolved.svg"),
          movingTitle().replace("fill=\"#00ff00\"", "fill=\"url(#missing)\""));
    const Result result = run(QStringList{QStringLiteral("unresolved.svg"), QStringLiteral("-o"),
                                          QStringLiteral("frames")}
                              + more);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(files(QStringLiteral("frames")).size(), 25);
    QCOMPARE(result.errorLines().size(), count);
    if (count > 0) {
        QVERIFY2(result.errors.startsWith("titlescene-render: warning: "),
                 result.errors.constData());
        QVERIFY2(result.errors.contains("#missing"), result.errors.constData());
    }
}

void TestRender::showsProgressOnATerminalOnly()
{
    const auto shownOnTerminal = [this](const QStringList &more) {
        const Terminal terminal;
        QProcess process;
        prepare(process, QStringLiteral(TITLESCENE_RENDER),
                QStringList{QStringLiteral("moving.svg"), QStringLiteral("-o"),
                            QStringLiteral("frames")}
                        + more);
        process.setStandardErrorFile(terminal.name());
        return finish(process).exitCode == 0 ? terminal.written() : QByteArray("failed");
    };
    const QByteArray bar = shownOnTerminal({});
    QVERIFY2(bar.contains("[##############################] 25/25"), bar.constData());
    QVERIFY(bar.endsWith('\n'));
    QVERIFY(shownOnTerminal({QStringLiteral("--jobs"), QStringLiteral("2")}).contains(" 25/25"));
    QCOMPARE(shownOnTerminal({QStringLiteral("--quiet")}), QByteArray());
}

void TestRender::keepsRawPicturesOffTerminals()
{
    const Terminal terminal;
    QProcess process;
    prepare(process, QStringLiteral(TITLESCENE_RENDER),
            {QStringLiteral("moving.svg"), QStringLiteral("--raw")});
    process.setStandardOutputFile(terminal.name());
    const Result result = finish(process);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errors,
             QByteArray("titlescene-render: --raw does not write to a terminal:"
                        " redirect standard output\n"));
    QCOMPARE(terminal.written(), QByteArray());
}

void TestRender::leavesNothingBehindWhenEnded_data()
{
    QTest::addColumn<QString>("jobs");
    QTest::addColumn<int>("signalNumber");

    QTest::newRow("SIGTERM") << QStringLiteral("1") << SIGTERM;
    QTest::newRow("SIGINT") << QStringLiteral("1") << SIGINT;
    QTest::newRow("SIGTERM, workers") << QStringLiteral("3") << SIGTERM;
    QTest::newRow("SIGINT, workers") << QStringLiteral("3") << SIGINT;
    QTest::newRow("SIGKILL, workers") << QStringLiteral("3") << SIGKILL;
}

void TestRender::leavesNothingBehindWhenEnded()
{
    QFETCH(QString, jobs);
    QFETCH(int, signalNumber);

    // The workers write to it as well, so that its end is theirs.
    const NamedPipe pipe(path(QStringLiteral("errors")));
    write(QStringLiteral("endless.svg"), endlessTitle());
    QProcess process;
    prepare(process, QStringLiteral(TITLESCENE_RENDER),
            {QStringLiteral("endless.svg"), QStringLiteral("-o"), QStringLiteral("frames"),
             QStringLiteral("--jobs"), jobs});
    process.setStandardErrorFile(pipe.path(), QIODevice::Append);
    process.start();
    QTRY_VERIFY_WITH_TIMEOUT(files(QStringLiteral("frames")).size() > 20, millisecondsToWait);

    QCOMPARE(::kill(pid_t(process.processId()), signalNumber), 0);
    QVERIFY(process.waitForFinished(millisecondsToWait));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit); // by the signal, as shells expect
    QCOMPARE(process.exitCode(), signalNumber);
    QVERIFY(pipe.waitForEnd());

    const QStringList names = files(QStringLiteral("frames"));
    for (const QString &name : names) {
        QVERIFY2(name.endsWith(QStringLiteral(".png")), qPrintable(name));
        QCOMPARE(picture(QStringLiteral("frames/") + name).size(), QSize(64, 36));
    }
}

QTEST_MAIN(TestRender)
#include "tst_render.moc"
