// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <limits>

// The animations that the renderer plays itself, animateTransform and animateColor: every picture
// is compared with that of a still title that has the values of that time.

namespace {

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

QString title(const QString &content)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 96 64\">")
            + content + QStringLiteral("</svg>");
}

QString animateTransform(const QString &attributes)
{
    return QStringLiteral("<animateTransform attributeName=\"transform\" %1/>").arg(attributes);
}

QString animateColor(const QString &attributes)
{
    return QStringLiteral("<animateColor %1/>").arg(attributes);
}

/// Moves by (32, 16) within the second after its begin.
QString slide(const QString &attributes)
{
    return animateTransform(QStringLiteral("type=\"translate\" from=\"0 0\" to=\"32 16\" ")
                            + attributes);
}

/// A shape that looks different whichever way it is moved, turned, stretched or bent.
QString shape(const QString &attributes, const QString &content = QString())
{
    return QStringLiteral("<path d=\"M8 8 L28 8 L28 12 L16 20 Z\" %1>%2</path>")
            .arg(attributes, content);
}

/// The shape stands at (2, 1) as long as no animation replaces that.
QString shapeTitle(const QString &animation)
{
    return title(shape(QStringLiteral("fill=\"#c02040\" transform=\"translate(2 1)\""), animation));
}

QString stillShapeTitle(const QString &transform)
{
    return title(shape(QStringLiteral("fill=\"#c02040\" transform=\"%1\"").arg(transform)));
}

const QString atRest = QStringLiteral("translate(2 1)");

} // namespace

class RendererPlayedTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void transforms_data();
    void transforms();
    void playsAnyTypeOfTransform_data();
    void playsAnyTypeOfTransform();
    void addsTransforms_data();
    void addsTransforms();
    void colors_data();
    void colors();
    void playsInEveryPlace_data();
    void playsInEveryPlace();
    void countsTheLongestOfAll();

    void playsBesideAnimatedAttributes();
    void playsAfterAnotherAnimation();
    void playsInAnyOrderOfTimes();

    void bearsExtremeTimes_data();
    void bearsExtremeTimes();
    void bearsExtremeValues_data();
    void bearsExtremeValues();
    void leavesOutWhatTheRendererCantRead_data();
    void leavesOutWhatTheRendererCantRead();
    void refusesTimesBeyondInt_data();
    void refusesTimesBeyondInt();
    void acceptsTimesWithinInt_data();
    void acceptsTimesWithinInt();
    void bearsTimesThatAreAdjusted_data();
    void bearsTimesThatAreAdjusted();
    void bearsTimesThatAreAnimated_data();
    void bearsTimesThatAreAnimated();
};

void RendererPlayedTest::transforms_data()
{
    QTest::addColumn<QString>("animation");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");

    const QString once = slide(QStringLiteral("begin=\"0s\" dur=\"1s\""));
    QTest::newRow("at the begin") << once << 0 << QStringLiteral("translate(0 0)");
    QTest::newRow("first quarter") << once << 250 << QStringLiteral("translate(8 4)");
    QTest::newRow("last millisecond") << once << 999 << QStringLiteral("translate(31.968 15.984)");
    QTest::newRow("at the end") << once << 1000 << QStringLiteral("translate(32 16)");
    QTest::newRow("after the end") << once << 1001 << atRest;
    QTest::newRow("long after the end") << once << highest << atRest;
    QTest::newRow("before 0") << once << -1 << atRest;
    QTest::newRow("long before 0") << once << lowest << atRest;

    const QString frozen = slide(QStringLiteral("begin=\"0s\" dur=\"1s\" fill=\"freeze\""));
    QTest::newRow("frozen, half-way") << frozen << 500 << QStringLiteral("translate(16 8)");
    QTest::newRow("frozen, at the end") << frozen << 1000 << QStringLiteral("translate(32 16)");
    QTest::newRow("frozen, after the end") << frozen << 1001 << QStringLiteral("translate(32 16)");
    QTest::newRow("frozen, long after the end")
            << frozen << highest << QStringLiteral("translate(32 16)");
    QTest::newRow("frozen, before the begin") << frozen << -1 << atRest;
    QTest::newRow("fill of another kind")
            << slide(QStringLiteral("dur=\"1s\" fill=\"remove\"")) << 1001 << atRest;

    const QString late = slide(QStringLiteral("begin=\"500ms\" dur=\"1s\" fill=\"freeze\""));
    QTest::newRow("late, before the begin") << late << 499 << atRest;
    QTest::newRow("late, at the begin") << late << 500 << QStringLiteral("translate(0 0)");
    QTest::newRow("late, half-way") << late << 1000 << QStringLiteral("translate(16 8)");
    const QString early = slide(QStringLiteral("begin=\"-0.5s\" dur=\"1s\""));
    QTest::newRow("begun before 0") << early << 0 << QStringLiteral("translate(16 8)");
    QTest::newRow("begun before 0, before the begin") << early << -501 << atRest;

    const QString twice = slide(QStringLiteral("dur=\"1s\" repeatCount=\"2\""));
    QTest::newRow("twice, first end") << twice << 1000 << QStringLiteral("translate(32 16)");
    QTest::newRow("twice, second quarter") << twice << 1250 << QStringLiteral("translate(8 4)");
    QTest::newRow("twice, at the end") << twice << 2000 << QStringLiteral("translate(0 0)");
    QTest::newRow("twice, after the end") << twice << 2001 << atRest;
    QTest::newRow("twice, frozen")
            << slide(QStringLiteral("dur=\"1s\" repeatCount=\"2\" fill=\"freeze\"")) << 9000
            << QStringLiteral("translate(0 0)");
    const QString partly = slide(QStringLiteral("dur=\"1s\" repeatCount=\"2.25\" fill=\"freeze\""));
    QTest::newRow("part of a cycle, running") << partly << 2125 << QStringLiteral("translate(4 2)");
    QTest::newRow("part of a cycle, frozen") << partly << 9000 << QStringLiteral("translate(8 4)");
    const QString half = slide(QStringLiteral("dur=\"1s\" repeatCount=\"0.5\""));
    QTest::newRow("half a cycle, at the end") << half << 500 << QStringLiteral("translate(16 8)");
    QTest::newRow("half a cycle, after the end") << half << 501 << atRest;

    const QString never = slide(QStringLiteral("dur=\"1s\" repeatCount=\"0\""));
    QTest::newRow("repeated never, at the begin") << never << 0 << QStringLiteral("translate(0 0)");
    QTest::newRow("repeated never, later") << never << 1 << atRest;
    QTest::newRow("repeated never, frozen")
            << slide(QStringLiteral("dur=\"1s\" repeatCount=\"0\" fill=\"freeze\"")) << 500
            << QStringLiteral("translate(0 0)");

    const QString endless = slide(QStringLiteral("dur=\"1s\" repeatCount=\"indefinite\""));
    QTest::newRow("endless, before the begin") << endless << -1 << atRest;
    QTest::newRow("endless, first cycle") << endless << 500 << QStringLiteral("translate(16 8)");
    QTest::newRow("endless, later cycle") << endless << 100250 << QStringLiteral("translate(8 4)");
    QTest::newRow("endless, start of a later cycle")
            << endless << 3000 << QStringLiteral("translate(0 0)");
    QTest::newRow("endless, latest time")
            << endless << highest << QStringLiteral("translate(20.704 10.352)");
}

