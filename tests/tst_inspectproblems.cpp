// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"

// Every problem that titlescene-inspect tells of, and what looks like one.

namespace {

// A rectangle with an animation that has these attributes.
QString animated(const QString &attributes)
{
    return svgTitle(
            QStringLiteral("<rect width=\"9\" height=\"9\"><animate %1/></rect>").arg(attributes));
}

// A picture of one pixel.
QByteArray picture(const QByteArray &mark, const QByteArray &attributes)
{
    return mark + "<image " + attributes
            + " xlink:href='data:image/png;base64,"
              "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9"
              "awAAAABJRU5ErkJggg=='/>";
}

QString played(const QString &attributes)
{
    return svgTitle(QStringLiteral("<g><animateTransform attributeName=\"transform\""
                                   " type=\"translate\" %1/></g>")
                            .arg(attributes));
}

} // namespace

class TestInspectProblems : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void findsProblems_data();
    void findsProblems();
    void findsNoProblem_data();
    void findsNoProblem();
};

void TestInspectProblems::findsProblems_data()
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
    animation("begin: after the reference",
              "id='a' attributeName='x' from='0' to='1' dur='1s'/><animate attributeName='y'"
              " from='0' to='1' dur='1s' ^begin='a.end 1s'",
              "unreadable-begin", "\"1s\" after a.end is no offset");
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
    animation("ignored: max",
              "attributeName='x' values='0;1;0' dur='1s' repeatCount='4' fill='freeze' ^max='3s'",
              "ignored-attribute", "max is ignored");
    animation("ignored: additive", "attributeName='opacity' values='0;1' dur='1s' ^additive='sum'",
              "ignored-attribute", "additive is ignored");
    animation("ignored: accumulate",
              "attributeName='x' values='0;1;0' dur='1s' repeatCount='4' fill='freeze'"
              " ^accumulate='sum'",
              "ignored-attribute", "accumulate is ignored");
    animation("ignored: keyTimes of words",
              "attributeName='visibility' values='hidden;visible' dur='1s' ^keyTimes='0;1'",
              "ignored-attribute", "keyTimes is ignored");
    animation("ignored: repeatDur", "attributeName='x' values='0;1' dur='1s' ^repeatDur='3s'",
              "ignored-attribute", "repeatDur is ignored");
    animation("ignored: by", "attributeName='x' from='5' ^by='9' dur='1s'", "ignored-attribute",
              "by is ignored");
    transform("rejected: keyTimes of the renderer's",
              "from='0 0' to='9 9' dur='1s' ^keyTimes='0;0.5'", "rejected",
              "do not play an animation with these keyTimes");
    transform("ignored: discrete of the renderer's",
              "from='0 0' to='9 9' dur='1s' ^calcMode='discrete'", "ignored-attribute",
              "calcMode \"discrete\" is ignored");
    animation("discrete", "attributeName='x' values='0;1' dur='1s' ^calcMode='discrete'",
              "discrete", "half-way");

    animation("numbers differ", "attributeName='points' ^values='0 0 1 1;9 9' dur='1s'",
              "numbers-differ", "do not hold the same number of readable numbers");
    animation("numbers: unreadable", "attributeName='points' ^values='10-5;20-5' dur='1s'",
              "numbers-differ", "the attribute is emptied");
    animation("numbers: other letters", "attributeName='d' ^values='M0 0L9 9;M0 0l9 9' dur='1s'",
              "numbers-differ", "differ in more than their numbers");
    animation("numbers: from and to", "attributeName='points' ^from='1,1' to='2,2 3,3' dur='1s'",
              "numbers-differ", "do not hold the same number");
    animation("exponent", "attributeName='points' ^values='1e3 0;2e3 0' dur='1s'", "exponent",
              "1e3 is two numbers");
    animation("number with a unit", "attributeName='x' ^values='0;10px' dur='1s'",
              "unreadable-value", "\"10px\" is none; it counts as 0");
    animation("colour and number", "attributeName='stop-color' ^values='red;7' dur='1s'",
              "unreadable-value", "the first value is a colour, and \"7\" is none");
    animation("alpha", "attributeName='stop-color' ^from='#80ff0000' to='blue' dur='1s'", "colour",
              "the colour #80ff0000 is drawn in another colour");
    animation("transparent", "attributeName='stop-color' ^values='red;transparent' dur='1s'",
              "alpha-lost", "lose their alpha");
    animation("no from", "attributeName='opacity' ^to='0.5' dur='1s'", "missing-value",
              "does not begin at the element's own value");
    animation("no to", "attributeName='x' ^from='9' dur='1s'", "missing-value",
              "has no to and no values");
    transform("no from of the renderer's", "^to='9 9' dur='1s'", "missing-value",
              "without a from, the animation does not play");
    transform("three values", "^values='0 0;9 9;0 0' dur='1s'", "transform-values",
              "two values at most right, and not 3");

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

    transform("repeat: end of the renderer's",
              "from='0 0' to='9 9' dur='1s' fill='freeze' ^repeatCount='2'", "repeat-ends-at-start",
              "holds its first value");

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
    content("animateColor from the start",
            "<rect>^<animateColor attributeName='fill' from='red' to='blue' dur='1s'/></rect>",
            "animate-color", "goes on showing its last colour");
    content("animateColor",
            "<rect><animateColor attributeName='fill' from='red' to='blue' ^begin='1s' dur='1s'/>"
            "</rect>",
            "late-animate-color", "elements after it lose their fill");
    content("target elsewhere",
            "<rect id='r'/><g><animate ^xlink:href='#r' attributeName='x' values='0;1' dur='1s'/>"
            "</g>",
            "target-elsewhere", "plays on its parent element");
    animation("conclusion at 0", "^id='CONCLUSION' attributeName='x' values='0;1' dur='1s'",
              "no-conclusion", "marks no closing part");
    row("end after the title",
        svgTitle(QStringLiteral(
                "<rect><animate id='a' attributeName='x' values='0;1' dur='1s'/></rect><g>"
                "<animateTransform attributeName='transform' type='rotate' from='0' to='9'"
                " ^begin='a.end' dur='5s'/></g>")),
        "beyond-end", "ends after the title");

    content("note: text runs", "<text><tspan>one</tspan>^<tspan>two</tspan></text>", "text-spacing",
            "\"onetwo\" becomes \"one two\"");
    content("text runs of a frame",
            "<text><tspan>one</tspan>^<tspan><animate attributeName='fill' values='red;blue'"
            " dur='1s'/>two</tspan></text>",
            "text-spacing", "\"onetwo\" becomes \"one two\"");

    const QString root = QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg'%1><g/></svg>");
    row("no view box", QLatin1Char('^') + root.arg(QString()), "view-box", "has no viewBox");
    row("fractional view box", root.arg(QStringLiteral("\n  ^viewBox='0 0 100.5 50'")), "view-box",
        "a fraction in the viewBox counts as 0");
    row("view box of two numbers", root.arg(QStringLiteral(" ^viewBox='100 50'")), "view-box",
        "is not four whole numbers");
    row("view box with a line break", root.arg(QStringLiteral(" ^viewBox='0 0&#10;100 50'")),
        "view-box", "a line break or tab separates no numbers");
    row("view box over two lines", root.arg(QStringLiteral(" ^viewBox='0 0\n100 50'")), "view-box",
        "a line break or tab separates no numbers");
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
    content("clip path by a style sheet",
            "^<style>rect {\n clip-path : url(#c) }</style><clipPath id='c'/>", "not-drawn",
            "nothing is clipped by clip-path");
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
            "the colour rgba(255, 0, 0, 1) is drawn in another colour");
    content("hsl", "<rect ^style='stroke:hsl(120,100%,50%)'/>", "colour",
            "the colour hsl(120,100%,50%) is");
    content("alpha in a colour", "<rect ^fill='#ff000080'/>", "colour", "the colour #ff000080 is");
    content("left out",
            "<g>\n^<animateTransform attributeName='transform' type='bend' from='0' to='1'\n "
            "dur='1s'/></g>",
            "left-out", "can't read this animateTransform element");
    content("font list", "<text ^font-family='Arial, sans-serif'>a</text>", "font-list",
            "a list of font families");

    content("flowed text", "^<flowRoot/>", "not-drawn", "flowed text is not drawn");
    content("discard", "^<discard begin='1s'/>", "not-drawn", "discard elements remove nothing");
    content("text in capitals", "<text ^style='text-transform:uppercase'>a</text>", "not-drawn",
            "text-transform is ignored");
    content("short form of a font", "^<style>.a{font:bold 9px Arial}</style><text class='a'/>",
            "not-drawn", "the short form of fonts");
    content("letters right to left", "<text ^direction='rtl'>a</text>", "not-drawn",
            "direction is ignored");
    content("text in a shape", "<rect id='r'/><text ^style='shape-inside:url(#r)'>a</text>",
            "not-drawn", "drawn on one line");
    content("dashes in parts of a path", "<path ^pathLength='1' stroke-dasharray='.5'/>",
            "not-drawn", "pathLength is ignored");
    content("dashes of nothing", "<path ^stroke-dasharray='0'/>", "not-drawn",
            "dashes of no length");
    content("event handler", "<rect ^onclick='x()'/>", "not-drawn", "that in onclick included");
    animation("animated letter-spacing", "^attributeName='letter-spacing' values='0;9' dur='1s'",
              "not-drawn", "letter-spacing is ignored");
    row("background",
        QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'"
                       " ^style='background:#123'/>"),
        "not-drawn", "background of the root");
    content("css animation", "^<style>@keyframes k{} rect{animation:k 1s}</style>", "not-drawn",
            "CSS animations do not play");

    content("attribute against style", "<rect ^stroke='#ff0000' style='stroke:green'/>",
            "style-loses", "the attribute stroke is drawn");
    content("attribute against rule",
            "<style>rect.a{stroke:green}</style><rect class='b a' ^stroke='#ff0000'/>",
            "style-loses", "the attribute stroke is drawn");
    content("selector of attributes", "^<style>[width]{fill:green}</style>", "style-sheet",
            "the selector [width] selects nothing");
    content("selector of places", "^<style>rect, g:first-child {fill:green}</style>", "style-sheet",
            "the selector g:first-child selects nothing");
    content("selector of the root", "^<style>svg{fill:green}</style>", "style-sheet",
            "the selector svg selects nothing");
    content("selector with a condition", "^<style>g:nth-child(2) {fill:green}</style>",
            "style-sheet", "selects nothing, and the rules after it may be lost");
    content("custom property", "^<style>g{--a:green}</style>", "style-sheet",
            "the property --a is not read, and the rules after it may be lost");
    content("namespace of a style sheet",
            "^<style>@namespace 'http://www.w3.org/2000/svg'; g{fill:green}</style>", "style-sheet",
            "what stands in @namespace is ignored");
    content("media", "^<style>@media screen { rect{fill:green} }</style>", "style-sheet",
            "what stands in @media is ignored");
    content("font of a style sheet",
            "^<style>@font-face{font-family:A;src:url(data:font/woff;base64,AA)}</style>",
            "style-sheet", "fonts of a style sheet are not loaded");
    content("late style sheet", "<g class='a'/>^<style>.a{fill:green}</style>", "style-sheet",
            "only to what stands after it");
    content("important", "<rect ^style='opacity:1 !important'/>", "style", "its !important");
    content("variable", "<rect ^style='fill:var(--a, green)'/>", "style", "are not worked out");
    content("calculation", "<rect ^width='calc(1px + 2px)'/>", "style", "so width is ignored");
    content("place in a style", "<circle ^style='r:9px'/>", "style",
            "r is read from an attribute only");
    content("place in a rule", "^<style>.a{cx:9px}</style><circle class='a'/>", "style",
            "cx is read from an attribute only");
    content("transform in a style", "<rect ^style='transform:translate(9px,9px)'/>", "style",
            "a transform with units");

    content("colour of four numbers", "<rect ^style='stop-color:rgb(1,2,3,0.5)'/>", "colour",
            "the colour rgb(1,2,3,0.5) is");
    content("colour of a rule", "^<style>.a{fill:hsl(1,2%,3%)}</style>", "colour",
            "the colour hsl(1,2%,3%) is");
    content("colour by an unknown name", "<rect ^style='fill:rebeccapurple'/>", "colour",
            "the colour rebeccapurple is");
    animation("animated colour",
              "attributeName='stop-color' ^values='hsl(0,9%,9%);hsl(9,9%,9%)' dur='1s'", "colour",
              "the colour hsl(0,9%,9%) is");
    content("colour of a use",
            "<defs><rect id='r' style='fill:currentColor'/></defs>"
            "<use xlink:href='#r' ^color='green'/>",
            "colour", "does not reach the currentColor");
    content("percentage", "<rect width='9' ^height='50%'/>", "unit",
            "a percentage of height is not taken of anything");
    content("percentage of opacity", "<rect ^style='fill-opacity:50%'/>", "unit",
            "a percentage of fill-opacity is not read");
    content("percentage of a radial gradient",
            "<radialGradient id='g' ^cx='50%'/><rect fill='url(#g)'/>", "unit",
            "a percentage of cx");
    content("points", "<text ^font-size='12pt'>a</text>", "unit", "an inch has 90 pixels");
    content("ems", "<text ^style='font-size:2em'>a</text>", "unit", "the unit em of font-size");
    content("dashes with units", "<path ^stroke-dasharray='3px 2px'/>", "unit",
            "the unit px of stroke-dasharray");
    content("font-size by name", "<text ^font-size='x-large'>a</text>", "unit",
            "the font-size x-large is not read");
    animation("animated percentage", "attributeName='width' ^values='0%;50%' dur='1s'", "unit",
              "a percentage of width");
    content("gradient of a gradient",
            "<linearGradient id='a' x1='0.2'/><linearGradient id='b' ^xlink:href='#a'/>"
            "<rect fill='url(#b)'/>",
            "gradient", "x1 of the other gradient");
    content("gradient without a place",
            "<linearGradient id='a' ^gradientUnits='userSpaceOnUse'/><rect fill='url(#a)'/>",
            "gradient", "the gradient has no x2");
    content("focal circle", "<radialGradient id='a' ^fr='0.2'/><rect fill='url(#a)'/>", "gradient",
            "fr is ignored");
    content("stretched picture", picture("^", "width='20' height='9'").constData(), "picture",
            "the picture of 1 x 1 pixels is stretched to 20 x 9");
    content("picture without a size", picture("^", "").constData(), "picture",
            "without width and height is not drawn");
    content("opacity of fill and stroke", "<rect ^opacity='0.5' style='fill:green;stroke:red'/>",
            "opacity", "the fill is seen through the stroke");
    content("animated opacity of fill and stroke",
            "<g style='stroke:red'><rect><animate ^attributeName='opacity' values='0;1' dur='1s'/>"
            "</rect></g>",
            "opacity", "the fill is seen through the stroke");

    content("tspan with a place", "<text x='1' y='2'>a <tspan ^y='9'>b</tspan></text>",
            "text-place", "y of a tspan is ignored");
    content("tspan with a shift", "<text>a <tspan ^dy='1.2em'>b</tspan></text>", "text-place",
            "dy of a tspan is ignored");
    content("first tspan with a place", "<text y='2'><tspan ^x='3' y='2'>b</tspan></text>",
            "text-place", "x of a tspan is ignored");
    content("second tspan with the place of its text",
            "<text x='1' y='2'><tspan>a</tspan> <tspan ^x='1' y='2'>b</tspan></text>", "text-place",
            "x of a tspan is ignored");
    content("letters with places", "<text ^x='1 2 3'>abc</text>", "text-place",
            "a list for x is not read");
    content("text with a shift", "<text ^dx='5'>abc</text>", "text-place",
            "dx of a text is ignored");
    content("hidden tspan", "<text>a <tspan ^visibility='hidden'>b</tspan></text>", "text-run",
            "visibility of a tspan is ignored");
    content("tspan that appears",
            "<text>a <tspan><animate ^attributeName='fill-opacity' values='0;1' dur='1s'/>b"
            "</tspan></text>",
            "text-run", "fill-opacity of a tspan is ignored");
    content("nested tspan", "<text>a <tspan>b ^<tspan style='fill:green'>c</tspan></tspan></text>",
            "text-run", "looks like the outer one");
    content("outlined text",
            "<g style='stroke:red'>^<text style='fill:none;font-size:100px'>a</text></g>",
            "text-outline", "are filled with the stroke");
    content("text with an outline", "^<text style='stroke:red' font-size='50'>a</text>",
            "text-outline", "in hundredths of its font-size");
    content("tspan with an outline",
            "<text font-size='50'>a ^<tspan style='stroke:red'>b</tspan></text>", "text-outline",
            "in hundredths of its font-size");
    content("wide spaces", "^<text>a&#160;&#160;b</text>", "text-spacing",
            "several spaces count as one");

    content("unknown element", "^<Rect/>", "unknown-element", "there is no SVG element Rect");
    content("required features",
            "<switch><g ^requiredFeatures='http://www.w3.org/TR/SVG11/feature#Shape'/></switch>",
            "condition", "requiredFeatures never holds");
    content("language outside of a switch", "<g ^systemLanguage='de'/>", "condition",
            "systemLanguage counts in a switch only");

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
    row("style sheet beside brackets",
        QStringLiteral("^<?xml-stylesheet href='a.css' title='<b>'?>\n") + svgTitle(QString()),
        "external", "the style sheet is left out");
    content("picture of another kind",
            "<image ^xlink:href='data:image/gif;base64,R0lGODlhAQABAA=='/>", "picture",
            "it is no PNG or JPEG");
    content("reference without a prefix", "<g id='g'/><use ^href='#g'/>", "plain-href",
            "href without the prefix xlink is ignored");

    content("note: adjusted and animated",
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
    content("note: opacity of a group", "<g ^opacity='0.5'><rect/><text>a</text></g>", "opacity",
            "where two shapes of g overlap");
    content("note: opacity of a use",
            "<defs><g id='a'><rect/><rect/></g></defs><use xlink:href='#a' ^style='opacity:.5'/>",
            "opacity", "where two shapes of use overlap");
    content("note: fading group",
            "<g id='b'><animate ^attributeName='opacity' values='0;1' dur='1s'/><rect/><rect/></g>",
            "opacity", "where two shapes of g#b overlap");
    row("note: no namespace", QStringLiteral("^<svg viewBox='0 0 9 9'/>"), "namespace",
        "is not in the namespace of SVG");
    row("note: no namespace of references",
        QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'><g id='g'/>"
                       "<use ^xlink:href='#g'/></svg>"),
        "namespace", "the prefix xlink is not declared");
    content("note: repeated id", "<g id='a'/><g ^id='a'/>", "repeated-id", "earlier element");
}

