// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"

#include <QTemporaryDir>

#include <memory>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray bytesOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    void keepsLongNamesShort_data();
    void keepsLongNamesShort();
    void keepsLinesWhole();
    void reportsAFullDevice();
    void readsAPipeToItsEnd();
    void inspectsSeveralTitles();
    void givesProgramsTheReasonOfARefusal();
    void neverPlotsOverTheTitle();
    void alignsWideAndNarrowLetters();
    void listsDefinitionsThatWaitForUse();
    void showsHelpAndVersion();
    void documentsWhatItPrints();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    void writeTitle(const QString &name, const QString &text) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(int(file.write(text.toUtf8())), text.toUtf8().size());
    }

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

void TestInspect::findsNothingInACleanTitle()
{
    const InspectResult result = inspectTitle(cleanTitle(), {QStringLiteral("--strict")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.endsWith(QLatin1String("standard input: 0 warnings, 0 notes\n")));

    const InspectResult quiet = inspectTitle(cleanTitle(), {QStringLiteral("--quiet")});
    QCOMPARE(quiet.exitCode, 0);
    QCOMPARE(quiet.output, QString());
}

void TestInspect::tellsProblemsToPersons()
{
    const QString title =
            svgTitle(QStringLiteral("\n<rect>\n  <animate attributeName='x' values='0;1' dur='1s'"
                                    " begin='click'/></rect>"));
    const InspectResult result = inspectTitle(title, {QStringLiteral("--quiet")});
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
    QCOMPARE(inspectTitle(title).exitCode, 0);
    QCOMPARE(inspectTitle(title, {QStringLiteral("--strict")}).exitCode, 1);
    QVERIFY(inspectTitle(title).output.endsWith(QLatin1String(": 0 warnings, 1 note\n")));
}

void TestInspect::tellsWhatWasUnderstood()
{
    const QJsonObject report = inspectTitle(cleanTitle(), {QStringLiteral("--json")}).json();
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
    const QJsonObject report = inspectTitle(title, {QStringLiteral("--json")}).json();
    const QStringList lines = inspectTitle(title).lines();
    const int first = lines.indexOf(QStringLiteral("Animations")) + 2; // after the headings
    QVERIFY(first > 1);

    const QJsonArray animations = report.value(QLatin1String("animations")).toArray();
    QCOMPARE(animations.size(), 34);
    for (int i = 0; i < animations.size(); ++i) {
        const QJsonObject animation = animations.at(i).toObject();
        const QString line = lines.at(first + i);
        QStringList cells = line.split(QRegularExpression(QStringLiteral("  +")));
        cells.removeAll(QString());
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
    const QStringList lines = inspectTitle(cleanTitle()).lines();
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
    const QJsonObject report = inspectTitle(title, {QStringLiteral("--json")}).json();
    QCOMPARE(report.value(QLatin1String("clipping")).toBool(), true);
    QCOMPARE(report.value(QLatin1String("clippingShapes")).toInt(), 2);
    QVERIFY(inspectTitle(title).output.contains(QLatin1String("2 shapes erase the title\n")));
}

void TestInspect::drawsThePlot()
{
    const QString plot = path(QStringLiteral("plot.svg"));
    QCOMPARE(inspectTitle(cleanTitle(), {QStringLiteral("--plot"), plot}).exitCode, 0);

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
    inspectTitle(readTemplate(QStringLiteral("opener.svg")), {QStringLiteral("--plot"), plot});
    const InspectResult result =
            runInspect({plot, QStringLiteral("--quiet"), QStringLiteral("--strict")});
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
    const InspectResult result =
            runInspect({file, QStringLiteral("--quiet"), QStringLiteral("--strict")});
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
                                               "id='1>2'\n   comp-op = 'clear'>a</tspan></text>"
                                               "\n<use xlink:href='#x'/>"));
    title.replace(QLatin1Char('\n'), lineEnd);
    const QJsonArray problems = inspectTitle(title, {QStringLiteral("--json")})
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
    for (const QString &option : {QStringLiteral("--json"), QStringLiteral("--plot=p.svg")})
        QTest::newRow(qPrintable(QStringLiteral("two titles, %1").arg(option)))
                << QStringList{QStringLiteral("a.svg"), QStringLiteral("b.svg"), option}
                << QByteArray() << QStringLiteral("takes only one title: b.svg is one too many");
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

    const InspectResult result = runInspect(arguments, title, m_folder->path());
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
    const QString rules =
            QStringLiteral("<style>%1</style>").arg(QStringLiteral(".a{fill:red}").repeated(150));
    QString classes;
    for (int i = 0; i < 50; ++i)
        classes += QStringLiteral("a%1 ").arg(i);
    const QString element = QStringLiteral("<g class='%1a'/>").arg(classes);
    QTest::newRow("many rules for many classes") << text(rules + element.repeated(5000)) << 0;
    const QString sheet = QStringLiteral("<style>%1</style>");
    QTest::newRow("many empty rules")
            << text(sheet.arg(QStringLiteral("a{}").repeated(80000))) << 0;
    QTest::newRow("many statements") << text(sheet.arg(QStringLiteral("a;").repeated(120000))) << 0;
    QTest::newRow("many comments") << text(sheet.arg(QStringLiteral("/**/").repeated(60000))) << 0;
    QTest::newRow("long text") << text(
            QStringLiteral("<text>%1</text>")
                    .arg(QStringLiteral("<tspan>a</tspan>").repeated(20000)))
                               << 0;
    QTest::newRow("long path") << text(
            QStringLiteral("<path style='stroke:red;stroke-linecap:round'"
                           " d='M0 0%1'/>")
                    .arg(QStringLiteral("m1 1h1").repeated(60000)))
                               << 0;
    QTest::newRow("nodes of every kind beside elements")
            << text(QStringLiteral("<defs><g id='d' visibility='hidden'/></defs><use"
                                   " xlink:href='#d'/><g>a<![CDATA[b]]>c<?p q?>&#10;<!-- d -->"
                                   "<use xlink:href='#d'/><rect fill='red'/></g>"))
            << 0;
    QTest::newRow("undefined entity beside elements") << "<!DOCTYPE svg SYSTEM 'svg.dtd'>"
                    + text(QStringLiteral("<defs><g id='d' visibility='hidden'/></defs><g>a&x;b&x;"
                                          "<use xlink:href='#d'/><rect fill='red'/></g>"))
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
    const InspectResult result =
            runInspect({QStringLiteral("-"), QStringLiteral("--plot"), plot}, title);
    QVERIFY2(result.exitCode == exitCode, qPrintable(result.errors));
    QCOMPARE(bytesOf(plot).isEmpty(), exitCode == 2);
}

