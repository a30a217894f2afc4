// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Options.h"

#include "Failure.h"
#include "PictureLimits.h"
#include "TitleText.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QThread>

namespace {

constexpr int mostJobs = 256;

// Every option of the command, in the order in which --help lists them.
struct OptionSet
{
    QCommandLineOption output{
            {QStringLiteral("o"), QStringLiteral("output")},
            QStringLiteral(
                    "Write numbered PNG files into FOLDER, which is made when it is missing."),
            QStringLiteral("FOLDER")};
    QCommandLineOption fps{
            QStringLiteral("fps"),
            QStringLiteral("Frames per second: 25 (the default), 29.97, 30000/1001."),
            QStringLiteral("N")};
    QCommandLineOption frames{
            QStringLiteral("frames"),
            QStringLiteral(
                    "Only the frames A to B, both included, or the single frame A. The first "
                    "frame is 0; a range that runs past the last frame ends with it, and is empty "
                    "when it begins there."),
            QStringLiteral("A-B")};
    QCommandLineOption at{
            QStringLiteral("at"),
            QStringLiteral("The pictures at these times in milliseconds, instead of every frame."),
            QStringLiteral("MS[,MS...]")};
    QCommandLineOption size{
            QStringLiteral("size"),
            QStringLiteral("Size of the pictures in pixels. The title keeps its aspect and is "
                           "centred, the rest is background."),
            QStringLiteral("WxH")};
    QCommandLineOption background{
            QStringLiteral("background"),
            QStringLiteral("Colour behind the title: a name, #rgb, #rrggbb, #argb or #aarrggbb. "
                           "Transparent by default."),
            QStringLiteral("COLOR")};
    QCommandLineOption color{
            QStringLiteral("color"),
            QStringLiteral("Draw every fill and stroke colour of the title in this one."),
            QStringLiteral("COLOR")};
    QCommandLineOption contactSheet{
            QStringLiteral("contact-sheet"),
            QStringLiteral(
                    "Write an overview of up to 24 of the pictures with their times to FILE, "
                    "as PNG."),
            QStringLiteral("FILE")};
    QCommandLineOption raw{
            QStringLiteral("raw"),
            QStringLiteral(
                    "Write the pictures one after the other to standard output: rows from top "
                    "to bottom, four bytes a pixel (blue, green, red, alpha; premultiplied).")};
    QCommandLineOption jobs{
            QStringLiteral("jobs"),
            QStringLiteral(
                    "Number of processes that share the frames; 1 by default, auto or 0: one "
                    "for each core."),
            QStringLiteral("N")};
    QCommandLineOption quiet{QStringLiteral("quiet"),
                             QStringLiteral("No progress bar and no warnings.")};
    QCommandLineOption strict{
            QStringLiteral("strict"),
            QStringLiteral(
                    "Let warnings count as errors: of a title with warnings nothing is written.")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
    QCommandLineOption worker{QStringLiteral("worker"),
                              QStringLiteral("Report to the process that started this one.")};

    void addTo(QCommandLineParser &parser)
    {
        worker.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOptions({output, fps, frames, at, size, background, color, contactSheet, raw,
                           jobs, quiet, strict, help, version, worker});
    }
};

QString longOption(const QCommandLineOption &option)
{
    return QStringLiteral("--") + option.names().constLast();
}

Failure wrongValue(const QCommandLineOption &option, const QString &value, const QString &expected)
{
    return Failure::usage(
            QStringLiteral("%1 %2: expected %3").arg(longOption(option), value, expected));
}

Failure notTogether(const QCommandLineOption &one, const QCommandLineOption &other)
{
    return Failure::usage(QStringLiteral("%1 cannot be combined with %2")
                                  .arg(longOption(one), longOption(other)));
}

QString withoutFullStop(const QString &text)
{
    return text.endsWith(QLatin1Char('.')) ? text.chopped(1) : text;
}

QSize sizeFromText(const QString &text)
{
    static const QRegularExpression pattern(
            QRegularExpression::anchoredPattern(QStringLiteral("([0-9]{1,9})x([0-9]{1,9})")));
    const auto match = pattern.match(text);
    if (!match.hasMatch())
        return QSize();
    return QSize(match.captured(1).toInt(), match.captured(2).toInt());
}

// Doubles each digit of #argb, the short form that QColor does not know.
QString withLongHexDigits(const QString &text)
{
    static const QRegularExpression shortForm(
            QRegularExpression::anchoredPattern(QStringLiteral("#[0-9A-Fa-f]{4}")));
    if (!shortForm.match(text).hasMatch())
        return text;
    QString result = QStringLiteral("#");
    for (const QChar digit : text.mid(1))
        result += QString(2, digit);
    return result;
}

QColor colorFromText(const QString &text)
{
    const QString name = withLongHexDigits(text);
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

int jobsFromText(const QString &text)
{
    if (text == QLatin1String("auto") || text == QLatin1String("0"))
        return qMax(1, QThread::idealThreadCount());
    bool isNumber = false;
    const int jobs = text.toInt(&isNumber);
    return isNumber && jobs > 0 && jobs <= mostJobs ? jobs : -1;
}

// Reads the values of the options one by one into an Options.
class OptionReader
{
public:
    OptionReader(const QCommandLineParser &parser, const OptionSet &set)
        : m_parser(parser), m_set(set)
    {
    }

    Options read() const
    {
        Options options;
        readTitle(options);
        readOutputs(options);
        readTimes(options);
        readLook(options);
        readJobs(options);
        refuseContradictions(options);
        return options;
    }

private:
    bool isSet(const QCommandLineOption &option) const { return m_parser.isSet(option); }
    QString value(const QCommandLineOption &option) const { return m_parser.value(option); }

    void readTitle(Options &options) const
    {
        const QStringList titles = m_parser.positionalArguments();
        if (titles.isEmpty())
            throw Failure::usage(QStringLiteral("no title given"));
        if (titles.size() > 1) {
            throw Failure::usage(QStringLiteral("only one title at a time: %1 is one too many")
                                         .arg(titles.at(1)));
        }
        options.title = titles.constFirst();
    }

    void readOutputs(Options &options) const
    {
        options.outputFolder = readName(m_set.output);
        options.contactSheet = readName(m_set.contactSheet);
        options.raw = isSet(m_set.raw);
        options.quiet = isSet(m_set.quiet);
        options.strict = isSet(m_set.strict);
        options.worker = isSet(m_set.worker);
        if (options.outputFolder.isEmpty() && options.contactSheet.isEmpty() && !options.raw) {
            throw Failure::usage(QStringLiteral(
                    "nothing to write: give -o FOLDER, --contact-sheet FILE or --raw"));
        }
    }

    QString readName(const QCommandLineOption &option) const
    {
        if (isSet(option) && value(option).isEmpty())
            throw wrongValue(option, QStringLiteral("\"\""), QStringLiteral("a name"));
        return value(option);
    }

    void readTimes(Options &options) const
    {
        if (isSet(m_set.fps)) {
            const auto rate = FrameRate::fromText(value(m_set.fps));
            if (!rate) {
                throw wrongValue(m_set.fps, value(m_set.fps),
                                 QStringLiteral("frames per second, such as 25 or 30000/1001, "
                                                "above 0 and up to 1000"));
            }
            options.rate = *rate;
        }
        if (isSet(m_set.frames)) {
            options.frames = FrameRange::fromText(value(m_set.frames));
            if (!options.frames) {
                throw wrongValue(m_set.frames, value(m_set.frames),
                                 QStringLiteral("frame numbers, such as 0-99 or 12"));
            }
        }
        if (isSet(m_set.at)) {
            options.times = timesFromText(value(m_set.at));
            if (!options.times) {
                throw wrongValue(m_set.at, value(m_set.at),
                                 QStringLiteral("milliseconds, such as 1500 or 0,1500,3000"));
            }
        }
    }

    void readLook(Options &options) const
    {
        if (isSet(m_set.size)) {
            options.size = sizeFromText(value(m_set.size));
            if (!options.size.isValid()) {
                throw wrongValue(m_set.size, value(m_set.size),
                                 QStringLiteral("a size in pixels, such as 1280x720"));
            }
            const QString problem = sizeProblem(options.size);
            if (!problem.isEmpty())
                throw Failure::usage(QStringLiteral("--size: %1").arg(problem));
        }
        if (isSet(m_set.background))
            options.background = readColor(m_set.background);
        if (isSet(m_set.color)) {
            options.color = readColor(m_set.color);
            if (options.color.alpha() != 255) {
                throw wrongValue(m_set.color, value(m_set.color),
                                 QStringLiteral("a colour that is not transparent"));
            }
        }
    }

    QColor readColor(const QCommandLineOption &option) const
    {
        const QColor color = colorFromText(value(option));
        if (!color.isValid()) {
            throw wrongValue(option, value(option),
                             QStringLiteral("a colour, such as navy, #rrggbb or #aarrggbb"));
        }
        return color;
    }

    void readJobs(Options &options) const
    {
        if (!isSet(m_set.jobs))
            return;
        options.jobs = jobsFromText(value(m_set.jobs));
        if (options.jobs < 0) {
            throw wrongValue(m_set.jobs, value(m_set.jobs),
                             QStringLiteral("auto, or a number from 0 to %1").arg(mostJobs));
        }
    }

    void refuseContradictions(const Options &options) const
    {
        if (options.times && isSet(m_set.fps))
            throw notTogether(m_set.at, m_set.fps);
        if (options.times && options.frames)
            throw notTogether(m_set.at, m_set.frames);
        if (options.raw && isSet(m_set.output))
            throw notTogether(m_set.raw, m_set.output);
        if (options.raw && options.jobs > 1) {
            throw Failure::usage(QStringLiteral(
                    "--raw writes the frames in order from one process: not with --jobs above 1"));
        }
    }

    const QCommandLineParser &m_parser;
    const OptionSet &m_set;
};

void describe(QCommandLineParser &parser, OptionSet &set)
{
    parser.setApplicationDescription(QStringLiteral(
            "Renders an animated SVG title, frame by frame, to transparent pictures."));
    parser.addPositionalArgument(QStringLiteral("TITLE"),
                                 QStringLiteral("The title's SVG file, or - for standard input."),
                                 QStringLiteral("TITLE.svg"));
    set.addTo(parser);
}

} // namespace

QString Options::helpText()
{
    QCommandLineParser parser;
    OptionSet set;
    describe(parser, set);
    return parser.helpText();
}

Options Options::fromArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    OptionSet set;
    describe(parser, set);
    if (!parser.parse(arguments))
        throw Failure::usage(withoutFullStop(parser.errorText()));

    Options options;
    if (parser.isSet(set.help))
        options.task = Task::ShowHelp;
    else if (parser.isSet(set.version))
        options.task = Task::ShowVersion;
    else
        options = OptionReader(parser, set).read();
    return options;
}

QStringList Options::workerArguments(const QStringList &which) const
{
    const OptionSet set;
    QStringList arguments{longOption(set.worker), longOption(set.output), outputFolder};
    arguments += which;
    if (size.isValid()) {
        arguments << longOption(set.size)
                  << QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    }
    arguments << longOption(set.background) << background.name(QColor::HexArgb);
    if (color.isValid())
        arguments << longOption(set.color) << color.name();
    if (quiet)
        arguments << longOption(set.quiet);
    if (strict)
        arguments << longOption(set.strict);
    arguments << standardInputName();
    return arguments;
}