void RendererPlayedTest::transforms()
{
    QFETCH(QString, animation);
    QFETCH(int, ms);
    QFETCH(QString, transform);
    SvgDocument document(shapeTitle(animation));
    QVERIFY(document.isLoaded());
    SvgDocument twin(stillShapeTitle(transform));
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
}

void RendererPlayedTest::playsAnyTypeOfTransform_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("halfWay");
    QTest::addColumn<QString>("atEnd");
    QTest::newRow("translate") << QStringLiteral("type=\"translate\" from=\"4 2\" to=\"20 26\"")
                               << QStringLiteral("translate(12 14)")
                               << QStringLiteral("translate(20 26)");
    QTest::newRow("translate by one number")
            << QStringLiteral("type=\"translate\" from=\"4\" to=\"20\"")
            << QStringLiteral("translate(12)") << QStringLiteral("translate(20)");
    QTest::newRow("numbers with commas")
            << QStringLiteral("type=\"translate\" from=\"4,2\" to=\"20,26\"")
            << QStringLiteral("translate(12 14)") << QStringLiteral("translate(20 26)");
    QTest::newRow("list of two values")
            << QStringLiteral("type=\"translate\" values=\"4 2;20 26\"")
            << QStringLiteral("translate(12 14)") << QStringLiteral("translate(20 26)");
    QTest::newRow("from and by") << QStringLiteral("type=\"translate\" from=\"4 2\" by=\"16 24\"")
                                 << QStringLiteral("translate(12 14)")
                                 << QStringLiteral("translate(20 26)");
    QTest::newRow("scale") << QStringLiteral("type=\"scale\" from=\"1 1\" to=\"2 3\"")
                           << QStringLiteral("scale(1.5 2)") << QStringLiteral("scale(2 3)");
    QTest::newRow("scale by one number")
            << QStringLiteral("type=\"scale\" from=\"1\" to=\"3\"") << QStringLiteral("scale(2)")
            << QStringLiteral("scale(3)");
    QTest::newRow("scale that shrinks")
            << QStringLiteral("type=\"scale\" from=\"2 2\" to=\"0.5 1\"")
            << QStringLiteral("scale(1.25 1.5)") << QStringLiteral("scale(0.5 1)");
    QTest::newRow("rotate about the origin")
            << QStringLiteral("type=\"rotate\" from=\"0\" to=\"45\"")
            << QStringLiteral("rotate(22.5)") << QStringLiteral("rotate(45)");
    QTest::newRow("rotate about a point")
            << QStringLiteral("type=\"rotate\" from=\"0 40 30\" to=\"-180 40 30\"")
            << QStringLiteral("rotate(-90 40 30)") << QStringLiteral("rotate(-180 40 30)");
    QTest::newRow("rotate about a moving point")
            << QStringLiteral("type=\"rotate\" from=\"0 20 10\" to=\"180 40 30\"")
            << QStringLiteral("rotate(90 30 20)") << QStringLiteral("rotate(180 40 30)");
    QTest::newRow("skewX") << QStringLiteral("type=\"skewX\" from=\"0\" to=\"45\"")
                           << QStringLiteral("skewX(22.5)") << QStringLiteral("skewX(45)");
    QTest::newRow("skewY") << QStringLiteral("type=\"skewY\" from=\"30\" to=\"0\"")
                           << QStringLiteral("skewY(15)") << QStringLiteral("skewY(0)");
}

void RendererPlayedTest::playsAnyTypeOfTransform()
{
    QFETCH(QString, attributes);
    QFETCH(QString, halfWay);
    QFETCH(QString, atEnd);
    SvgDocument document(shapeTitle(animateTransform(
            attributes + QStringLiteral(" begin=\"1s\" dur=\"2s\" fill=\"freeze\""))));
    QVERIFY(document.isLoaded());
    SvgDocument rest(stillShapeTitle(atRest));
    COMPARE_PICTURES(renderAt(document, 999), renderAt(rest, 0), 0);
    SvgDocument halfWayTwin(stillShapeTitle(halfWay));
    COMPARE_PICTURES(renderAt(document, 2000), renderAt(halfWayTwin, 0), 0);
    SvgDocument endTwin(stillShapeTitle(atEnd));
    COMPARE_PICTURES(renderAt(document, 3000), renderAt(endTwin, 0), 0);
    COMPARE_PICTURES(renderAt(document, 60000), renderAt(endTwin, 0), 0);
}