void TestInspectProblems::findsProblems()
{
    QFETCH(const QString, title);
    QFETCH(const QString, code);
    QFETCH(const QString, reason);
    verifyOneProblem(title, code, reason);
}

// What looks like a problem, and plays as in a browser.
void TestInspectProblems::findsNoProblem_data()
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
    animation("sign in an id with an offset forward",
              "id='my-anim' attributeName='x' values='0;1' dur='1s'/><animate attributeName='y'"
              " values='0;1' dur='1s' begin='my-anim.end+1s'");
    animation("negative begin", "attributeName='x' values='0;1' dur='1s' begin='-0.5s'");
    animation("later one after",
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
    content("run around an animation",
            "<text>one<tspan><animate attributeName='fill' values='red;blue' dur='1s'/>two</tspan>"
            "</text>");
    content("shapes that erase and move away",
            "<clipPath><rect fill='#000000' width='9' height='9'><animate attributeName='x'"
            " values='0;9' dur='1s'/></rect></clipPath>");
    content("link", "<a xlink:href='http://example.org/'><rect/></a>");
    content("no clip path", "<rect clip-path='none' style='filter:none'/>");
    content("animated style colour",
            "<rect style='fill:#ff0000'><animate attributeName='fill' values='red;blue' dur='1s'/>"
            "</rect>");
    content("picture", picture("", "width='9' height='9'").constData());
    animation("limits that change nothing",
              "attributeName='x' values='0;1' begin='1s' dur='1s' min='0.5s' max='4s' end='2s'"
              " restart='never' accumulate='sum' keySplines='0.5 0 1 1'");
    animation("no end", "attributeName='x' values='0;1' dur='1s' end='indefinite'");
    animation("words at even times",
              "attributeName='visibility' values='hidden;visible' dur='1s' keyTimes='0;0.5'"
              " calcMode='discrete'");
    content("mark of the closing part",
            "<rect><animate attributeName='x' values='0;1' dur='2s'/></rect>"
            "<animateMotion id='CONCLUSION' begin='1s' dur='1s'/>");
    content("settings without effect",
            "<text style='letter-spacing:0px;word-spacing:0;text-decoration:none;"
            "mix-blend-mode:normal;line-height:1.25' text-decoration='none'>a</text>");
    content("comment in a style sheet", "<style>/* mask: a; @media */ rect{fill:green}</style>");
    content("selectors of ids", "<style>rect[id]{fill:green}</style><rect id='a'/>");
    content("hover", "<style>rect:hover{fill:green}</style>");
    content("style as the attribute", "<rect stroke='#ff0000' style='stroke:#ff0000'/>");
    content("last of two rules as the attribute",
            "<style>.a{stroke:green} .a{stroke:#f00}</style><rect class='a' stroke='#f00'/>");
    content("style against a rule",
            "<style>.a{fill:red}</style><rect class='a' style='fill:blue'/>");
    content("colours",
            "<rect style='fill:rgb(1, 2, 3)'/><rect style='fill:#abc'/><rect style='fill:none'/>"
            "<rect style='fill:rgb(1%, 2%, 3%)'/><rect style='fill:DarkSlateGrey'/>"
            "<rect style='fill:transparent'/>");
    content("pixels", "<rect width='9px' style='stroke-width:2px;font-size:9px'/>");
    content("exponent of a length", "<rect width='5e1'/>");
    content("percentages of a linear gradient",
            "<linearGradient id='g' x1='5%'><stop offset='5%'/></linearGradient>"
            "<rect style='fill:url(#g)'/>");
    content("opacity of one shape", "<g opacity='0.5'><rect style='stroke:none'/></g>");
    content("opacity of 0", "<g opacity='0'><rect/><rect/></g>");
    content("first tspan in place", "<text x='1' y='2'><tspan x='1' y='2'>a</tspan></text>");
    content("kept spaces", "<text xml:space='preserve'>a&#160;&#160;b</text>");
    content("outline of a large text",
            "<text style='font-size:100px;stroke:red;fill:blue'>a</text>");
    content("content for one program",
            "<switch><foreignObject requiredExtensions='urn:a'/><g/></switch>");
    content("settings of a program",
            "<s:sheet xmlns:s='urn:a' id='v'><s:grid id='g'/></s:sheet><metadata><Work/></metadata>"
            "<defs><s:effect xmlns:s='urn:a' id='e'/><style id='s'/></defs>");
    QTest::newRow("view box with commas")
            << QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='5,5,100,50'/>");
    QTest::newRow("other declared encoding")
            << QStringLiteral("<?xml version='1.0' encoding='KOI-7'?>") + cleanTitle();
}

void TestInspectProblems::findsNoProblem()
{
    QFETCH(const QString, title);
    const InspectResult result =
            inspectTitle(title, {QStringLiteral("--quiet"), QStringLiteral("--strict")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

QTEST_MAIN(TestInspectProblems)
#include "tst_inspectproblems.moc"
