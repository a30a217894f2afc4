// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"

// Where titlescene-inspect finds what drawing programs write, and what it has nothing to say of.

class TestInspectDrawings : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void findsProblems_data();
    void findsProblems();
    void findsNoProblem_data();
    void findsNoProblem();
};

void TestInspectDrawings::findsProblems_data()
{
    QTest::addColumn<QString>("content"); // "^": where the problem is
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("reason"); // a part of it

    const auto row = [](const char *name, const char *content, const char *code,
                        const char *reason) {
        QTest::newRow(name) << QString::fromUtf8(content) << QString::fromLatin1(code)
                            << QString::fromLatin1(reason);
    };
    row("kept spaces of an animated title",
        "<g>\n <text ^xml:space='preserve' x='1' y='9'><tspan x='1' y='9'>a</tspan>"
        "<animate attributeName='x' from='1' to='9' dur='1s'/></text></g>",
        "text-spacing", "as for every animated frame, adds spaces to this text: \"a\" becomes");
    row("note: kept spaces of a still title",
        "<text ^xml:space='preserve' x='1' y='9'><tspan x='1' y='9'>a</tspan></text>",
        "text-spacing", "as for a user's colours");
    row("kept spaces of a group",
        "<g xml:space='preserve'>^<text><tspan>a</tspan><animate attributeName='x' from='1'"
        " to='9' dur='1s'/></text></g>",
        "text-spacing", "adds spaces");
    row("space at the begin of a tspan", "<text>a^<tspan> b</tspan></text>", "text-spacing",
        "\"a b\" becomes \"ab\"");
    row("place of a first tspan", "<text x='1' y='9'><tspan ^x='2' y='9'>a</tspan></text>",
        "text-place", "x of a tspan is ignored");
    row("anchor of a tspan", "<text><tspan ^style='text-anchor:end'>a</tspan></text>", "text-run",
        "text-anchor of a tspan");
    row("opacity of a tspan", "<text><tspan ^opacity='0.5'>a</tspan></text>", "text-run",
        "opacity of a tspan");
    row("title of a text", "<text>^<title>a</title>b</text>", "text-run",
        "the letters of title are drawn");
    row("link with a colour", "<text>^<a style='fill:red'>b</a></text>", "text-run",
        "a link inside a text");
    row("arc",
        "<path d='M1 1'><animate attributeName='d' ^from='M0 0a1 1 0 0 1 2 0' to='M0 0a1 1 0 0 1 9 "
        "0'"
        " dur='1s'/></path>",
        "animated-arc", "is not drawn while its d is animated");
    row("reference",
        "<g id='a1'/><g id='a2'/><use xlink:href='#a1'><animate attributeName='xlink:href'"
        " ^values='#a1;#a2' dur='1s'/></use>",
        "animated-name", "the name \"#a1\" is taken for numbers");
    row("weight",
        "<text>a <animate attributeName='font-weight' ^from='400' to='700' dur='1s'/></text>",
        "unreadable-value", "a font-weight that is animated as a number");
    row("decimals of a place",
        "<g transform='scale(100) scale(100)'><rect width='1' height='1'><animate"
        " attributeName='x' from='0' ^to='0.0004' dur='1s'/></rect></g>",
        "decimals-lost", "4 pixels beside");
    row("line without a length",
        "<g style='stroke:red;stroke-linecap:round'>^<path d='M1 1 2 2m3 3c0 0 0 0 0 0'/></g>",
        "not-drawn", "the caps of a line without a length");
    row("dots", "<line style='stroke:red' stroke-linecap='round' x2='9' ^stroke-dasharray='0,4'/>",
        "not-drawn", "the caps of dashes without a length");
    row("kept dots",
        "<line style='stroke:red' stroke-linecap='round' x2='9'><animate"
        " attributeName='stroke-dasharray' ^values='1 4;0 4;0 4' dur='1s'/></line>",
        "not-drawn", "the caps of dashes without a length");
    row("none among colours",
        "<rect width='9' height='9'><animate attributeName='stroke' ^values='none;red' dur='1s'/>"
        "</rect>",
        "colour", "none is not among the values");
    row("currentColor among colours",
        "<rect width='9' height='9'><animate attributeName='stroke' ^from='currentColor' to='red'"
        " dur='1s'/></rect>",
        "colour", "does not go over into currentColor");
    row("eight digits",
        "<rect width='9' height='9'><animate attributeName='stroke' from='#ff0000' ^to='#ff0080ff'"
        " dur='1s'/></rect>",
        "colour", "the colour #ff0080ff");
    row("fill of a rule beside an opacity",
        "<style>.a{fill:red}</style><rect class='a' ^fill-opacity='0.5' width='9' height='9'/>",
        "style-loses", "the fill of the style sheet is lost");
    row("stroke of a rule beside an animation",
        "<style>.a{stroke:red}</style><path class='a' d='M0 0h9'><animate ^attributeName="
        "'stroke-dashoffset' from='1' to='2' dur='1s'/></path>",
        "style-loses", "because the element has a stroke-dashoffset of its own");
    row("font of a rule beside a size",
        "<style>text{font-family:DejaVu Sans}</style><text ^style='font-size:9px'>a</text>",
        "style-loses", "the font-family of the style sheet is lost");
    row("transform of a style", "<g ^style='transform:rotate(45)'/>", "style",
        "needs units and commas");
    row("matrix of a style", "<g ^style='transform:matrix(1 0 0 1 9 9)'/>", "style",
        "needs units and commas");
}