void RendererPlayedTest::addsTransforms_data()
{
    QTest::addColumn<QString>("animations");
    QTest::addColumn<QString>("transform"); // at 500 ms
    const QString second = QStringLiteral(" dur=\"1s\"");
    const QString replace = slide(QStringLiteral("additive=\"replace\"") + second);
    const QString sum = slide(QStringLiteral("additive=\"sum\"") + second);
    const QString scaleSum = animateTransform(
            QStringLiteral("type=\"scale\" from=\"1\" to=\"2\" additive=\"sum\"") + second);
    const QString scaleReplace =
            animateTransform(QStringLiteral("type=\"scale\" from=\"1\" to=\"2\"") + second);

    QTest::newRow("replace") << replace << QStringLiteral("translate(16 8)");
    QTest::newRow("sum") << sum << QStringLiteral("translate(2 1) translate(16 8)");
    QTest::newRow("by alone adds")
            << animateTransform(QStringLiteral("type=\"translate\" by=\"32 16\"") + second)
            << QStringLiteral("translate(2 1) translate(16 8)");
    QTest::newRow("sum and sum") << sum + scaleSum
                                 << QStringLiteral("translate(2 1) translate(16 8) scale(1.5)");
    QTest::newRow("replace and sum")
            << replace + scaleSum << QStringLiteral("translate(16 8) scale(1.5)");
    QTest::newRow("replace and replace") << replace + scaleReplace << QStringLiteral("scale(1.5)");
    QTest::newRow("sum and replace") << sum + scaleReplace << QStringLiteral("scale(1.5)");
    QTest::newRow("a replacing one that has not begun")
            << sum + slide(QStringLiteral("begin=\"501ms\"") + second)
            << QStringLiteral("translate(2 1) translate(16 8)");
    QTest::newRow("a replacing one that is over")
            << sum + slide(QStringLiteral("begin=\"-600ms\"") + second)
            << QStringLiteral("translate(2 1) translate(16 8)");
    QTest::newRow("a replacing one that is frozen")
            << sum + slide(QStringLiteral("begin=\"-600ms\" fill=\"freeze\"") + second)
            << QStringLiteral("translate(32 16)");
    QTest::newRow("an added one that has not begun") << replace
                    + animateTransform(QStringLiteral("type=\"scale\" from=\"1\" to=\"2\""
                                                      " additive=\"sum\" begin=\"501ms\"")
                                       + second) << QStringLiteral("translate(16 8)");
}

void RendererPlayedTest::addsTransforms()
{
    QFETCH(QString, animations);
    QFETCH(QString, transform);
    SvgDocument document(shapeTitle(animations));
    QVERIFY(document.isLoaded());
    SvgDocument twin(stillShapeTitle(transform));
    COMPARE_PICTURES(renderAt(document, 500), renderAt(twin, 0), 0);
}

void RendererPlayedTest::colors_data()
{
    QTest::addColumn<QString>("animation");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("fill");
    QTest::addColumn<QString>("stroke");
    const QString gray = QStringLiteral("#808080");
    const QString blue = QStringLiteral("#0000ff");

    const QString once = animateColor(QStringLiteral(
            "attributeName=\"fill\" from=\"#000000\" to=\"#ff8040\" begin=\"1s\" dur=\"1s\""));
    QTest::newRow("before the begin") << once << 999 << gray << blue;
    QTest::newRow("at the begin") << once << 1000 << QStringLiteral("#000000") << blue;
    QTest::newRow("first quarter") << once << 1250 << QStringLiteral("#3f2010") << blue;
    QTest::newRow("at the end") << once << 2000 << QStringLiteral("#ff8040") << blue;
    QTest::newRow("after the end") << once << 2001 << QStringLiteral("#ff8040") << blue;
    QTest::newRow("long after the end") << once << highest << QStringLiteral("#ff8040") << blue;
    QTest::newRow("long before the begin") << once << lowest << gray << blue;
    QTest::newRow("frozen") << animateColor(
            QStringLiteral("attributeName=\"fill\" from=\"#000000\" to=\"#ff8040\""
                           " dur=\"1s\" fill=\"freeze\""))
                            << 5000 << QStringLiteral("#ff8040") << blue;

    QTest::newRow("outline") << animateColor(
            QStringLiteral("attributeName=\"stroke\" from=\"#000000\""
                           " to=\"#ff8040\" dur=\"1s\""))
                             << 250 << gray << QStringLiteral("#3f2010");
    QTest::newRow("names of colours") << animateColor(
            QStringLiteral("attributeName=\"fill\" from=\"black\" to=\"white\" dur=\"1s\""))
                                      << 500 << QStringLiteral("#7f7f7f") << blue;

    const QString three = animateColor(
            QStringLiteral("attributeName=\"fill\" values=\"#000000;#804020;#00ff00\" dur=\"1s\""));
    QTest::newRow("three colours, first half") << three << 250 << QStringLiteral("#402010") << blue;
    QTest::newRow("three colours, middle") << three << 500 << QStringLiteral("#804020") << blue;
    QTest::newRow("three colours, second half")
            << three << 750 << QStringLiteral("#409f10") << blue;

    const QString endless = animateColor(
            QStringLiteral("attributeName=\"fill\" from=\"#000000\" to=\"#ff8040\" dur=\"1s\""
                           " repeatCount=\"indefinite\""));
    QTest::newRow("endless, later cycle") << endless << 7250 << QStringLiteral("#3f2010") << blue;
    QTest::newRow("endless, before the begin") << endless << -1 << gray << blue;
    QTest::newRow("part of a cycle")
            << animateColor(QStringLiteral("attributeName=\"fill\" from=\"#000000\" to=\"#ff8040\""
                                           " dur=\"1s\" repeatCount=\"3.25\""))
            << 9000 << QStringLiteral("#3f2010") << blue;
}

