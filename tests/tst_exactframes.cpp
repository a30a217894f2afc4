// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

#include <poll.h>
#include <unistd.h>

// A frame is a matter of the title and the time alone: not of the frames before it, not of the
// clock on the wall, not of how long drawing takes, not of the process.
//
// This executable is also what it needs as other processes; see main().

namespace {

constexpr const char *busyRole = "--keep-a-core-busy";
constexpr const char *drawingRole = "--draw-frames";

/// Drawn small, since it is not for looking at.
constexpr int width = 320;
constexpr int height = 180;

std::unique_ptr<SvgDocument> smallDocument(const QString &text)
{
    auto document = std::make_unique<SvgDocument>(text);
    document->setBounds(QRectF(0, 0, width, height));
    return document;
}

QString svg(const QString &content)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\""
                          " viewBox=\"0 0 320 180\">%1</svg>")
            .arg(content);
}

/// Every millisecond moves each of the shapes by a part of a pixel.
QString manyTransforms(int count)
{
    QString content;
    for (int i = 0; i < count; ++i) {
        const QString motion = i % 2 == 0
                ? QStringLiteral("type=\"translate\" from=\"0 0\" to=\"240 90\"")
                : QStringLiteral("type=\"rotate\" from=\"0 160 90\""
                                 " to=\"360 160 90\"");
        content += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"5\" height=\"3\" fill=\"#%3\">"
                                  "<animateTransform attributeName=\"transform\" %4 dur=\"%5ms\""
                                  " repeatCount=\"indefinite\"/></rect>")
                           .arg(i % 75)
                           .arg(i / 25)
                           .arg(i * 8191 % 0xffffff, 6, 16, QLatin1Char('0'))
                           .arg(motion)
                           .arg(800 + i % 97);
    }
    return svg(content);
}

/// Colours that the renderer plays beside attributes that the document does.
QString manyColorsAndAttributes(int count)
{
    QString content;
    for (int i = 0; i < count; ++i) {
        content += QStringLiteral("<rect x=\"%1\" y=\"%2\" width=\"9\" height=\"5\" fill=\"red\">"
                                  "<animateColor attributeName=\"fill\" from=\"#ff0000\""
                                  " to=\"#0040ff\" dur=\"%3ms\" repeatCount=\"indefinite\"/>"
                                  "<animate attributeName=\"x\" from=\"%1\" to=\"%4\" dur=\"1s\"/>"
                                  "</rect>")
                           .arg(i % 40 * 8)
                           .arg(i / 40 * 7)
                           .arg(300 + i % 61)
                           .arg(i % 40 * 8 + 30);
    }
    return svg(content);
}

QString moving(const QString &timing)
{
    return QStringLiteral("<animateTransform attributeName=\"transform\" type=\"translate\""
                          " from=\"0 0\" to=\"200 60\" %1/>")
            .arg(timing);
}

/// One of everything that holds animations.
QString everyPlace()
{
    const QString motion = moving(QStringLiteral("dur=\"700ms\" repeatCount=\"indefinite\""));
    const QString color =
            QStringLiteral("<animateColor attributeName=\"fill\" from=\"#000000\" to=\"#ffffff\""
                           " dur=\"300ms\" repeatCount=\"indefinite\"/>");
    return svg(QStringLiteral(
                       "<defs><g id=\"d\">%1<rect width=\"20\" height=\"9\">%2</rect></g></defs>"
                       "<use xlink:href=\"#d\">%1</use><use y=\"30\" xlink:href=\"#d\"/>"
                       "<switch>%1<circle cx=\"20\" cy=\"80\" r=\"8\">%2</circle></switch>"
                       "<g>%1<g>%1<ellipse cx=\"9\" cy=\"40\" rx=\"9\" ry=\"3\"/></g></g>"
                       "<text x=\"9\" y=\"110\" font-size=\"20\">%1a<tspan>%2b</tspan>c</text>"
                       "<polygon points=\"9,120 30,130 4,140\">%1%2"
                       "<animate attributeName=\"opacity\" from=\"1\" to=\"0.2\" dur=\"1s\"/>"
                       "</polygon>")
                       .arg(motion, color));
}

QString nestedSvg(const QString &rectAttributes, const QString &animation)
{
    return svg(QStringLiteral("<g><svg viewBox=\"0 0 320 180\"><rect y=\"9\" width=\"60\""
                              " height=\"30\" fill=\"#d02030\" %1>%2</rect></svg></g>")
                       .arg(rectAttributes, animation));
}

/// Times from before the title's begin to after its end.
QVector<int> sampleTimes(const SvgDocument &document)
{
    constexpr int count = 16;
    constexpr int margin = 90;
    const int length = document.animationDurationTotal() + 2 * margin;
    QVector<int> times;
    for (int i = 0; i < count; ++i)
        times.append(i * length / (count - 1) - margin);
    return times;
}