void TestInspect::keepsLongNamesShort_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("text") << QStringList();
    QTest::newRow("JSON") << QStringList(QStringLiteral("--json"));
}

// Every animation tells of its element: together, the reports of this title would have gigabytes.
void TestInspect::keepsLongNamesShort()
{
    QFETCH(const QStringList, arguments);
    const QString id(1000000, QLatin1Char('n'));
    const QString animation = QStringLiteral("<animate attributeName='x' values='0;1' dur='1s'/>");
    const InspectResult result = inspectTitle(
            svgTitle(QStringLiteral("<rect id='%1'>%2</rect>").arg(id, animation.repeated(2000))),
            arguments);
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.contains(QLatin1String("nnnnnnnnnn")));
    QVERIFY(result.output.size() < 10000000);
}

void TestInspect::keepsLinesWhole()
{
    const QString title = svgTitle(
            QStringLiteral("<rect id='a&#10;b'><animate attributeName='x' values='0;1' dur='1s'"
                           " begin='click&#9;&#10;click'/></rect>"));
    const QString output = inspectTitle(title).output;
    QVERIFY(output.contains(QLatin1String("  rect#a b  ")));
    QVERIFY(output.contains(QLatin1String(": warning: the begin \"click  click\" is an event")));
}

void TestInspect::reportsAFullDevice()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(TITLESCENE_INSPECT), {QStringLiteral("-")});
    process.write(cleanTitle().toUtf8());
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().startsWith("titlescene-inspect: standard output: "));
}

// A writer that pauses: the second half comes when the first one has been read.
void TestInspect::readsAPipeToItsEnd()
{
    const QString pipe = path(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const int descriptor = ::open(QFile::encodeName(pipe).constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(descriptor >= 0);
    const auto unread = [descriptor] {
        int count = -1;
        return ::ioctl(descriptor, FIONREAD, &count) == 0 ? count : -1;
    };

    QProcess process;
    process.setStandardInputFile(pipe);
    const QByteArray title = cleanTitle().toUtf8();
    const int half = title.size() / 2;
    QCOMPARE(::write(descriptor, title.constData(), std::size_t(half)), ssize_t(half));
    process.start(QStringLiteral(TITLESCENE_INSPECT), {QStringLiteral("-")});
    QTRY_COMPARE_WITH_TIMEOUT(unread(), 0, 60000);
    const int rest = title.size() - half;
    QCOMPARE(::write(descriptor, title.constData() + half, std::size_t(rest)), ssize_t(rest));
    ::close(descriptor);

    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 0);
}

void TestInspect::inspectsSeveralTitles()
{
    writeTitle(QStringLiteral("a.svg"), cleanTitle());
    writeTitle(QStringLiteral("b.svg"), QStringLiteral("<svg"));
    writeTitle(QStringLiteral("c.svg"), svgTitle(QStringLiteral("<mask/>")));
    const QStringList quiet{QStringLiteral("--quiet")};
    const auto inspect = [&](const QStringList &names) {
        return runInspect(names + quiet, QByteArray(), m_folder->path());
    };
    const QStringList all{QStringLiteral("a.svg"), QStringLiteral("b.svg"),
                          QStringLiteral("c.svg")};

    QCOMPARE(inspect({all.at(0), all.at(0)}).exitCode, 0);
    QCOMPARE(inspect({all.at(2), all.at(0)}).exitCode, 1);
    const InspectResult result = inspect(all);
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith(QLatin1String("titlescene-inspect: b.svg: ")));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QVERIFY(result.output.startsWith(QLatin1String("c.svg:1:")));
    QVERIFY(result.output.endsWith(QLatin1String("c.svg: 1 warning, 0 notes\n")));
}