void RendererPlayedTest::colors()
{
    QFETCH(QString, animation);
    QFETCH(int, ms);
    QFETCH(QString, fill);
    QFETCH(QString, stroke);
    const QString still = QStringLiteral("fill=\"%1\" stroke=\"%2\" stroke-width=\"3\"");
    SvgDocument document(title(
            shape(still.arg(QStringLiteral("#808080"), QStringLiteral("#0000ff")), animation)));
    QVERIFY(document.isLoaded());
    SvgDocument twin(title(shape(still.arg(fill, stroke))));
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
}

void RendererPlayedTest::playsInEveryPlace_data()
{
    QTest::addColumn<QString>("content"); // %1: the animation of the transform
    QTest::addColumn<QString>("twin");    // %1: the attribute transform
    const auto addElement = [](const char *name, const QString &startTag, const QString &inside,
                               const QString &endTag) {
        QTest::newRow(name) << startTag + QStringLiteral(">%1") + inside + endTag
                            << startTag + QStringLiteral(" %1>") + inside + endTag;
    };
    const QString end = QStringLiteral("</%1>");
    addElement("rect", QStringLiteral("<rect x=\"4\" y=\"3\" width=\"9\" height=\"7\""), QString(),
               end.arg(QStringLiteral("rect")));
    addElement("circle", QStringLiteral("<circle cx=\"9\" cy=\"9\" r=\"6\""), QString(),
               end.arg(QStringLiteral("circle")));
    addElement("ellipse", QStringLiteral("<ellipse cx=\"9\" cy=\"9\" rx=\"6\" ry=\"3\""), QString(),
               end.arg(QStringLiteral("ellipse")));
    addElement("line", QStringLiteral("<line x1=\"2\" y1=\"2\" x2=\"20\" y2=\"9\" stroke=\"red\""),
               QString(), end.arg(QStringLiteral("line")));
    addElement("polyline", QStringLiteral("<polyline points=\"2,2 20,9 4,14\""), QString(),
               end.arg(QStringLiteral("polyline")));
    addElement("polygon", QStringLiteral("<polygon points=\"2,2 20,9 4,14\""), QString(),
               end.arg(QStringLiteral("polygon")));
    addElement("path", QStringLiteral("<path d=\"M2 2 L20 9 L4 14 Z\""), QString(),
               end.arg(QStringLiteral("path")));
    addElement("text", QStringLiteral("<text x=\"4\" y=\"20\" font-size=\"16\""),
               QStringLiteral("Tide"), end.arg(QStringLiteral("text")));
    addElement("text with a tspan", QStringLiteral("<text x=\"4\" y=\"20\" font-size=\"16\""),
               QStringLiteral("T<tspan fill=\"red\">ide</tspan>"), end.arg(QStringLiteral("text")));
    addElement("group", QStringLiteral("<g"), shape(QString()), end.arg(QStringLiteral("g")));
    addElement("group in groups", QStringLiteral("<g transform=\"scale(0.5)\"><g><g"),
               shape(QString()), QStringLiteral("</g></g></g>"));
    addElement("group with a group that is animated, too",
               QStringLiteral("<g><animateTransform attributeName=\"transform\" type=\"scale\""
                              " from=\"2\" to=\"2\" dur=\"1s\"/><g"),
               shape(QString()), QStringLiteral("</g></g>"));
    addElement("switch", QStringLiteral("<switch"), shape(QString()),
               end.arg(QStringLiteral("switch")));
    addElement("child of a switch", QStringLiteral("<switch><g"), shape(QString()),
               QStringLiteral("</g></switch>"));
    addElement("definition that is used", QStringLiteral("<defs><g id=\"d\""), shape(QString()),
               QStringLiteral("</g></defs><use xlink:href=\"#d\"/>"));
    addElement("definition that is used twice", QStringLiteral("<defs><g id=\"d\""),
               shape(QString()),
               QStringLiteral("</g></defs><use xlink:href=\"#d\"/>"
                              "<use x=\"30\" y=\"10\" xlink:href=\"#d\"/>"));
    addElement("inside a definition that is used", QStringLiteral("<defs><g id=\"d\"><g"),
               shape(QString()), QStringLiteral("</g></g></defs><use xlink:href=\"#d\"/>"));
    addElement("use",
               QStringLiteral("<defs><g id=\"d\">%1</g></defs><use xlink:href=\"#d\"")
                       .arg(shape(QString())),
               QString(), end.arg(QStringLiteral("use")));
    addElement("use in a definition",
               QStringLiteral("<defs>%1<g id=\"e\"><use xlink:href=\"#d\"")
                       .arg(shape(QStringLiteral("id=\"d\""))),
               QString(), QStringLiteral("</use></g></defs><use xlink:href=\"#e\"/>"));
    addElement("in the last of many",
               shape(QStringLiteral("opacity=\"0.1\"")).repeated(200) + QStringLiteral("<g"),
               shape(QString()), end.arg(QStringLiteral("g")));
    QTest::newRow("root") << QStringLiteral("%1") + shape(QString())
                          << QStringLiteral("<g %1>") + shape(QString()) + QStringLiteral("</g>");
    // A text is drawn as a whole.
    QTest::newRow("tspan") << QStringLiteral("<text x=\"4\" y=\"20\" font-size=\"16\">T"
                                             "<tspan fill=\"red\">%1ide</tspan></text>")
                           << QStringLiteral("<text x=\"4\" y=\"20\" font-size=\"16\">T"
                                             "<tspan fill=\"red\">ide</tspan></text>");
}