/// The frames at the times, drawn in the order that the indices have.
QVector<QImage> drawn(SvgDocument &document, const QVector<int> &times, const QVector<int> &order)
{
    QVector<QImage> frames(times.size());
    for (const int number : order)
        frames[number] = renderAt(document, times.at(number));
    return frames;
}

QVector<QImage> drawnByFreshDocuments(const QString &text, const QVector<int> &times,
                                      const QVector<int> &order)
{
    QVector<QImage> frames(times.size());
    for (const int number : order)
        frames[number] = renderAt(*smallDocument(text), times.at(number));
    return frames;
}

/// Says which frame is not the same to the last bit, or nothing.
QString frameDifference(const QVector<QImage> &actual, const QVector<QImage> &expected,
                        const QVector<int> &times)
{
    for (int i = 0; i < times.size(); ++i) {
        if (actual.at(i) != expected.at(i))
            return QStringLiteral("at %1 ms: ").arg(times.at(i))
                    + pictureDifference(actual.at(i), expected.at(i), 0);
    }
    return QString();
}

int countDifferent(const QVector<QImage> &frames)
{
    QVector<QImage> different;
    for (const QImage &frame : frames) {
        if (!different.contains(frame))
            different.append(frame);
    }
    return different.size();
}

/// A time at which something shows and soon changes; -1 when there is none.
int momentOfMotion(SvgDocument &document)
{
    constexpr int step = 50;
    for (int ms = 0; ms < document.animationDurationTotal(); ms += step) {
        const QImage frame = renderAt(document, ms);
        if (!isBlank(frame) && renderAt(document, ms + step) != frame)
            return ms;
    }
    return -1;
}

QByteArray fingerprint(const QImage &picture)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (int y = 0; y < picture.height(); ++y)
        hash.addData(reinterpret_cast<const char *>(picture.constScanLine(y)), picture.width() * 4);
    return hash.result().toHex();
}

/// Keeps all cores busy as long as it lives.
class MachineLoad
{
public:
    MachineLoad()
    {
        for (int i = 0; i < std::max(1, QThread::idealThreadCount()); ++i) {
            m_processes.push_back(std::make_unique<QProcess>());
            m_processes.back()->start(QCoreApplication::applicationFilePath(),
                                      {QLatin1String(busyRole)});
        }
        for (const auto &process : m_processes)
            m_started &= process->waitForReadyRead();
    }

    ~MachineLoad()
    {
        for (const auto &process : m_processes)
            process->closeWriteChannel();
        for (const auto &process : m_processes) {
            if (!process->waitForFinished())
                process->kill();
        }
    }

    /// Whether every process has begun its work and none has ended it.
    bool isOn() const
    {
        return m_started
                && std::all_of(m_processes.begin(), m_processes.end(), [](const auto &process) {
                       return process->state() == QProcess::Running && !process->waitForFinished(0);
                   });
    }

private:
    Q_DISABLE_COPY(MachineLoad)

    std::vector<std::unique_ptr<QProcess>> m_processes;
    bool m_started = true;
};

/// The fingerprints of the frames as another process draws them, with a clock that shows another
/// hour and with hash tables (the attributes of a saved text are in their order) of another seed.
QList<QByteArray> fingerprintsOfAnotherProcess(const QString &text, const QVector<int> &times)
{
    QStringList arguments{QLatin1String(drawingRole)};
    for (const int ms : times)
        arguments.append(QString::number(ms));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_HASH_SEED"), QStringLiteral("0"));
    environment.insert(QStringLiteral("TZ"), QStringLiteral("Pacific/Auckland"));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.write(text.toUtf8());
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput().trimmed().split('\n');
}

/// Works until standard input is closed, be it because the starting process has ended.
int keepCoreBusy()
{
    std::puts("busy");
    std::fflush(stdout);
    pollfd input{STDIN_FILENO, POLLIN, 0};
    volatile unsigned work = 0;
    while (poll(&input, 1, 0) == 0) {
        for (int i = 0; i < 1000000; ++i)
            work = work * 1664525u + 1013904223u;
    }
    return 0;
}

/// Reads a title from standard input and writes the fingerprint of its frame at each time.
int drawFrames(const QStringList &times)
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 1;
    const auto document = smallDocument(QString::fromUtf8(input.readAll()));
    for (const QString &ms : times)
        std::puts(fingerprint(renderAt(*document, ms.toInt())).constData());
    return 0;
}

} // namespace

class ExactFramesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void hasTemplatesToDraw();
    void drawsEveryFrameTheSame_data();
    void drawsEveryFrameTheSame();
    void drawsTheSameAtAnyMoment_data();
    void drawsTheSameAtAnyMoment();
    void drawsTheSameInAnotherProcess_data();
    void drawsTheSameInAnotherProcess();
    void holdsTheAnimationsOfANestedSvg_data();
    void holdsTheAnimationsOfANestedSvg();

