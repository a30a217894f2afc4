// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace {

constexpr int millisecondsToWait = 120000;

struct Result
{
    int exitCode = -1; // -1: ended by a signal
    QString output;
    QString errors;

    QJsonObject json() const { return QJsonDocument::fromJson(output.toUtf8()).object(); }
    QStringList lines() const { return output.split(QLatin1Char('\n')); }
};

// A text with a "^" in front of what a problem is about.
struct MarkedText
{
    QString text; // without it
    int line;
    int column;

    explicit MarkedText(QString marked)
    {
        const int at = marked.indexOf(QLatin1Char('^'));
        const QString before = marked.left(at);
        line = before.count(QLatin1Char('\n')) + 1;
        column = at - before.lastIndexOf(QLatin1Char('\n'));
        text = marked.remove(at, 1);
    }
};

// A title of which everything plays as in a browser.
QString cleanTitle()
{
    return svgTitle(QStringLiteral(
            "<defs><g id=\"dot\"><circle r=\"4\" style=\"fill:#00ff00\"/></g></defs>\n"
            "<rect id=\"bar\" width=\"9\" height=\"9\" fill=\"#ff0000\">\n"
            "<animate id=\"in\" attributeName=\"x\" from=\"0\" to=\"50\" dur=\"2s\""
            " fill=\"freeze\"/>\n"
            "<animate id=\"CONCLUSION\" attributeName=\"opacity\" values=\"1;0\""
            " begin=\"in.end+1s\" dur=\"500ms\"/></rect>\n"
            "<use xlink:href=\"#dot\"/>\n"
            "<g><animateTransform attributeName=\"transform\" type=\"rotate\" from=\"0\" to=\"90\""
            " begin=\"250ms\" dur=\"1s\" repeatCount=\"2\"/></g>\n"));
}

// A rectangle with an animation that has these attributes.
QString animated(const QString &attributes)
{
    return svgTitle(
            QStringLiteral("<rect width=\"9\" height=\"9\"><animate %1/></rect>").arg(attributes));
}

QString played(const QString &attributes)
{
    return svgTitle(QStringLiteral("<g><animateTransform attributeName=\"transform\""
                                   " type=\"translate\" %1/></g>")
                            .arg(attributes));
}

QByteArray bytesOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString problemText(const QJsonObject &problem)
{
    return QStringLiteral("%1:%2: %3: %4 [%5]")
            .arg(problem.value(QLatin1String("line")).toInt())
            .arg(problem.value(QLatin1String("column")).toInt())
            .arg(problem.value(QLatin1String("severity")).toString(),
                 problem.value(QLatin1String("reason")).toString(),
                 problem.value(QLatin1String("code")).toString());
}

QDomElement rectOfClass(const QDomNodeList &rects, const QString &name, int number)
{
    for (int i = 0; i < rects.size(); ++i) {
        const QDomElement rect = rects.at(i).toElement();
        if (rect.attribute(QStringLiteral("class")) == name && number-- == 0)
            return rect;
    }
    return QDomElement();
}

} // namespace

class TestInspect : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void findsNothingInACleanTitle();
    void findsProblems_data();
    void findsProblems();
    void findsNoProblem_data();
    void findsNoProblem();
    void tellsProblemsToPersons();
    void countsNotesWhenStrict();
    void tellsWhatWasUnderstood();
    void tellsTheSameToPersonsAndPrograms();
    void drawsBarsOfText();
    void tellsOfClipping();
    void drawsThePlot();
    void plotsAreCleanTitles();
    void templatesAreClean_data();
    void templatesAreClean();
    void countsColumnsWhateverTheLineEnds_data();
    void countsColumnsWhateverTheLineEnds();
    void refusesWithOneLine_data();
    void refusesWithOneLine();
    void surviveHostileTexts_data();
    void surviveHostileTexts();
    void showsHelpAndVersion();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    Result run(const QStringList &arguments, const QByteArray &input = QByteArray()) const;
    Result inspect(const QString &title, const QStringList &arguments = QStringList()) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestInspect::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestInspect::cleanup()
{
    m_folder.reset();
}

Result TestInspect::run(const QStringList &arguments, const QByteArray &input) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    // In a build with sanitizers their report of known leaks would mix with the errors.
    const QString sanitizer = QStringLiteral("LSAN_OPTIONS");
    environment.insert(sanitizer,
                       environment.value(sanitizer) + QStringLiteral(":print_suppressions=0"));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder->path());
    process.start(QStringLiteral(TITLESCENE_INSPECT), arguments);
    process.write(input);
    process.closeWriteChannel();

    Result result;
    if (process.waitForFinished(millisecondsToWait) && process.exitStatus() == QProcess::NormalExit)
        result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

Result TestInspect::inspect(const QString &title, const QStringList &arguments) const
{
    return run(QStringList(QStringLiteral("-")) + arguments, title.toUtf8());
}