void RendererPlayedTest::playsInEveryPlace()
{
    QFETCH(QString, content);
    QFETCH(QString, twin);
    // The same whether the animation runs for the first time, is frozen, or repeats for ever.
    const QStringList timings{
            QStringLiteral("dur=\"1s\""),
            QStringLiteral("begin=\"-9s\" dur=\"1s\" repeatCount=\"2.5\""
                           " fill=\"freeze\""),
            QStringLiteral("begin=\"-9s\" dur=\"1s\" repeatCount=\"indefinite\"")};
    SvgDocument still(title(QString(twin).replace(
            QStringLiteral("%1"), QStringLiteral("transform=\"translate(16 8)\""))));
    for (const QString &timing : timings) {
        SvgDocument document(title(QString(content).replace(QStringLiteral("%1"), slide(timing))));
        QVERIFY(document.isLoaded());
        COMPARE_PICTURES(renderAt(document, 500), renderAt(still, 0), 0);
    }
}

void RendererPlayedTest::countsTheLongestOfAll()
{
    const SvgDocument document(shapeTitle(
            slide(QStringLiteral("begin=\"1s\" dur=\"500ms\""))
            + slide(QStringLiteral("begin=\"250ms\" dur=\"2.5s\" repeatCount=\"9\""))
            + animateColor(QStringLiteral("attributeName=\"fill\" from=\"red\" to=\"blue\""
                                          " dur=\"2s\""))));
    QCOMPARE(document.animationDurationTotal(), 2750);
}

void RendererPlayedTest::playsBesideAnimatedAttributes()
{
    const QString content = QStringLiteral("<rect y=\"40\" height=\"8\" %1>%2</rect>"
                                           "<text x=\"50\" y=\"20\" font-size=\"16\">Tide</text>");
    SvgDocument document(title(
            shape(QStringLiteral("transform=\"translate(2 1)\""),
                  slide(QStringLiteral("begin=\"1s\" dur=\"1s\"")))
            + content.arg(QStringLiteral("width=\"10\""),
                          QStringLiteral("<animate attributeName=\"width\" from=\"20\" to=\"60\""
                                         " begin=\"1s\" dur=\"2s\"/>"))));
    QCOMPARE(document.animationDurationTotal(), 3000);
    const struct
    {
        int ms;
        const char *transform;
        const char *width;
    } frames[] = {{2500, "translate(2 1)", "50"}, {1500, "translate(16 8)", "30"},
                  {0, "translate(2 1)", "10"},    {1000, "translate(0 0)", "20"},
                  {3000, "translate(2 1)", "10"}, {1750, "translate(24 12)", "35"}};
    for (const auto &frame : frames) {
        SvgDocument twin(
                title(shape(QStringLiteral("transform=\"%1\"").arg(QLatin1String(frame.transform)))
                      + content.arg(QStringLiteral("width=\"%1\"").arg(QLatin1String(frame.width)),
                                    QString())));
        COMPARE_PICTURES(renderAt(document, frame.ms), renderAt(twin, 0), 0);
    }
}

void RendererPlayedTest::playsAfterAnotherAnimation()
{
    // The renderer is asked about the text before the reference is resolved, and can't read it.
    const ExpectedWarning whenTried(QStringLiteral("Problem parsing animateTransform"));
    SvgDocument document(title(
            shape(QStringLiteral("transform=\"translate(2 1)\""),
                  slide(QStringLiteral("begin=\"first.end+0.5s\" dur=\"1s\"")))
            + QStringLiteral("<g><animate id=\"first\" attributeName=\"class\" from=\"a\" to=\"b\""
                             " begin=\"0.25s\" dur=\"1s\"/></g>")));
    SvgDocument rest(title(shape(QStringLiteral("transform=\"translate(2 1)\""))));
    COMPARE_PICTURES(renderAt(document, 1749), renderAt(rest, 0), 0);
    SvgDocument quarter(title(shape(QStringLiteral("transform=\"translate(8 4)\""))));
    COMPARE_PICTURES(renderAt(document, 2000), renderAt(quarter, 0), 0);
}

void RendererPlayedTest::playsInAnyOrderOfTimes()
{
    SvgDocument document(shapeTitle(
            slide(QStringLiteral("dur=\"1s\""))
            + animateColor(QStringLiteral("attributeName=\"fill\" from=\"#000000\" to=\"#ff8040\""
                                          " dur=\"1s\""))));
    SvgDocument twin(title(shape(QStringLiteral("fill=\"#3f2010\" transform=\"translate(8 4)\""))));
    const QImage expected = renderAt(twin, 0);
    for (const int other : {highest, 1001, 251, 249, 0, -1, lowest}) {
        QVERIFY(renderAt(document, other) != expected);
        COMPARE_PICTURES(renderAt(document, 250), expected, 0);
    }
}