private:
    static QStringList templateNames();
    static void addTitles();
};

QStringList ExactFramesTest::templateNames()
{
    return QDir(QStringLiteral(TITLESCENE_TEMPLATES))
            .entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
}

/// Rows of all templates and of titles that have much for the renderer to play.
void ExactFramesTest::addTitles()
{
    QTest::addColumn<QString>("text");
    for (const QString &name : templateNames())
        QTest::newRow(qPrintable(name)) << readTemplate(name);
    QTest::newRow("2,000 moving shapes") << manyTransforms(2000);
    QTest::newRow("1,000 colours and 1,000 attributes") << manyColorsAndAttributes(1000);
    QTest::newRow("animations in every place") << everyPlace();
    QTest::newRow("nested svg") << nestedSvg(QString(), moving(QStringLiteral("dur=\"800ms\"")));
}

void ExactFramesTest::hasTemplatesToDraw()
{
    QVERIFY(!templateNames().isEmpty());
}

void ExactFramesTest::drawsEveryFrameTheSame_data()
{
    addTitles();
}

void ExactFramesTest::drawsEveryFrameTheSame()
{
    QFETCH(QString, text);
    const auto document = smallDocument(text);
    QVERIFY2(document->isLoaded(), qPrintable(document->errorString()));
    const QVector<int> times = sampleTimes(*document);
    QVector<int> forwards(times.size());
    std::iota(forwards.begin(), forwards.end(), 0);
    const QVector<QImage> expected = drawn(*document, times, forwards);
    QVERIFY2(countDifferent(expected) > times.size() / 4, "The title hardly moves");

    QVector<int> backwards = forwards;
    std::reverse(backwards.begin(), backwards.end());
    QVector<int> shuffled = forwards;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(20260101));
    MachineLoad load;
    for (const QVector<int> &order : {backwards, shuffled, forwards}) {
        const QString difference = frameDifference(drawn(*document, times, order), expected, times);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
    for (const QVector<int> &order : {backwards, shuffled}) {
        const QString difference =
                frameDifference(drawnByFreshDocuments(text, times, order), expected, times);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
    QVERIFY(load.isOn());
}

void ExactFramesTest::drawsTheSameAtAnyMoment_data()
{
    addTitles();
}

/// One frame again and again, for longer than the clock on the wall needs to show another time.
void ExactFramesTest::drawsTheSameAtAnyMoment()
{
    QFETCH(QString, text);
    const auto document = smallDocument(text);
    const int ms = momentOfMotion(*document);
    QVERIFY2(ms >= 0, "The title never moves");
    const QImage expected = renderAt(*document, ms);
    QElapsedTimer clock;
    clock.start();
    int frames = 0;
    do {
        COMPARE_PICTURES(renderAt(*document, ms), expected, 0);
        ++frames;
    } while (!clock.hasExpired(300) || frames < 3);
}

void ExactFramesTest::drawsTheSameInAnotherProcess_data()
{
    addTitles();
}

void ExactFramesTest::drawsTheSameInAnotherProcess()
{
    QFETCH(QString, text);
    const auto document = smallDocument(text);
    const int length = document->animationDurationTotal();
    const QVector<int> times{length / 2, 0, length / 5, length * 4 / 5};
    QList<QByteArray> expected;
    for (const int ms : times)
        expected.append(fingerprint(renderAt(*document, ms)));
    QCOMPARE(fingerprintsOfAnotherProcess(text, times), expected);
}

void ExactFramesTest::holdsTheAnimationsOfANestedSvg_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");
    QTest::newRow("before the begin") << 99 << QString();
    QTest::newRow("at the begin") << 100 << QStringLiteral("transform=\"translate(0 0)\"");
    QTest::newRow("first quarter") << 350 << QStringLiteral("transform=\"translate(50 15)\"");
    QTest::newRow("at the end") << 1100 << QStringLiteral("transform=\"translate(200 60)\"");
    QTest::newRow("after the end") << 1101 << QString();
}

/// The inner element has a clock of its own.
void ExactFramesTest::holdsTheAnimationsOfANestedSvg()
{
    QFETCH(int, ms);
    QFETCH(QString, transform);
    const auto document = smallDocument(
            nestedSvg(QString(), moving(QStringLiteral("begin=\"100ms\" dur=\"1s\""))));
    QCOMPARE(document->animationDurationTotal(), 1100);
    const auto twin = smallDocument(nestedSvg(transform, QString()));
    COMPARE_PICTURES(renderAt(*document, ms), renderAt(*twin, 0), 0);
}

int main(int argc, char **argv)
{
    const char *role = argc > 1 ? argv[1] : "";
    if (std::strcmp(role, busyRole) == 0)
        return keepCoreBusy();
    QGuiApplication application(argc, argv);
    if (std::strcmp(role, drawingRole) == 0)
        return drawFrames(QGuiApplication::arguments().mid(2));
    ExactFramesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_exactframes.moc"