void TestInspect::givesProgramsTheReasonOfARefusal()
{
    const InspectResult result = runInspect({QStringLiteral("gone.svg"), QStringLiteral("--json")},
                                            QByteArray(), m_folder->path());
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.json().value(QLatin1String("title")).toString(), QStringLiteral("gone.svg"));
    QCOMPARE(result.json().value(QLatin1String("error")).toString(),
             QStringLiteral("gone.svg: No such file or directory"));
    QCOMPARE(result.errors,
             QStringLiteral("titlescene-inspect: gone.svg: No such file or directory\n"));
}

void TestInspect::neverPlotsOverTheTitle()
{
    writeTitle(QStringLiteral("a.svg"), cleanTitle());
    QVERIFY(QFile::link(QStringLiteral("a.svg"), path(QStringLiteral("link.svg"))));
    for (const QString &name : {QStringLiteral("./a.svg"), QStringLiteral("link.svg")}) {
        const InspectResult result =
                runInspect({QStringLiteral("a.svg"), QStringLiteral("--plot"), name}, QByteArray(),
                           m_folder->path());
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.errors,
                 QStringLiteral("titlescene-inspect: %1: this is the title itself\n").arg(name));
    }
    QCOMPARE(readText(path(QStringLiteral("a.svg"))), cleanTitle());
}

// Two columns for each of the Chinese letters, none for a mark above a letter.
void TestInspect::alignsWideAndNarrowLetters()
{
    const QString title = svgTitle(QString::fromUtf8("<defs><g id='标题'/><g id='e\u0301té'/>"
                                                     "<g id='abcdef'/></defs>"));
    const QStringList lines = inspectTitle(title).lines();
    const int at = lines.indexOf(QStringLiteral("Definitions"));
    QVERIFY(at >= 0);
    QVERIFY(lines.at(at + 1).startsWith(QString::fromUtf8("  g#标题    1:")));
    QVERIFY(lines.at(at + 2).startsWith(QString::fromUtf8("  g#e\u0301té     1:")));
    QVERIFY(lines.at(at + 3).startsWith(QLatin1String("  g#abcdef  1:")));
}

void TestInspect::listsDefinitionsThatWaitForUse()
{
    const InspectResult result = inspectTitle(
            svgTitle(QStringLiteral("<defs><linearGradient id='g'><stop id='s'/></linearGradient>"
                                    "<p:effect xmlns:p='urn:a' id='e'/><g><path id='p'/></g>"
                                    "</defs><use xlink:href='#p'/>")),
            {QStringLiteral("--json")});
    QStringList ids;
    for (const QJsonValue &value : result.json().value(QLatin1String("definitions")).toArray())
        ids += value.toObject()
                       .value(QLatin1String("element"))
                       .toObject()
                       .value(QLatin1String("id"))
                       .toString();
    QCOMPARE(ids, (QStringList{QStringLiteral("g"), QStringLiteral("p")}));
}

void TestInspect::showsHelpAndVersion()
{
    const InspectResult help = runInspect({QStringLiteral("--help")});
    QCOMPARE(help.exitCode, 0);
    for (const char *word : {"--json", "--plot <FILE>", "--strict", "--quiet", "TITLE.svg"})
        QVERIFY2(help.output.contains(QLatin1String(word)), word);
    const InspectResult version = runInspect({QStringLiteral("--version")});
    QCOMPARE(version.exitCode, 0);
    QVERIFY(version.output.startsWith(QLatin1String("titlescene-inspect 1.")));
}

// The example in the manual for authors is what the command really says.
void TestInspect::documentsWhatItPrints()
{
    const QString manual = readText(QStringLiteral(TITLESCENE_AUTHORING));
    const auto between = [&manual](const QString &start, const QString &end) {
        const int at = manual.indexOf(start);
        return at < 0 ? QString() : manual.mid(at + start.size()).section(end, 0, 0);
    };
    const QString fence = QStringLiteral("```\n");
    const QString title = between(QStringLiteral("```xml\n"), fence);
    const QString report = between(QStringLiteral("$ titlescene-inspect intro.svg\n"), fence);
    QVERIFY(!title.isEmpty());

    writeTitle(QStringLiteral("intro.svg"), title);
    const InspectResult result =
            runInspect({QStringLiteral("intro.svg")}, QByteArray(), m_folder->path());
    QCOMPARE(result.output.split(QLatin1Char('\n')), report.split(QLatin1Char('\n')));
    QCOMPARE(result.exitCode, 1);
}

QTEST_MAIN(TestInspect)
#include "tst_inspect.moc"