void RendererPlayedTest::bearsExtremeTimes_data()
{
    QTest::addColumn<QString>("timing");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");
    const QString start = QStringLiteral("translate(0 0)");
    const QString middle = QStringLiteral("translate(16 8)");
    const QString end = QStringLiteral("translate(32 16)");

    const QString first = QStringLiteral("begin=\"-2147483647ms\" dur=\"1ms\"");
    QTest::newRow("earliest begin, earliest time") << first << lowest << atRest;
    QTest::newRow("earliest begin, at the begin") << first << -highest << start;
    QTest::newRow("earliest begin, at the end") << first << 1 - highest << end;
    QTest::newRow("earliest begin, after the end") << first << 2 - highest << atRest;
    QTest::newRow("earliest begin, at 0") << first << 0 << atRest;
    QTest::newRow("earliest begin, latest time") << first << highest << atRest;

    const QString frozen = first + QStringLiteral(" fill=\"freeze\"");
    QTest::newRow("earliest begin, frozen, earliest time") << frozen << lowest << atRest;
    QTest::newRow("earliest begin, frozen, at 0") << frozen << 0 << end;
    QTest::newRow("earliest begin, frozen, latest time") << frozen << highest << end;

    const QString endless = QStringLiteral("begin=\"-2147483647ms\" dur=\"4ms\""
                                           " repeatCount=\"indefinite\"");
    QTest::newRow("earliest begin, endless, earliest time") << endless << lowest << atRest;
    QTest::newRow("earliest begin, endless, at 0")
            << endless << 0 << QStringLiteral("translate(24 12)");
    QTest::newRow("earliest begin, endless, latest time") << endless << highest << middle;
    QTest::newRow("earliest begin, endless, shortest cycle")
            << first + QStringLiteral(" repeatCount=\"indefinite\"") << highest << start;
    QTest::newRow("negative repeat count")
            << QStringLiteral("begin=\"-2147483647ms\" dur=\"4ms\" repeatCount=\"-3\"") << highest
            << middle;

    const QString many = QStringLiteral("begin=\"-2147483647ms\" dur=\"4ms\" repeatCount=\"1e10\"");
    QTest::newRow("ten billion cycles, earliest time") << many << lowest << atRest;
    QTest::newRow("ten billion cycles, latest time") << many << highest << middle;
    QTest::newRow("ten billion cycles from 0")
            << QStringLiteral("dur=\"1ms\" repeatCount=\"1e10\"") << highest << start;
    QTest::newRow("three billion cycles and a half, over and frozen")
            << QStringLiteral("begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"3000000000.5\""
                              " fill=\"freeze\"")
            << highest << middle;
    QTest::newRow("three billion cycles and a half, over")
            << QStringLiteral("begin=\"-2147483647ms\" dur=\"1ms\" repeatCount=\"3000000000.5\"")
            << highest << atRest;
    QTest::newRow("cycle of 1 ms since 100 s, late")
            << QStringLiteral("begin=\"-100s\" dur=\"1ms\" repeatCount=\"indefinite\"")
            << 2147483000 << start;

    const QString last = QStringLiteral("begin=\"2147483645ms\" dur=\"1ms\" fill=\"freeze\"");
    QTest::newRow("latest begin, at 0") << last << 0 << atRest;
    QTest::newRow("latest begin, earliest time") << last << lowest << atRest;
    QTest::newRow("latest begin, at the begin") << last << highest - 2 << start;
    QTest::newRow("latest begin, latest time") << last << highest << end;

    const QString longest = QStringLiteral("begin=\"-1073741824ms\" dur=\"2147483646ms\"");
    QTest::newRow("longest, earliest time") << longest << lowest << atRest;
    QTest::newRow("longest, half-way") << longest << -1 << middle;
    QTest::newRow("longest, latest time") << longest << highest << atRest;
}

void RendererPlayedTest::bearsExtremeTimes()
{
    QFETCH(QString, timing);
    QFETCH(int, ms);
    QFETCH(QString, transform);
    // A colour animation of the same timing, so that neither kind stops the other from playing.
    SvgDocument document(shapeTitle(
            slide(timing)
            + animateColor(QStringLiteral("attributeName=\"fill\" from=\"#c02040\" to=\"#c02040\" ")
                           + timing)));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    SvgDocument twin(stillShapeTitle(transform));
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
}

void RendererPlayedTest::bearsExtremeValues_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("transform"); // at 500 ms of 1 s; empty: nothing is drawn
    QTest::newRow("single value") << QStringLiteral("type=\"translate\" values=\"16 8\"")
                                  << QStringLiteral("translate(16 8)");
    QTest::newRow("four numbers in the single value")
            << QStringLiteral("type=\"translate\" values=\"16 8 3 4\"")
            << QStringLiteral("translate(16 8)");
    QTest::newRow("more numbers than a transform has")
            << QStringLiteral("type=\"translate\" from=\"0 0 0\" to=\"32 16 7 9 11 13\"")
            << QStringLiteral("translate(16 8)");
    QTest::newRow("separator alone") << QStringLiteral("type=\"translate\" values=\";\"")
                                     << QStringLiteral("translate(0 0)");
    QTest::newRow("white space alone") << QStringLiteral("type=\"translate\" values=\" \"")
                                       << QStringLiteral("translate(0 0)");
    QTest::newRow("separators alone") << QStringLiteral("type=\"translate\" values=\";;;;;;;\"")
                                      << QStringLiteral("translate(0 0)");
    QTest::newRow("no numbers") << QStringLiteral("type=\"translate\" values=\"a b;c d\"")
                                << QStringLiteral("translate(0 0)");
    QTest::newRow("not a number") << QStringLiteral(
            "type=\"translate\" from=\"nan nan\" to=\"nan\"")
                                  << QStringLiteral("translate(0 0)");
    QTest::newRow("infinite") << QStringLiteral("type=\"translate\" from=\"0 0\" to=\"inf inf\"")
                              << QStringLiteral("translate(0 0)");
    QTest::newRow("beyond a double")
            << QStringLiteral("type=\"translate\" from=\"4 2\" to=\"1e400 -1e400\"")
            << QStringLiteral("translate(2 1)");
    QTest::newRow("beyond a float")
            << QStringLiteral("type=\"translate\" from=\"4 2\" to=\"1e300 -1e300\"")
            << QStringLiteral("translate(2 1)");
    QTest::newRow("far away") << QStringLiteral("type=\"translate\" from=\"0 0\" to=\"1e30 0\"")
                              << QString();
    QTest::newRow("shrunk to nothing")
            << QStringLiteral("type=\"scale\" from=\"1\" to=\"-1\"") << QString();
    QTest::newRow("turned often") << QStringLiteral(
            "type=\"rotate\" from=\"0 40 30\" to=\"7200090 40 30\"")
                                  << QStringLiteral("rotate(45 40 30)");
}