void TestInspect::findsNothingInACleanTitle()
{
    const Result result = inspect(cleanTitle(), {QStringLiteral("--strict")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.endsWith(QLatin1String("standard input: 0 warnings, 0 notes\n")));

    const Result quiet = inspect(cleanTitle(), {QStringLiteral("--quiet")});
    QCOMPARE(quiet.exitCode, 0);
    QCOMPARE(quiet.output, QString());
}

void TestInspect::findsProblems_data()
{
    QTest::addColumn<QString>("title"); // "^": where the problem is
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("reason"); // a part of it

    const auto row = [](const char *name, const QString &title, const char *code,
                        const char *reason) {
        QTest::newRow(name) << title << QString::fromLatin1(code) << QString::fromLatin1(reason);
    };
    const auto animation = [&row](const char *name, const char *attributes, const char *code,
                                  const char *reason) {
        row(name, animated(QString::fromUtf8(attributes)), code, reason);
    };
    const auto transform = [&row](const char *name, const char *attributes, const char *code,
                                  const char *reason) {
        row(name, played(QString::fromUtf8(attributes)), code, reason);
    };
    const auto content = [&row](const char *name, const char *text, const char *code,
                                const char *reason) {
        row(name, svgTitle(QString::fromUtf8(text)), code, reason);
    };

    animation("begin: list", "attributeName='x' from='0' to='1' dur='1s' ^begin='1s;2s'",
              "unreadable-begin", "\"1s;2s\" is a list of times; the animation begins at 0 s");
    animation("begin: list of references",
              "id='a' attributeName='x' from='0' to='1' dur='1s' begin='3s'/><animate"
              " attributeName='y' from='0' to='1' dur='1s' ^begin='a.end;b.end'",
              "unreadable-begin", "is a list of times; the animation begins at 4 s");
    animation("begin: event", "attributeName='x' from='0' to='1' dur='1s' ^begin='click'",
              "unreadable-begin", "\"click\" is an event");
    animation("begin: event of an element",
              "attributeName='x' from='0' to='1' dur='1s' ^begin='button.click+1s'",
              "unreadable-begin", "is an event");
    animation("begin: indefinite", "attributeName='x' from='0' to='1' dur='1s' ^begin='indefinite'",
              "unreadable-begin", "is no time on the title's timeline");
    animation("begin: clock value", "attributeName='x' from='0' to='1' dur='1s' ^begin='00:00:05'",
              "unreadable-begin", "is a clock value with colons; the animation begins at 0 s");
    animation("begin: minutes", "attributeName='x' from='0' to='1' dur='1s' ^begin='1min'",
              "unreadable-begin", "has a unit other than s or ms");
    animation("begin: no time at all", "attributeName='x' from='0' to='1' dur='1s' ^begin='1;'",
              "unreadable-begin", "is a list");
    animation("begin: number with a comma",
              "attributeName='x' from='0' to='1' dur='1s' ^begin='1,5'", "unreadable-begin",
              "can't be read as a time");
    animation("begin: the reserved time",
              "attributeName='x' from='0' to='1' dur='1s' ^begin='-1ms'", "unreadable-begin",
              "exactly -1 ms counts as 0");
    animation("begin: offset",
              "id='a' attributeName='x' from='0' to='1' dur='1s'/><animate attributeName='y'"
              " from='0' to='1' dur='1s' ^begin='a.end+00:01'",
              "unreadable-begin", "the offset \"00:01\" can't be read");
    animation("begin: sign in the id",
              "id='my-anim' attributeName='x' from='0' to='1' dur='1s'/><animate"
              " attributeName='y' from='0' to='1' dur='1s' ^begin='my-anim.end-1s'",
              "sign-in-id", "the offset counts as 0");
    transform("begin: the renderer's", "from='0' to='1' dur='1s' ^begin='click'",
              "unreadable-begin", "the animation does not play");
    transform("begin: never resolved",
              "id='a' from='0' to='1' dur='1s'/><animateTransform attributeName='transform'"
              " type='rotate' from='0' to='1' dur='1s' ^begin='a.end'",
              "unresolved-begin", "in titles with an animate element only");

    animation("duration: clock value", "attributeName='x' from='0' to='1' ^dur='00:05'",
              "unreadable-duration", "is a clock value with colons; it counts as 0");
    animation("duration: indefinite", "attributeName='x' from='0' to='1' ^dur='indefinite'",
              "unreadable-duration", "it counts as 0");
    row("duration: none",
        svgTitle(QStringLiteral("<rect>^<animate attributeName='x' from='0' to='1'/></rect>")),
        "unreadable-duration", "has no duration");
    animation("duration: negative", "attributeName='x' from='0' to='1' ^dur='-1s'",
              "unreadable-duration", "less than a millisecond");
    transform("duration: the renderer's", "from='0' to='1' ^dur='00:05'", "unreadable-duration",
              "the animation does not play");

    animation("unknown id: begin", "attributeName='x' from='0' to='1' dur='1s' ^begin='gone.end'",
              "unknown-id", "\"gone\", which is nothing in the title; it counts as time 0");
    animation("unknown id: begin after a shape",
              "attributeName='x' from='0' to='1' dur='1s' ^begin='r.end'/></rect><rect id='r'>"
              "<animate attributeName='y' from='0' to='1' dur='1s'",
              "unknown-id", "which is a rect element, whose times nothing can refer to");
    content("unknown id: use", "<use ^xlink:href='#gone'/>", "unknown-id", "refers to \"gone\"");
    content("unknown id: fill", "<rect ^fill='url(#gone)'/>", "unknown-id", "refers to \"gone\"");
    content("unknown id: style", "<rect ^style='stroke : url( \"#gone\" )'/>", "unknown-id",
            "refers to \"gone\"");
    content("unknown id: gradient",
            "<defs><linearGradient id='g' ^xlink:href='#gone'/></defs><rect fill='url(#g)'/>",
            "unknown-id", "refers to \"gone\"");

    animation("cycle",
              "id='a' attributeName='x' from='0' to='1' dur='1s' ^begin='b.end'/><animate id='b'"
              " attributeName='y' from='0' to='1' dur='1s' begin='a.end'/><animate"
              " attributeName='width' from='0' to='1' dur='1s' begin='a.end'",
              "cycle", "a -> b -> a");
    animation("cycle of one",
              "id='a' attributeName='x' from='0' to='1' dur='1s' ^begin='a.begin+1s'", "cycle",
              "a -> a");

    row("no attribute name",
        svgTitle(QStringLiteral("<rect>\n  ^<animate from='0' to='1' dur='1s'/></rect>")),
        "no-attribute-name", "does not play");
    animation("empty attribute name", "^attributeName='' from='a' to='b' dur='1s'",
              "no-attribute-name", "has no attributeName");

    animation("ignored: keyTimes", "attributeName='x' values='0;1;2' dur='1s' ^keyTimes='0;0.2;1'",
              "ignored-attribute", "keyTimes is ignored");
    animation("ignored: keySplines",
              "attributeName='x' values='0;1' dur='1s' calcMode='spline' ^keySplines='0 0 1 1'",
              "ignored-attribute", "keySplines is ignored");
    animation("ignored: paced", "attributeName='x' values='0;1;9' dur='1s' ^calcMode='paced'",
              "ignored-attribute", "calcMode \"paced\" is ignored");
    animation("ignored: end", "attributeName='x' values='0;1' dur='1s' ^end='0.5s'",
              "ignored-attribute", "end is ignored");
    animation("ignored: repeatDur", "attributeName='x' values='0;1' dur='1s' ^repeatDur='3s'",
              "ignored-attribute", "repeatDur is ignored");
    animation("ignored: by", "attributeName='x' from='5' ^by='9' dur='1s'", "ignored-attribute",
              "by is ignored");
    transform("ignored: keyTimes of the renderer's",
              "from='0 0' to='9 9' dur='1s' ^keyTimes='0;0.5'", "ignored-attribute",
              "keyTimes is ignored");
    transform("ignored: discrete of the renderer's",
              "from='0 0' to='9 9' dur='1s' ^calcMode='discrete'", "ignored-attribute",
              "calcMode \"discrete\" is ignored");
    animation("discrete", "attributeName='x' values='0;1' dur='1s' ^calcMode='discrete'",
              "discrete", "half-way");

    animation("numbers differ",
              "attributeName='transform' ^values='translate(0 0);translate(9)' dur='1s'",
              "numbers-differ", "do not hold the same number of readable numbers");
    animation("numbers: unreadable", "attributeName='points' ^values='10-5;20-5' dur='1s'",
              "numbers-differ", "the attribute is emptied");
    animation("numbers: other letters",
              "attributeName='transform' ^values='rotate(0 0);scale(9 9)' dur='1s'",
              "numbers-differ", "differ in more than their numbers");
    animation("numbers: from and to", "attributeName='points' ^from='1,1' to='2,2 3,3' dur='1s'",
              "numbers-differ", "do not hold the same number");
    animation("exponent", "attributeName='points' ^values='1e3 0;2e3 0' dur='1s'", "exponent",
              "1e3 is two numbers");
    animation("number with a unit", "attributeName='x' ^values='0;10px' dur='1s'",
              "unreadable-value", "\"10px\" is none; it counts as 0");
    animation("colour and number", "attributeName='stop-color' ^values='red;7' dur='1s'",
              "unreadable-value", "the first value is a colour, and \"7\" is none");
    animation("alpha", "attributeName='stop-color' ^from='#80ff0000' to='blue' dur='1s'",
              "alpha-lost", "lose their alpha");
    animation("transparent", "attributeName='stop-color' ^values='red;transparent' dur='1s'",
              "alpha-lost", "lose their alpha");
    animation("no from", "attributeName='x' ^to='9' dur='1s'", "missing-value",
              "does not begin at the element's own value");
    animation("no to", "attributeName='x' ^from='9' dur='1s'", "missing-value",
              "has no to and no values");
    transform("no from of the renderer's", "^to='9 9' dur='1s'", "missing-value",
              "without a from, the animation does not play");
    transform("three values", "^values='0 0;9 9;0 0' dur='1s'", "transform-values",
              "exactly two values right, and not 3");

    animation("repeat without freeze", "attributeName='x' values='0;1' dur='1s' ^repeatCount='3'",
              "repeat-without-freeze", "only the first cycle shows");
    animation("repeat indefinitely without freeze",
              "attributeName='x' values='0;1' dur='1s' ^repeatCount='indefinite'",
              "repeat-without-freeze", "only the first cycle shows");
    animation("repeat: fraction",
              "attributeName='x' values='0;1' dur='1s' fill='freeze' ^repeatCount='2.5'",
              "repeat-count", "\"2.5\" counts as indefinite");
    animation("repeat: end",
              "attributeName='x' values='0;1' dur='1s' fill='freeze' ^repeatCount='2'",
              "repeat-ends-at-start", "holds its first value");

    content("shared key",
            "<g/><g><g/><rect><animate attributeName='x' values='0;1' dur='1s'/></rect></g><g/><g/>"
            "<g/><g/><g/><g/><g/><g/><g/><rect>^<animate attributeName='x' values='0;1' dur='1s'/>"
            "</rect>",
            "shared-key", "takes the attribute x of rect for that of rect");
    content("order",
            "<rect>^<animate attributeName='x' values='0;1' begin='2s' dur='2s'/><animate"
            " attributeName='x' values='0;1' begin='1s' dur='2s'/></rect>",
            "order", "in a browser this one takes over");
    content("set", "<rect>^<set attributeName='x' to='1' dur='1s'/></rect>", "not-played",
            "set elements do not play");
    content("animateMotion", "<rect>^<animateMotion path='M0 0L9 9' dur='1s'/></rect>",
            "not-played", "animateMotion elements do not play");
    content("animateColor",
            "<rect><animateColor attributeName='fill' from='red' to='blue' ^begin='1s' dur='1s'/>"
            "</rect>",
            "late-animate-color", "elements behind it lose their fill");
    content("target elsewhere",
            "<rect id='r'/><g><animate ^xlink:href='#r' attributeName='x' values='0;1' dur='1s'/>"
            "</g>",
            "target-elsewhere", "plays on its parent element");
    animation("conclusion at 0", "^id='CONCLUSION' attributeName='x' values='0;1' dur='1s'",
              "no-conclusion", "marks no closing part");
    row("end behind the title",
        svgTitle(QStringLiteral(
                "<rect><animate id='a' attributeName='x' values='0;1' dur='1s'/></rect><g>"
                "<animateTransform attributeName='transform' type='rotate' from='0' to='9'"
                " ^begin='a.end' dur='5s'/></g>")),
        "beyond-end", "ends behind the title");

    content("text runs", "<text><tspan>one</tspan>^<tspan>two</tspan></text>", "text-spacing",
            "\"onetwo\" becomes \"one two\"");
    content("text run around an animation",
            "<text>one^<tspan><animate attributeName='x' values='0;1' dur='1s'/>two</tspan></text>",
            "text-spacing", "\"onetwo\" becomes \"one two\"");

    const QString root = QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg'%1><g/></svg>");
    row("no view box", QLatin1Char('^') + root.arg(QString()), "view-box", "has no viewBox");
    row("fractional view box", root.arg(QStringLiteral("\n  ^viewBox='0 0 100.5 50'")), "view-box",
        "a fraction in the viewBox counts as 0");
    row("view box of two numbers", root.arg(QStringLiteral(" ^viewBox='100 50'")), "view-box",
        "is not four whole numbers");
    row("view box with a line break", root.arg(QStringLiteral(" ^viewBox='0 0&#10;100 50'")),
        "view-box", "a line break or tab separates no numbers");
    row("prefixed root",
        QStringLiteral("<s:svg xmlns:s='http://www.w3.org/2000/svg' ^viewBox='0 0 9 9'/>"),
        "view-box", "a root with a prefix (s:svg) has no view box");
    content("nested svg", "<g/>\n^<svg><rect/></svg>", "nested-svg", "drawing ends");
    content("prefixed element",
            "<rect>^<s:animate xmlns:s='http://www.w3.org/2000/svg' attributeName='x'/></rect>",
            "prefix", "s:animate is not recognised");

    content("clip path", "<clipPath id='c'/><rect ^clip-path='url(#c)'/>", "not-drawn",
            "nothing is clipped by clip-path");
    content("clip path by style", "<clipPath id='c'/><rect ^style='clip-path: url(#c)'/>",
            "not-drawn", "nothing is clipped by clip-path");
    content("clip path by a style sheet", "^<style>rect {\n clip-path : none }</style>",
            "not-drawn", "nothing is clipped by clip-path");
    content("mask", "^<mask/>", "not-drawn", "masks do not mask");
    content("mask of an element", "<g id='m'/><rect ^mask='url(#m)'/>", "not-drawn",
            "masks do not mask");
    content("filter", "^<filter/>", "not-drawn", "filters are not drawn");
    content("filter of an element", "<g id='f'/><rect ^filter='url(#f)'/>", "not-drawn",
            "filters are not drawn");
    content("pattern", "^<pattern/>", "not-drawn", "patterns are not drawn");
    content("symbol", "^<symbol/>", "not-drawn", "symbols can't be used");
    content("comp-op", "<rect ^comp-op='clear'/>", "comp-op", "changes what lies below the title");
    content("rgba", "<rect ^fill=\"rgba(255, 0, 0, 1)\"/>", "colour",
            "a colour that is written as rgba() is drawn in another colour");
    content("hsl", "<rect ^style='stroke:hsl(120,100%,50%)'/>", "colour", "hsl()");
    content("font list", "<text ^font-family='Arial, sans-serif'>a</text>", "font-list",
            "a list of font families");

    content("external picture", "<image ^xlink:href='logo.png'/>", "external",
            "xlink:href refers to \"logo.png\"");
    content("external definition", "<use ^xlink:href='other.svg#logo'/>", "external",
            "nothing outside the title is read");
    content("external gradient", "<rect ^fill='url(other.svg#g)'/>", "external",
            "fill refers to \"url(other.svg#g)\"");
    content("imported style", "^<style>@import 'a.css';</style>", "external",
            "the style sheet refers to something");
    row("style sheet", QStringLiteral("^<?xml-stylesheet href='a.css'?>\n") + svgTitle(QString()),
        "external", "the style sheet is left out");
    content("picture of another kind",
            "<image ^xlink:href='data:image/gif;base64,R0lGODlhAQABAA=='/>", "picture",
            "it is no PNG or JPEG");
    content("reference without a prefix", "<g id='g'/><use ^href='#g'/>", "plain-href",
            "href without the prefix xlink is ignored");

    content("adjusted and animated",
            "<rect fill='#ff0000'>^<animate attributeName='fill' values='red;blue' "
            "dur='1s'/></rect>",
            "adjusted-and-animated", "is lost in the next frame");

    QTest::newRow("undefined entity")
            << QStringLiteral("<!DOCTYPE svg SYSTEM 'svg.dtd'>\n%1")
                       .arg(svgTitle(QStringLiteral("<text>a ^&nbsp; b</text>")))
            << QStringLiteral("undefined-entity") << QStringLiteral("the entity nbsp");

    QTest::newRow("note: document type")
            << QStringLiteral("<?xml version='1.0'?>\n^<!DOCTYPE svg [<!ENTITY a 'b'>]>\n%1")
                       .arg(svgTitle(QStringLiteral("<text>&a;</text>")))
            << QStringLiteral("document-type") << QStringLiteral("drops the document type");
    content("note: idle definition", "<defs>^<g id='a'/></defs>", "idle-definition",
            "nothing uses the definition g#a");
    content("note: repeated id", "<g id='a'/><g ^id='a'/>", "repeated-id", "earlier element");
}

void TestInspect::findsProblems()
{
    QFETCH(const QString, title);
    QFETCH(const QString, code);
    QFETCH(const QString, reason);
    const MarkedText marked(title);
    const bool isNote = QByteArray(QTest::currentDataTag()).startsWith("note: ");

    const Result result = inspect(marked.text, {QStringLiteral("--json")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, isNote ? 0 : 1);

    QStringList all;
    QJsonObject found;
    for (const QJsonValue &value : result.json().value(QLatin1String("problems")).toArray()) {
        const QJsonObject problem = value.toObject();
        all += problemText(problem);
        if (problem.value(QLatin1String("code")).toString() == code)
            found = problem;
        else
            // The document type stands beside what is wrong with its entities.
            QCOMPARE(problem.value(QLatin1String("code")).toString(),
                     QStringLiteral("document-type"));
    }
    QVERIFY2(!found.isEmpty(), qPrintable(all.join(QLatin1Char('\n'))));
    QCOMPARE(all.filter(QLatin1Char('[') + code + QLatin1Char(']')).size(), 1);
    QCOMPARE(found.value(QLatin1String("severity")).toString(),
             isNote ? QStringLiteral("note") : QStringLiteral("warning"));
    QCOMPARE(found.value(QLatin1String("line")).toInt(), marked.line);
    QCOMPARE(found.value(QLatin1String("column")).toInt(), marked.column);
    QVERIFY2(found.value(QLatin1String("reason")).toString().contains(reason),
             qPrintable(all.join(QLatin1Char('\n'))));
    QVERIFY(!found.value(QLatin1String("remedy")).toString().isEmpty());
}

// What looks like a problem, and plays as in a browser.
void TestInspect::findsNoProblem_data()
{
    QTest::addColumn<QString>("title");

    const auto animation = [](const char *name, const char *attributes) {
        QTest::newRow(name) << animated(QString::fromUtf8(attributes));
    };
    const auto content = [](const char *name, const char *text) {
        QTest::newRow(name) << svgTitle(QString::fromUtf8(text));
    };
    animation("even keyTimes", "attributeName='x' values='0;1;5' dur='1s' keyTimes='0; 0.5; 1'");
    animation("defaults",
              "attributeName='x' values='0;1' dur='1s' calcMode='linear' restart='always'"
              " accumulate='none'");
    animation("one cycle", "attributeName='x' values='0;1' dur='1s' repeatCount='1'");
    animation("repeated there and back",
              "attributeName='x' values='0;1;0' dur='1s' repeatCount='3' fill='freeze'");
    animation("words",
              "attributeName='visibility' values='hidden;visible' dur='1s'"
              " calcMode='discrete'");
    animation("sign in an id without offset",
              "id='my-anim' attributeName='x' values='0;1' dur='1s'/><animate attributeName='y'"
              " values='0;1' dur='1s' begin='my-anim.end'");
    animation("negative begin", "attributeName='x' values='0;1' dur='1s' begin='-0.5s'");
    animation("later one behind",
              "attributeName='x' values='0;1' dur='2s'/><animate attributeName='x' values='0;1'"
              " begin='1s' dur='2s'");
    animation("one after the other",
              "id='b' attributeName='x' values='0;1' begin='a.end' dur='2s'/><animate id='a'"
              " attributeName='x' values='0;1' begin='1s' dur='2s'");
    animation("target by reference to the parent",
              "attributeName='width' values='0;1' dur='1s'/></rect><rect id='r'><animate"
              " xlink:href='#r' attributeName='x' values='0;1' dur='1s'");
    content("runs with spaces", "<text><tspan>one</tspan> <tspan>two</tspan></text>");
    content("one run", "<text>on<tspan>e tw</tspan>o</text>");
    content("shapes that erase", "<clipPath><rect fill='#000000'/></clipPath>");
    content("link", "<a xlink:href='http://example.org/'><rect/></a>");
    content("no clip path", "<rect clip-path='none' style='filter:none'/>");
    content("animated style colour",
            "<rect style='fill:#ff0000'><animate attributeName='fill' values='red;blue' dur='1s'/>"
            "</rect>");
    content("picture",
            "<image xlink:href='data:image/png;base64,"
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9"
            "awAAAABJRU5ErkJggg=='/>");
    QTest::newRow("view box with commas")
            << QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='5,5,100,50'/>");
    QTest::newRow("other declared encoding")
            << QStringLiteral("<?xml version='1.0' encoding='KOI-7'?>") + cleanTitle();
}

void TestInspect::findsNoProblem()
{
    QFETCH(const QString, title);
    const Result result = inspect(title, {QStringLiteral("--quiet"), QStringLiteral("--strict")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

void TestInspect::tellsProblemsToPersons()
{
    const MarkedText title(
            svgTitle(QStringLiteral("\n<rect>\n  <animate attributeName='x' values='0;1' dur='1s' "
                                    "^begin='click'/></rect>")));
    const Result result = inspect(title.text, {QStringLiteral("--quiet")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output,
             QStringLiteral("standard input:3:52: warning: the begin \"click\" is an event, and "
                            "nobody clicks on a title; the animation begins at 0 s "
                            "[unreadable-begin]\n"
                            "    Write a time, or refer to another animation's .begin or .end.\n"
                            "standard input: 1 warning, 0 notes\n"));
}

void TestInspect::countsNotesWhenStrict()
{
    const QString title = svgTitle(QStringLiteral("<defs><g id='a'/></defs>"));
    QCOMPARE(inspect(title).exitCode, 0);
    QCOMPARE(inspect(title, {QStringLiteral("--strict")}).exitCode, 1);
    QVERIFY(inspect(title).output.endsWith(QLatin1String(": 0 warnings, 1 note\n")));
}

void TestInspect::tellsWhatWasUnderstood()
{
    const QJsonObject report = inspect(cleanTitle(), {QStringLiteral("--json")}).json();
    QCOMPARE(report.value(QLatin1String("durationMs")).toInt(), 3500);
    QCOMPARE(report.value(QLatin1String("conclusionMs")).toInt(), 500);
    QCOMPARE(report.value(QLatin1String("conclusionBeginMs")).toInt(), 3000);
    QCOMPARE(report.value(QLatin1String("clipping")).toBool(true), false);
    const QJsonObject bounds = report.value(QLatin1String("bounds")).toObject();
    QCOMPARE(bounds.value(QLatin1String("width")).toInt(), 100);
    QCOMPARE(bounds.value(QLatin1String("height")).toInt(), 50);

    const QJsonArray animations = report.value(QLatin1String("animations")).toArray();
    QCOMPARE(animations.size(), 3);
    const QJsonObject second = animations.at(1).toObject();
    const QJsonObject bar{{QStringLiteral("name"), QStringLiteral("rect")},
                          {QStringLiteral("id"), QStringLiteral("bar")},
                          {QStringLiteral("line"), 2},
                          {QStringLiteral("column"), 1}};
    const QJsonObject conclusion{{QStringLiteral("name"), QStringLiteral("animate")},
                                 {QStringLiteral("id"), QStringLiteral("CONCLUSION")},
                                 {QStringLiteral("line"), 4},
                                 {QStringLiteral("column"), 1}};
    QCOMPARE(second,
             (QJsonObject{{QStringLiteral("element"), bar},
                          {QStringLiteral("animation"), conclusion},
                          {QStringLiteral("attribute"), QStringLiteral("opacity")},
                          {QStringLiteral("kind"), QStringLiteral("number")},
                          {QStringLiteral("beginMs"), 3000},
                          {QStringLiteral("endMs"), 3500},
                          {QStringLiteral("repeat"), 1},
                          {QStringLiteral("freeze"), false},
                          {QStringLiteral("discrete"), false},
                          {QStringLiteral("player"), QStringLiteral("document")},
                          {QStringLiteral("trigger"), QStringLiteral("in.end+1s")}}));
    const QJsonObject third = animations.at(2).toObject();
    QCOMPARE(third.value(QLatin1String("kind")).toString(), QStringLiteral("transform"));
    QCOMPARE(third.value(QLatin1String("player")).toString(), QStringLiteral("renderer"));
    QCOMPARE(third.value(QLatin1String("repeat")).toInt(), 2);
    QCOMPARE(third.value(QLatin1String("beginMs")).toInt(), 250);
    QCOMPARE(animations.at(0).toObject().value(QLatin1String("freeze")).toBool(), true);

    const QJsonArray colors = report.value(QLatin1String("adjustableColours")).toArray();
    QCOMPARE(colors.size(), 1);
    QCOMPARE(colors.at(0).toObject().value(QLatin1String("value")).toString(),
             QStringLiteral("#ff0000"));
    QCOMPARE(colors.at(0).toObject().value(QLatin1String("element")).toObject(), bar);

    const QJsonArray definitions = report.value(QLatin1String("definitions")).toArray();
    QCOMPARE(definitions.size(), 1);
    const QJsonObject dot = definitions.at(0).toObject();
    QCOMPARE(dot.value(QLatin1String("element")).toObject().value(QLatin1String("id")).toString(),
             QStringLiteral("dot"));
    const QJsonArray users = dot.value(QLatin1String("users")).toArray();
    QCOMPARE(users.size(), 1);
    const QJsonObject user = users.at(0).toObject().value(QLatin1String("element")).toObject();
    QCOMPARE(user.value(QLatin1String("name")).toString(), QStringLiteral("use"));
    QCOMPARE(user.value(QLatin1String("line")).toInt(), 5);
}

void TestInspect::tellsTheSameToPersonsAndPrograms()
{
    const QString title = readTemplate(QStringLiteral("coming-up-next.svg"));
    const QJsonObject report = inspect(title, {QStringLiteral("--json")}).json();
    const QStringList lines = inspect(title).lines();
    const int first = lines.indexOf(QStringLiteral("Animations")) + 2; // behind the headings
    QVERIFY(first > 1);

    const QJsonArray animations = report.value(QLatin1String("animations")).toArray();
    QCOMPARE(animations.size(), 20);
    for (int i = 0; i < animations.size(); ++i) {
        const QJsonObject animation = animations.at(i).toObject();
        const QString line = lines.at(first + i);
        const QStringList cells =
                line.split(QRegularExpression(QStringLiteral("  +")), Qt::SkipEmptyParts);
        QCOMPARE(cells.size(), 12);
        QCOMPARE(cells.at(2), animation.value(QLatin1String("attribute")).toString());
        QCOMPARE(cells.at(3), animation.value(QLatin1String("kind")).toString());
        QCOMPARE(cells.at(4),
                 QStringLiteral("%1 s").arg(animation.value(QLatin1String("beginMs")).toInt()
                                            / 1000.0));
        QCOMPARE(cells.at(5),
                 QStringLiteral("%1 s").arg(animation.value(QLatin1String("endMs")).toInt()
                                            / 1000.0));
        QCOMPARE(cells.at(6), animation.value(QLatin1String("repeat")).toVariant().toString());
        QCOMPARE(cells.at(7),
                 animation.value(QLatin1String("freeze")).toBool() ? QStringLiteral("yes")
                                                                   : QStringLiteral("no"));
        QCOMPARE(cells.at(8), animation.value(QLatin1String("player")).toString());
        QCOMPARE(cells.at(11), animation.value(QLatin1String("trigger")).toString());
    }
}

void TestInspect::drawsBarsOfText()
{
    const QStringList lines = inspect(cleanTitle()).lines();
    const int heading = lines.indexOf(QRegularExpression(QStringLiteral("^Timeline .*")));
    QVERIFY(heading > 0);
    // 3.5 s in 60 columns: the bar runs for 2 s and holds; the way out begins at 3 s.
    const auto bar = [&](int row) { return lines.at(heading + 2 + row).mid(23); };
    QCOMPARE(bar(0), QString(34, QLatin1Char('=')) + QString(26, QLatin1Char('-')));
    QCOMPARE(bar(1), QString(51, QLatin1Char(' ')) + QString(9, QLatin1Char('=')));
    // The renderer plays both cycles, from 0.25 s to 2.25 s.
    QCOMPARE(bar(2),
             QString(4, QLatin1Char(' ')) + QString(35, QLatin1Char('='))
                     + QString(12, QLatin1Char(' ')) + QLatin1Char('|'));
}

void TestInspect::tellsOfClipping()
{
    const QString title =
            svgTitle(QStringLiteral("<clipPath><rect fill='red'/><circle fill='red'/></clipPath>"));
    const QJsonObject report = inspect(title, {QStringLiteral("--json")}).json();
    QCOMPARE(report.value(QLatin1String("clipping")).toBool(), true);
    QCOMPARE(report.value(QLatin1String("clippingShapes")).toInt(), 2);
    QVERIFY(inspect(title).output.contains(QLatin1String("2 shapes erase the title\n")));
}

void TestInspect::drawsThePlot()
{
    const QString plot = path(QStringLiteral("plot.svg"));
    QCOMPARE(inspect(cleanTitle(), {QStringLiteral("--plot"), plot}).exitCode, 0);

    QDomDocument tree;
    QVERIFY(tree.setContent(bytesOf(plot)));
    const QDomNodeList rects = tree.elementsByTagName(QStringLiteral("rect"));
    const QString bar = QStringLiteral("bar");
    const auto number = [](const QDomElement &element, const char *name) {
        return element.attribute(QLatin1String(name)).toInt();
    };
    QVERIFY(!rectOfClass(rects, bar, 2).isNull());
    QVERIFY(rectOfClass(rects, bar, 3).isNull());

    // 720 pixels stand for 3.5 s.
    const QDomElement first = rectOfClass(rects, bar, 0);
    const QDomElement second = rectOfClass(rects, bar, 1);
    const QDomElement held = rectOfClass(rects, QStringLiteral("held"), 0);
    QCOMPARE(number(first, "width"), 411);
    QCOMPARE(number(held, "x"), number(first, "x") + 411);
    QCOMPARE(number(held, "width"), 309);
    QVERIFY(rectOfClass(rects, QStringLiteral("held"), 1).isNull());
    QCOMPARE(number(second, "x"), number(first, "x") + 617);
    QCOMPARE(number(second, "width"), 103);
    QVERIFY(number(second, "y") > number(first, "y"));

    SvgDocument document(QString::fromUtf8(bytesOf(plot)));
    QVERIFY(document.isLoaded());
    const QImage picture = renderAt(document, 0);
    const QPoint middle(number(first, "x") + 200, number(first, "y") + 6);
    QCOMPARE(picture.pixelColor(middle), QColor(first.attribute(QStringLiteral("fill"))));
    QCOMPARE(picture.pixelColor(QPoint(middle.x(), number(second, "y") + 6)).lightness() > 240,
             true);
}

void TestInspect::plotsAreCleanTitles()
{
    const QString plot = path(QStringLiteral("plot.svg"));
    inspect(readTemplate(QStringLiteral("opener.svg")), {QStringLiteral("--plot"), plot});
    const Result result = run({plot, QStringLiteral("--quiet"), QStringLiteral("--strict")});
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

void TestInspect::templatesAreClean_data()
{
    QTest::addColumn<QString>("file");
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    const QStringList names = folder.entryList({QStringLiteral("*.svg")}, QDir::Files);
    QVERIFY(names.size() >= 6);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void TestInspect::templatesAreClean()
{
    QFETCH(const QString, file);
    const Result result = run({file, QStringLiteral("--quiet"), QStringLiteral("--strict")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

void TestInspect::countsColumnsWhateverTheLineEnds_data()
{
    QTest::addColumn<QString>("lineEnd");
    QTest::newRow("line feed") << QStringLiteral("\n");
    QTest::newRow("carriage return and line feed") << QStringLiteral("\r\n");
    QTest::newRow("carriage return") << QStringLiteral("\r");
}

// Letters of two UTF-8 bytes and of two UTF-16 units stand in front; tags span lines.
void TestInspect::countsColumnsWhateverTheLineEnds()
{
    QFETCH(const QString, lineEnd);
    QString title = svgTitle(QString::fromUtf8("\n<!-- ä -->\n<text>\nTromsø 🙂 <tspan\n "
                                               "x='1>2'\n   comp-op = 'clear'>a</tspan></text>"
                                               "\n<use xlink:href='#x'/>"));
    title.replace(QLatin1Char('\n'), lineEnd);
    const QJsonArray problems = inspect(title, {QStringLiteral("--json")})
                                        .json()
                                        .value(QLatin1String("problems"))
                                        .toArray();
    QCOMPARE(problems.size(), 2);
    QVERIFY2(problemText(problems.at(0).toObject()).startsWith(QLatin1String("6:4: warning: ")),
             qPrintable(problemText(problems.at(0).toObject())));
    QVERIFY2(problemText(problems.at(1).toObject()).startsWith(QLatin1String("7:6: warning: ")),
             qPrintable(problemText(problems.at(1).toObject())));
}

void TestInspect::refusesWithOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QString>("error"); // a part of it

    const QStringList none;
    const QStringList input{QStringLiteral("-")};
    const auto text = [](const QString &content) { return svgTitle(content).toUtf8(); };
    const QString open = QStringLiteral("<g>");
    const QString close = QStringLiteral("</g>");
    QTest::newRow("no title") << none << QByteArray() << QStringLiteral("no title given");
    QTest::newRow("two titles") << QStringList{QStringLiteral("a.svg"), QStringLiteral("b.svg")}
                                << QByteArray() << QStringLiteral("b.svg is one too many");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--nonsense")} << QByteArray()
                                    << QStringLiteral("nonsense");
    QTest::newRow("two kinds of output")
            << QStringList{QStringLiteral("-"), QStringLiteral("--json"), QStringLiteral("-q")}
            << QByteArray() << QStringLiteral("--json cannot be combined with --quiet");
    QTest::newRow("plot without a name")
            << QStringList{QStringLiteral("-"), QStringLiteral("--plot"), QString()} << QByteArray()
            << QStringLiteral("expected a name");
    QTest::newRow("plot that can't be written")
            << QStringList{QStringLiteral("-"), QStringLiteral("--plot"),
                           QStringLiteral("gone/plot.svg")}
            << text(QString()) << QStringLiteral("gone/plot.svg: ");
    QTest::newRow("no such file") << QStringList{QStringLiteral("gone.svg")} << QByteArray()
                                  << QStringLiteral("gone.svg: No such file");
    QTest::newRow("empty") << input << QByteArray() << QStringLiteral("the document is empty");
    QTest::newRow("not UTF-8") << input << text(QStringLiteral("<g id='a'/>")).replace("a", "\xe9")
                               << QStringLiteral("not valid UTF-8");
    QTest::newRow("not XML") << input << text(open) << QStringLiteral("line 1: ");
    QTest::newRow("undefined entity without a document type")
            << input << text(QStringLiteral("\n<text>&nbsp;</text>"))
            << QStringLiteral("line 2: Entity 'nbsp' not declared");
    QTest::newRow("another root") << input << QByteArray("<html/>")
                                  << QStringLiteral("not an SVG document");
    QTest::newRow("too deep") << input << text(open.repeated(300) + close.repeated(300))
                              << QStringLiteral("line 1: the nesting depth exceeds 256");
    QTest::newRow("too large numbers")
            << input << text(QStringLiteral("\n\n<rect x='1e20'/>"))
            << QStringLiteral("line 3: the magnitude of numbers exceeds 10000000");
}

void TestInspect::refusesWithOneLine()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, title);
    QFETCH(const QString, error);

    const Result result = run(arguments, title);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.output, QString());
    QVERIFY2(result.errors.contains(error), qPrintable(result.errors));
    QVERIFY(result.errors.startsWith(QLatin1String("titlescene-inspect: ")));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
}

void TestInspect::surviveHostileTexts_data()
{
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<int>("exitCode");

    const auto text = [](const QString &content) { return svgTitle(content).toUtf8(); };
    const QString open = QStringLiteral("<g>");
    const QString close = QStringLiteral("</g>");
    QByteArray bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += char(i * 7919 >> 3);
    QTest::newRow("binary") << bytes << 2;
    QTest::newRow("zeros") << QByteArray(100000, '\0') << 2;
    QTest::newRow("nested without limit")
            << text(open.repeated(100000) + close.repeated(100000)) << 2;
    QTest::newRow("nested up to the limit") << text(open.repeated(255) + close.repeated(255)) << 0;
    QTest::newRow("huge") << text(QStringLiteral("<g/>").repeated(5000000)) << 2;

    QString chain;
    for (int i = 0; i < 20000; ++i)
        chain += QStringLiteral("<animate id='a%1' attributeName='x' begin='a%2.end' dur='1s'"
                                " values='0;1'/>")
                         .arg(i)
                         .arg((i + 1) % 20000);
    QTest::newRow("long cycle") << text(QStringLiteral("<rect>%1</rect>").arg(chain)) << 1;
    QTest::newRow("long text") << text(
            QStringLiteral("<text>%1</text>")
                    .arg(QStringLiteral("<tspan>a</tspan>").repeated(20000)))
                               << 1;
    QTest::newRow("times beyond the integers")
            << text(QStringLiteral("<rect><animate attributeName='x' values='0;1' begin='-1e300'"
                                   " dur='1e300'/><animate attributeName='y' values='0;1'"
                                   " begin='1e300' dur='1e300'/></rect>"))
            << 0;
}

void TestInspect::surviveHostileTexts()
{
    QFETCH(const QByteArray, title);
    QFETCH(const int, exitCode);
    const QString plot = path(QStringLiteral("plot.svg"));
    const Result result = run({QStringLiteral("-"), QStringLiteral("--plot"), plot}, title);
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(bytesOf(plot).isEmpty(), exitCode == 2);
}

void TestInspect::showsHelpAndVersion()
{
    const Result help = run({QStringLiteral("--help")});
    QCOMPARE(help.exitCode, 0);
    for (const char *word : {"--json", "--plot <FILE>", "--strict", "--quiet", "TITLE.svg"})
        QVERIFY2(help.output.contains(QLatin1String(word)), word);
    const Result version = run({QStringLiteral("--version")});
    QCOMPARE(version.exitCode, 0);
    QVERIFY(version.output.startsWith(QLatin1String("titlescene-inspect 1.")));
}

QTEST_MAIN(TestInspect)
#include "tst_inspect.moc"
