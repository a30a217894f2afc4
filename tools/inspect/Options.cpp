// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Options.h"

#include "Failure.h"

#include <QCommandLineParser>

namespace {

// Every option of the command, in the order in which --help lists them.
struct OptionSet
{
    QCommandLineOption json{QStringLiteral("json"),
                            QStringLiteral("Write a JSON object instead of text: the same facts, "
                                           "for programs. Takes one title.")};
    QCommandLineOption plot{
            QStringLiteral("plot"),
            QStringLiteral("Draw the timeline as an SVG picture into FILE as well: a bar for each "
                           "animation, lighter where its last value holds. Takes one title."),
            QStringLiteral("FILE")};
    QCommandLineOption strict{
            QStringLiteral("strict"),
            QStringLiteral("Let notes count as warnings: the exit code is 1 for either. For "
                           "collections of templates that are checked automatically.")};
    QCommandLineOption quiet{{QStringLiteral("q"), QStringLiteral("quiet")},
                             QStringLiteral("Write the warnings and notes only, and nothing for a "
                                            "title without any.")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};

    void addTo(QCommandLineParser &parser) const
    {
        parser.addOptions({json, plot, strict, quiet, help, version});
    }
};

QString description()
{
    return QStringLiteral(
            "Tells what TitleScene understands of an animated SVG title, and what of it will not "
            "play as a browser would play it.\n"
            "\n"
            "The report lists the title's bounds, length, closing part and clipping; every "
            "animation with its element, attribute, kind of values, begin, end, repetition, "
            "freeze, player and what triggers it; a timeline; the colours that a user may adjust; "
            "and definitions with their users. Then come the problems, each with file, line, "
            "column, a reason, a code in brackets, and a remedy in the line below. A warning is "
            "about something that will not play as in a browser, a note about something that "
            "plays, but is easily lost or may look different.\n"
            "\n"
            "Exit codes: 0, all titles are clean; 1, there are warnings; 2, a title cannot be read "
            "or is refused, or a file cannot be written (standard error says why), or the command "
            "line makes no sense.");
}

void describe(QCommandLineParser &parser, const OptionSet &set)
{
    parser.setApplicationDescription(description());
    parser.addPositionalArgument(QStringLiteral("TITLE"),
                                 QStringLiteral("The titles' SVG files, or - for standard input."),
                                 QStringLiteral("TITLE.svg..."));
    set.addTo(parser);
}

QString withoutFullStop(const QString &text)
{
    return text.endsWith(QLatin1Char('.')) ? text.chopped(1) : text;
}

QStringList titlesIn(const QStringList &titles)
{
    if (titles.isEmpty())
        throw Failure::usage(QStringLiteral("no title given"));
    return titles;
}

void refuseSeveral(const Options &options, const QString &option)
{
    if (options.titles.size() > 1)
        throw Failure::usage(QStringLiteral("%1 takes only one title: %2 is one too many")
                                     .arg(option, options.titles.at(1)));
}

} // namespace

QString Options::helpText()
{
    QCommandLineParser parser;
    describe(parser, OptionSet());
    return parser.helpText();
}

Options Options::fromArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    const OptionSet set;
    describe(parser, set);
    if (!parser.parse(arguments))
        throw Failure::usage(withoutFullStop(parser.errorText()));

    Options options;
    if (parser.isSet(set.help)) {
        options.task = Task::ShowHelp;
    } else if (parser.isSet(set.version)) {
        options.task = Task::ShowVersion;
    } else {
        options.titles = titlesIn(parser.positionalArguments());
        options.json = parser.isSet(set.json);
        options.quiet = parser.isSet(set.quiet);
        options.strict = parser.isSet(set.strict);
        options.plot = parser.value(set.plot);
        if (parser.isSet(set.plot) && options.plot.isEmpty())
            throw Failure::usage(QStringLiteral("--plot \"\": expected a name"));
        if (options.json)
            refuseSeveral(options, QStringLiteral("--json"));
        if (!options.plot.isEmpty())
            refuseSeveral(options, QStringLiteral("--plot"));
        if (options.json && options.quiet)
            throw Failure::usage(QStringLiteral("--json cannot be combined with --quiet"));
    }
    return options;
}