void RendererPlayedTest::bearsExtremeValues()
{
    QFETCH(QString, attributes);
    QFETCH(QString, transform);
    SvgDocument document(shapeTitle(animateTransform(attributes + QStringLiteral(" dur=\"1s\""))));
    QVERIFY(document.isLoaded());
    if (transform.isEmpty()) {
        QVERIFY(isBlank(renderAt(document, 500)));
    } else {
        SvgDocument twin(stillShapeTitle(transform));
        COMPARE_PICTURES(renderAt(document, 500), renderAt(twin, 0), 1);
    }
    SvgDocument rest(stillShapeTitle(atRest));
    for (const int ms : {lowest, -1, 1001, highest})
        COMPARE_PICTURES(renderAt(document, ms), renderAt(rest, 0), 0);
}

void RendererPlayedTest::leavesOutWhatTheRendererCantRead_data()
{
    QTest::addColumn<QString>("animation");
    const QString from = QStringLiteral("type=\"translate\" from=\"9 9\" ");
    QTest::newRow("negative duration") << slide(QStringLiteral("dur=\"-1s\""));
    QTest::newRow("lowest duration") << slide(QStringLiteral("dur=\"-2147483646ms\""));
    QTest::newRow("no duration") << slide(QString());
    QTest::newRow("duration 0") << slide(QStringLiteral("dur=\"0s\""));
    QTest::newRow("endless duration") << slide(QStringLiteral("dur=\"indefinite\""));
    QTest::newRow("duration that is no number") << slide(QStringLiteral("dur=\"nan\""));
    QTest::newRow("begin that is no number") << slide(QStringLiteral("begin=\"nan\" dur=\"1s\""));
    QTest::newRow("no type") << animateTransform(
            QStringLiteral("from=\"9 9\" to=\"1 1\" dur=\"1s\""));
    QTest::newRow("unknown type") << animateTransform(
            QStringLiteral("type=\"matrix\" from=\"9 9\" to=\"1 1\" dur=\"1s\""));
    QTest::newRow("no values") << animateTransform(QStringLiteral("type=\"translate\" dur=\"1s\""));
    QTest::newRow("empty values") << animateTransform(
            QStringLiteral("type=\"translate\" values=\"\" dur=\"1s\""));
    QTest::newRow("empty from and to")
            << animateTransform(QStringLiteral("type=\"translate\" from=\"\" to=\"\" dur=\"1s\""));
    QTest::newRow("from alone") << animateTransform(from + QStringLiteral("dur=\"1s\""));
    QTest::newRow("to alone") << animateTransform(
            QStringLiteral("type=\"translate\" to=\"9 9\" dur=\"1s\""));
    QTest::newRow("colours without duration")
            << animateColor(QStringLiteral("attributeName=\"fill\" from=\"red\" to=\"blue\""));
    QTest::newRow("colours with a negative duration") << animateColor(
            QStringLiteral("attributeName=\"fill\" from=\"red\" to=\"blue\" dur=\"-1s\""));
}

void RendererPlayedTest::leavesOutWhatTheRendererCantRead()
{
    QFETCH(QString, animation);
    const QString problem = QStringLiteral("Problem parsing animate");
    const ExpectedWarning whenRead(problem);
    SvgDocument document(shapeTitle(animation));
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), 0);
    SvgDocument rest(stillShapeTitle(atRest));
    for (const int ms : {lowest, -1, 0, 500, highest}) {
        const ExpectedWarning whenDrawn(problem);
        COMPARE_PICTURES(renderAt(document, ms), renderAt(rest, 0), 0);
    }
}

void RendererPlayedTest::refusesTimesBeyondInt_data()
{
    QTest::addColumn<QString>("timing");
    QTest::newRow("highest begin") << QStringLiteral("begin=\"2147483647ms\" dur=\"1s\"");
    QTest::newRow("highest begin in seconds") << QStringLiteral("begin=\"2147483.647\" dur=\"1s\"");
    QTest::newRow("lowest begin") << QStringLiteral("begin=\"-2147483648ms\" dur=\"1s\"");
    QTest::newRow("begin beyond int") << QStringLiteral("begin=\"3000000000ms\" dur=\"1s\"");
    QTest::newRow("begin below int") << QStringLiteral("begin=\"-3000000000ms\" dur=\"1s\"");
    QTest::newRow("begin far beyond int") << QStringLiteral("begin=\"1e300s\" dur=\"1s\"");
    QTest::newRow("begin far below int") << QStringLiteral("begin=\"-1e300s\" dur=\"1s\"");
    QTest::newRow("infinite begin") << QStringLiteral("begin=\"inf\" dur=\"1s\"");
    QTest::newRow("begin with spaces around") << QStringLiteral("begin=\" 3e9ms \" dur=\"1s\"");
    QTest::newRow("highest duration") << QStringLiteral("dur=\"2147483647ms\"");
    QTest::newRow("lowest duration") << QStringLiteral("dur=\"-2147483648ms\"");
    QTest::newRow("duration beyond int") << QStringLiteral("dur=\"3000000s\"");
    QTest::newRow("infinite duration") << QStringLiteral("dur=\"inf\"");
    QTest::newRow("highest end") << QStringLiteral("begin=\"2147483646ms\" dur=\"1ms\"");
    QTest::newRow("end beyond int") << QStringLiteral("begin=\"2000000s\" dur=\"2000000s\"");
    QTest::newRow("lowest end") << QStringLiteral("begin=\"-2147483647ms\" dur=\"-1ms\"");
    QTest::newRow("end below int") << QStringLiteral("begin=\"-2000000s\" dur=\"-2000000s\"");
}

