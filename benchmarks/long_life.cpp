// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Titles.h"

#include <Scene/Decorator/ResizeDecorator.h>
#include <Scene/Decorator/RotateDecorator.h>
#include <Scene/SceneHelper.h>
#include <Scene/SvgDocument.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>

// Whether an editor that stays open for days needs more and more memory:
//
//     long_life [--frames <n>] [--documents <n>] [--frames-around-items <n>] [--growth <KiB>]
//
// Each phase repeats one thing, a tenth of the times to warm up caches first, and prints the
// resident memory of the process as it goes. The program fails when a phase ends with more than
// the allowed growth above what its warm-up left.

namespace {

constexpr int steps = 10;
const QSize pictureSize(320, 180);

/// The resident memory of this process, KiB, after freed memory was given back; -1 when unknown.
qint64 residentMemory()
{
    malloc_trim(0);
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray name("VmRSS:");
    const QByteArray text = status.readAll();
    const int start = text.indexOf(name);
    if (start < 0)
        return -1;
    const QByteArray value = text.mid(start + name.size()).trimmed();
    return value.left(value.indexOf(' ')).toLongLong();
}

void repeat(int count, const std::function<void()> &work)
{
    for (int i = 0; i < count; ++i)
        work();
}

/// Repeats the work, prints what it takes, and says whether memory stays within the growth (KiB).
bool staysWithin(qint64 growth, const char *phase, int count, const std::function<void()> &work)
{
    repeat(std::max(count / steps, 1), work);
    const qint64 start = residentMemory();
    std::printf("%-20s %8s %8lld KiB\n", phase, "warm", start);
    qint64 end = start;
    for (int step = 1; step <= steps; ++step) {
        const int done = int(qint64(count) * (step - 1) / steps);
        const int due = int(qint64(count) * step / steps);
        repeat(due - done, work);
        end = residentMemory();
        std::printf("%-20s %8d %8lld KiB\n", phase, due, end);
        std::fflush(stdout);
    }
    const bool stays = start >= 0 && end - start <= growth;
    std::printf("%-20s %s: %+lld KiB\n", phase, stays ? "stays" : "GROWS", end - start);
    return stays;
}

/// A document's frames at times in no order.
class Frames
{
public:
    explicit Frames(const QString &text)
        : m_document(text), m_time(0, m_document.animationDurationTotal())
    {
        m_document.setBounds(QRectF(QPointF(), pictureSize));
    }

    void paintOne()
    {
        m_picture.fill(Qt::transparent);
        QPainter painter(&m_picture);
        m_document.paint(&painter, m_time(m_random));
    }

private:
    SvgDocument m_document;
    std::mt19937 m_random;
    std::uniform_int_distribution<int> m_time;
    QImage m_picture{pictureSize, QImage::Format_ARGB32_Premultiplied};
};

/// One document after the other, each used for all that an editor uses it for.
class Documents
{
public:
    explicit Documents(std::vector<Title> titles) : m_titles(std::move(titles)) {}

    void useOne()
    {
        SvgDocument document(m_titles[m_next++ % m_titles.size()].text);
        document.prepareAdjustedAttibutes({QStringLiteral("fill")});
        document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#336699"));
        const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
        QPainter painter(&m_picture);
        for (const int ms : {500, 0}) {
            document.setBounds(QRectF(QPointF(), pictureSize));
            document.paint(&painter, ms);
        }
        if (clipping)
            clipping->paint(&painter, 500);
    }

private:
    std::vector<Title> m_titles;
    std::size_t m_next = 0;
    QImage m_picture{pictureSize, QImage::Format_ARGB32_Premultiplied};
};

/// A scene in a view, to which titles in frames come and from which they go.
class Stage
{
public:
    explicit Stage(const QString &svgText)
        : m_svgText(svgText), m_helper(new QGraphicsScene), m_view(m_helper.scene())
    {
        m_view.resize(pictureSize);
        m_view.show();
        QApplication::setActiveWindow(&m_view);
    }

    void useOne()
    {
        auto *text = new TitleItem(QSizeF(200, 50), nullptr);
        auto *resized = new ResizeDecorator(text);
        auto *turned = new RotateDecorator(new TitleSvgItem(m_svgText));
        for (AbstractDecorator *frame : {static_cast<AbstractDecorator *>(resized),
                                         static_cast<AbstractDecorator *>(turned)}) {
            m_helper.addItem(frame);
            frame->setHighlight(true);
        }
        show();
        edit(resized, text);
        resized->setAvailableHandles({Qt::LeftSection, Qt::RightSection});
        resized->setSize(QSizeF(120, 40));
        turned->setSize(QSizeF(160, 90));
        show();
        m_helper.removeItem(turned);
        delete turned;
        m_helper.deleteItemLater(resized);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        show();
    }

private:
    void show()
    {
        QCoreApplication::processEvents();
        m_view.viewport()->render(&m_picture);
    }

    void edit(AbstractDecorator *frame, TitleItem *text)
    {
        frame->setEditable(true, QPointF(5, 5));
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
        m_helper.scene()->sendEvent(text, &press);
        frame->setEditable(false, QPointF());
    }

    QString m_svgText;
    SceneHelper m_helper;
    QGraphicsView m_view;
    QImage m_picture{pictureSize, QImage::Format_ARGB32_Premultiplied};
};

/// The value of an option; ends the program when it is no number.
int numberOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    bool isNumber = false;
    const int number = parser.value(option).toInt(&isNumber);
    if (!isNumber || number < 0) {
        std::fprintf(stderr, "long_life: not a number: %s\n", qPrintable(parser.value(option)));
        std::exit(2);
    }
    return number;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);

    const auto option = [](const char *name, const char *what, const char *standard) {
        return QCommandLineOption(QLatin1String(name), QLatin1String(what), QStringLiteral("n"),
                                  QLatin1String(standard));
    };
    const QCommandLineOption frames = option("frames", "random frames of one title", "100000");
    const QCommandLineOption documents = option("documents", "documents made and deleted", "10000");
    const QCommandLineOption decorators =
            option("frames-around-items", "titles framed, edited and deleted", "10000");
    const QCommandLineOption growth = option("growth", "KiB that a phase may add", "4096");
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({frames, documents, decorators, growth});
    parser.process(application);
    const qint64 allowed = numberOf(parser, growth);

    Frames player(templateText(QStringLiteral("opener.svg")));
    bool stays = staysWithin(allowed, "frames", numberOf(parser, frames),
                             [&player] { player.paintOne(); });
    Documents library(templates());
    stays &= staysWithin(allowed, "documents", numberOf(parser, documents),
                         [&library] { library.useOne(); });
    Stage stage(templateText(QStringLiteral("clip-reveal.svg")));
    stays &= staysWithin(allowed, "frames around items", numberOf(parser, decorators),
                         [&stage] { stage.useOne(); });
    return stays ? 0 : 1;
}