void TestInspectDrawings::findsProblems()
{
    QFETCH(const QString, content);
    QFETCH(const QString, code);
    QFETCH(const QString, reason);
    verifyOneProblem(svgTitle(content), code, reason);
}

// What looks like a problem, and plays as in a browser.
void TestInspectDrawings::findsNoProblem_data()
{
    QTest::addColumn<QString>("content");

    const auto row = [](const char *name, const char *content) {
        QTest::newRow(name) << QString::fromUtf8(content);
    };
    row("first tspan at the origin of its text",
        "<text transform='translate(9 9)'><tspan x='0' y='0'>a</tspan></text>");
    row("first tspan at the same place in other words",
        "<text x='9' y='9.0'><tspan x='9.0' y='9'>a</tspan></text>");
    row("tspan after an animation",
        "<text x='9'><animate attributeName='y' from='1' to='9' dur='1s'/><tspan x='9'>a</tspan>"
        "</text>");
    row("empty tspan elsewhere", "<text>a <tspan x='9' y='9'/></text>");
    row("anchor of the text again",
        "<g style='text-anchor:end'><text><tspan style='text-anchor:end'>a</tspan> b</text></g>");
    row("kept spaces around one run",
        "<text xml:space='preserve'>a  b<animate attributeName='x' from='1' to='9' dur='1s'/>"
        "<animate attributeName='y' from='1' to='9' dur='1s'/></text>");
    row("link in a text", "<text>a <a xlink:href='http://example.org/'>b</a></text>");
    row("title of a group", "<g><title>a</title><desc>b</desc><text>c</text></g>");
    row("arc that stays",
        "<path d='M0 0a1 1 0 01 2 0'><animate attributeName='fill-opacity' from='0' to='1'"
        " dur='1s'/></path>");
    row("curves",
        "<path d='M0 0'><animate attributeName='d' from='M0 0c1 1 2 2 3 0zM5 5h1'"
        " to='M0 0c3 3 2 2 3 0zM5 5h9' dur='1s'/></path>");
    row("words of weights",
        "<text>a <animate attributeName='font-weight' values='normal;bold' dur='1s'/></text>");
    row("point without a cap",
        "<path style='stroke:red' d='M1 1z'/><path stroke-linecap='round' d='M1 1z'/>"
        "<path style='stroke:red;stroke-linecap:round' d='M1 1M2 2'/>");
    row("line that grows",
        "<line style='stroke:red;stroke-linecap:round' x1='9' x2='9'><animate attributeName='x2'"
        " from='9' to='90' dur='1s' fill='freeze'/></line>");
    row("dash that grows",
        "<path d='M0 9h90' style='stroke:red;stroke-linecap:round' stroke-dasharray='0 90'>"
        "<animate attributeName='stroke-dasharray' from='0 90' to='90 0' dur='1s' fill='freeze'/>"
        "</path>");
    row("gap without a length",
        "<path d='M0 9h90' style='stroke:red;stroke-linecap:round;stroke-dasharray:9 0'/>");
    row("rules of other properties",
        "<style>.a{fill:red;stroke:none;stroke-miterlimit:10}</style><rect class='a' width='9'"
        " height='9' stroke-width='2' opacity='0.5'/>");
    row("rules with what is there without them",
        "<style>.a{fill:red} .b{fill:red;fill-rule:nonzero}</style><g class='a'><rect class='b'"
        " fill-opacity='0.5' width='9' height='9'/></g>");
    row("all of the properties",
        "<style>.a{fill:red}</style><rect class='a' style='fill:blue' fill-opacity='0.5' width='9'"
        " height='9'/>");
    row("size of a use", "<g id='a'/><use xlink:href='#a' width='100%' height='100%'/>");
    row("decimals that nobody sees",
        "<g transform='scale(10)'><path d='M0 0'><animate attributeName='d'"
        " from='M0.12345 0h1.0004' to='M0.98765 0h1.0006' dur='1s'/></path></g>");
    row("transform of a style that CSS takes",
        "<g style='transform:scale(1.5) matrix(1,0,0,1,9,9) translate(0,0)'/>");
    QTest::newRow("root that keeps its ratio")
            << QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 100 50'"
                              " width='200' height='100' preserveAspectRatio='none'/>");
    QTest::newRow("root of its page")
            << QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 100 50'"
                              " width='100%' height='100%' preserveAspectRatio='none'/>");
}

void TestInspectDrawings::findsNoProblem()
{
    QFETCH(const QString, content);
    const QString title = content.startsWith(QLatin1String("<svg")) ? content : svgTitle(content);
    const InspectResult result =
            inspectTitle(title, {QStringLiteral("--quiet"), QStringLiteral("--strict")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

QTEST_MAIN(TestInspectDrawings)
#include "tst_inspectdrawings.moc"