void RendererPlayedTest::refusesTimesBeyondInt()
{
    QFETCH(QString, timing);
    const QStringList animations{
            slide(timing),
            animateColor(QStringLiteral("attributeName=\"fill\" from=\"red\" to=\"blue\" ")
                         + timing)};
    for (const QString &animation : animations) {
        SvgDocument document(title(
                shape(QString()) + QLatin1Char('\n')
                + QStringLiteral("<defs><g>%1</g></defs>\n").arg(shape(QString(), animation))));
        QVERIFY(!document.isLoaded());
        QVERIFY2(document.errorString().startsWith(QStringLiteral("line 2: ")),
                 qPrintable(document.errorString()));
        QVERIFY(!document.errorString().contains(QLatin1Char('\n')));
        QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
        QCOMPARE(document.animationDurationTotal(), 0);
        QVERIFY(document.documentRoot().isNull());
        document.setBounds(QRectF(0, 0, 96, 64));
        for (const int ms : {lowest, 0, highest})
            QVERIFY(isBlank(renderAt(document, ms)));
    }
}

void RendererPlayedTest::acceptsTimesWithinInt_data()
{
    QTest::addColumn<QString>("timing");
    QTest::addColumn<int>("length");
    QTest::newRow("latest end") << QStringLiteral("begin=\"2147483645ms\" dur=\"1ms\"")
                                << highest - 1;
    QTest::newRow("longest duration") << QStringLiteral("dur=\"2147483646ms\"") << highest - 1;
    QTest::newRow("late begin that duration takes back")
            << QStringLiteral("begin=\"-2147483647ms\" dur=\"2147483646ms\"") << 0;
    QTest::newRow("begin beyond a float") << QStringLiteral("begin=\"1e400s\" dur=\"1s\"") << 1000;
    QTest::newRow("begin of 300 digits")
            << QStringLiteral("begin=\"%1\" dur=\"1s\"").arg(QString(300, QLatin1Char('0'))) << -1;
}

void RendererPlayedTest::acceptsTimesWithinInt()
{
    QFETCH(QString, timing);
    QFETCH(int, length);
    const bool isDropped = length < 0;
    std::unique_ptr<ExpectedWarning> dropped;
    if (isDropped)
        dropped = std::make_unique<ExpectedWarning>(QStringLiteral("Problem parsing animate"));
    const SvgDocument document(shapeTitle(slide(timing)));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(document.animationDurationTotal(), std::max(length, 0));
}

void RendererPlayedTest::bearsTimesThatAreAdjusted_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("dur");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");
    QTest::newRow("harmless") << QStringLiteral("2s") << QStringLiteral("1s") << 2500
                              << QStringLiteral("translate(16 8)");
    QTest::newRow("earliest begin, latest time")
            << QStringLiteral("-2147483647ms") << QStringLiteral("4ms") << highest
            << QStringLiteral("translate(16 8)");
    QTest::newRow("earliest begin, earliest time")
            << QStringLiteral("-2147483647ms") << QStringLiteral("4ms") << lowest << atRest;
}

void RendererPlayedTest::bearsTimesThatAreAdjusted()
{
    QFETCH(QString, begin);
    QFETCH(QString, dur);
    QFETCH(int, ms);
    QFETCH(QString, transform);
    SvgDocument document(shapeTitle(
            slide(QStringLiteral("begin=\"1s\" dur=\"1s\" repeatCount=\"indefinite\""))));
    document.prepareAdjustedAttibutes({QStringLiteral("begin"), QStringLiteral("dur")});
    document.adjustAttribute(QStringLiteral("begin"), begin);
    document.adjustAttribute(QStringLiteral("dur"), dur);
    SvgDocument twin(stillShapeTitle(transform));
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
}

void RendererPlayedTest::bearsTimesThatAreAnimated_data()
{
    QTest::addColumn<QString>("animate");
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("transform");
    QTest::newRow("harmless") << QStringLiteral(
            "<animate attributeName=\"begin\" from=\"2\" to=\"4\" dur=\"8s\"/>")
                              << 4000 << QStringLiteral("translate(32 16)");
    QTest::newRow("begin far below 0")
            << QStringLiteral("<animate attributeName=\"begin\" from=\"-2147483.5\""
                              " to=\"-2147483.5\" dur=\"1s\" fill=\"freeze\"/>")
            << 2147483000 << QStringLiteral("translate(16 8)");
}

/// An animation of an attribute changes its parent, whatever that is.
void RendererPlayedTest::bearsTimesThatAreAnimated()
{
    QFETCH(QString, animate);
    QFETCH(int, ms);
    QFETCH(QString, transform);
    const QString animation =
            QStringLiteral("<animateTransform attributeName=\"transform\" type=\"translate\""
                           " from=\"0 0\" to=\"32 16\" begin=\"0s\" dur=\"1s\""
                           " repeatCount=\"indefinite\">%1</animateTransform>");
    SvgDocument document(shapeTitle(animation.arg(animate)));
    QVERIFY(document.isLoaded());
    SvgDocument twin(stillShapeTitle(transform));
    COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
}

QTEST_MAIN(RendererPlayedTest)

#include "tst_rendererplayed.moc"
