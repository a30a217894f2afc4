// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"
#include "TitleTest.h"

#include <QTemporaryDir>

#include <memory>

namespace {

QString render()
{
    return QStringLiteral(TITLESCENE_RENDER);
}

// A title that shows "ab" in large letters, as the content makes it.
QString titleOf(const QString &content)
{
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 160 60'>"
                          "<g font-size='40'>%1</g></svg>")
            .arg(content);
}

QString svgFont()
{
    return QStringLiteral("<defs><font id='Own' horiz-adv-x='500'><font-face font-family='Face'/>"
                          "<glyph unicode='a' d='M0 0h400v400z'/></font></defs>");
}

} // namespace

// The fonts that a title asks for and does not get, as the commands tell of them.
class TestMissingFonts : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void cleanup() { m_folder.reset(); }

    void areNamedWithTheirStandIn_data();
    void areNamedWithTheirStandIn();
    void noneAreNamed_data();
    void noneAreNamed();
    void severalAreNamedInOrder();
    void listsAreNamedOnceByEach();
    void manyTakeAnEnd();
    void strictRefuses_data();
    void strictRefuses();
    void strictTakesAnyWarning();
    void strictEndsARunThatWarnsLater_data();
    void strictEndsARunThatWarnsLater();
    void strictLetsGoodTitlesPass();

private:
    struct Result
    {
        int exitCode;
        QByteArray output;
        QString errors;
    };
    Result runRender(const QString &title, const QStringList &arguments) const;
    QByteArray pictureOf(const QString &title) const;
    QStringList written() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

TestMissingFonts::Result TestMissingFonts::runRender(const QString &title,
                                                     const QStringList &arguments) const
{
    constexpr int millisecondsToWait = 60000;
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.start(render(), QStringList(QStringLiteral("-")) + arguments);
    process.write(title.toUtf8());
    process.closeWriteChannel();
    const bool isDone = process.waitForFinished(millisecondsToWait)
            && process.exitStatus() == QProcess::NormalExit;
    return {isDone ? process.exitCode() : -1, process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
}

QByteArray TestMissingFonts::pictureOf(const QString &title) const
{
    return runRender(title, {QStringLiteral("--raw"), QStringLiteral("--quiet")}).output;
}

QStringList TestMissingFonts::written() const
{
    return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}

// Otherwise pictures would tell nothing of fonts.
void TestMissingFonts::initTestCase()
{
    init();
    const auto inFont = [this](const char *family) {
        return pictureOf(titleOf(QStringLiteral("<text y='40' font-family='%1'>ab</text>")
                                         .arg(QLatin1String(family))));
    };
    QVERIFY(inFont("DejaVu Sans") != inFont("DejaVu Serif"));
    cleanup();
}

void TestMissingFonts::areNamedWithTheirStandIn_data()
{
    QTest::addColumn<QString>("content"); // with ^ where the problem is
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("severity");

    const auto row = [](const char *name, const char *content,
                        const char *reason = "the font \"Nobody Has This\" is not installed",
                        const char *severity = "note") {
        QTest::newRow(name) << QString::fromUtf8(content) << QString::fromUtf8(reason)
                            << QString::fromUtf8(severity);
    };
    const char *const unquoted =
            "the font Nobody Has This is not in quotes, as it has to be in a style sheet";
    row("an attribute", "<text y='40' ^font-family='Nobody Has This'>ab</text>");
    row("in quotes", "<text y='40' ^font-family='\"Nobody Has This\"'>ab</text>");
    row("with spaces around", "<text y='40' ^font-family='  Nobody Has This '>ab</text>");
    row("a style", "<text y='40' ^style='fill:red;font-family:Nobody Has This'>ab</text>");
    row("quoted in a style", "<text y='40' ^style=\"font-family:'Nobody Has This'\">ab</text>");
    row("of a group", "<g ^font-family='Nobody Has This'><g><text y='40'>ab</text></g></g>");
    row("a tspan",
        "<text y='40' font-family='DejaVu Sans'><tspan ^font-family='Nobody Has This'>ab"
        "</tspan></text>");
    row("a rule for a class",
        "^<style>.a{font-family:\"Nobody Has This\"}</style><text class='a' y='40'>ab</text>");
    row("a rule for a type",
        "^<style>text{font-family:'Nobody Has This'}</style><text y='40'>ab</text>");
    row("a rule for what is inside of something",
        "^<style>g text{font-family:'Nobody Has This'}</style><text y='40'>ab</text>");
    row("the last rule",
        "<style>.a{font-family:'DejaVu Sans'}</style>^<style>#b{font-family:'Nobody Has This'}"
        "</style><text class='a' id='b' y='40'>ab</text>");
    row("a rule without quotes",
        "^<style>.a{font-family:Nobody Has This}</style><text class='a' y='40'>ab</text>", unquoted,
        "warning");
    row("an attribute over a rule",
        "<style>text{font-family:'DejaVu Serif'}</style>"
        "<text y='40' ^font-family='Nobody Has This'>ab</text>");
    row("of a group, since an attribute of a font ends a rule",
        "<style>text{font-family:'DejaVu Serif'}</style>"
        "<g ^font-family='Nobody Has This'><text y='40' font-weight='400'>ab</text></g>");
    row("a font of the title's that comes later",
        "<text y='40' ^font-family='Own'>ab</text>"
        "<defs><font id='Own'><glyph unicode='a' d='M0 0h400v400z'/></font></defs>",
        "the font \"Own\" is not installed");
    row("a font of the title's in quotes",
        "<defs><font id='Own'><glyph unicode='a' d='M0 0h400v400z'/></font></defs>"
        "<text y='40' ^font-family=\"'Own'\">ab</text>",
        "the font \"Own\" is not installed");
}

// The stand-in is the right one when a title that asks for it looks the same.
void TestMissingFonts::areNamedWithTheirStandIn()
{
    QFETCH(QString, content);
    QFETCH(QString, reason);
    QFETCH(QString, severity);

    const QString marked = titleOf(content);
    const QString title = QString(marked).remove(QLatin1Char('^'));
    const int column = marked.indexOf(QLatin1Char('^')) + 1;

    const Result rendered = runRender(title, {QStringLiteral("-o"), QStringLiteral("frames")});
    QCOMPARE(rendered.exitCode, 0);
    const QRegularExpression line(
            QStringLiteral("^titlescene-render: warning: %1: \"(.+)\" is drawn instead\n$")
                    .arg(QRegularExpression::escape(reason)));
    const QRegularExpressionMatch match = line.match(rendered.errors);
    QVERIFY2(match.hasMatch(), qPrintable(rendered.errors));
    const QString standIn = match.captured(1);

    const QJsonArray problems = inspectTitle(title, {QStringLiteral("--json")}).problems();
    QStringList found;
    for (const QJsonValue &problem : problems)
        found += problemText(problem.toObject());
    const QString expected = QStringLiteral("1:%1: %2: %3: \"%4\" is drawn instead [missing-font]")
                                     .arg(column)
                                     .arg(severity, reason, standIn);
    QVERIFY2(found.contains(expected), qPrintable(found.join(QLatin1Char('\n'))));

    const QString inStandIn =
            titleOf(QStringLiteral("<text y='40' font-family='%1'>ab</text>").arg(standIn));
    const QByteArray picture = pictureOf(title);
    QVERIFY(!picture.isEmpty());
    QCOMPARE(picture == pictureOf(inStandIn), !content.contains(QStringLiteral("fill:red")));
}

void TestMissingFonts::noneAreNamed_data()
{
    QTest::addColumn<QString>("content");

    const auto row = [](const char *name, const QString &content) {
        QTest::newRow(name) << content;
    };
    const auto text = [](const char *attributes) {
        return QStringLiteral("<text y='40' %1>ab</text>").arg(QLatin1String(attributes));
    };
    row("no font", text(""));
    row("an installed font", text("font-family='DejaVu Sans'"));
    row("another case", text("font-family='dejavu sans'"));
    row("several spaces", text("font-family='DejaVu   Sans'"));
    row("in quotes", text("font-family=\"'DejaVu Sans'\""));
    row("another name of a font", text("font-family='DejaVu Sans Condensed'"));
    row("a name in another language",
        text("font-family='\xe6\x96\x87'")
                .replace(QStringLiteral("\xe6\x96\x87"), QStringLiteral("文泉驛微米黑")));
    for (const char *generic : {"serif", "sans-serif", "monospace", "cursive", "fantasy",
                                "system-ui", "Sans", "Serif", "Sans-Serif"})
        row(generic,
            QStringLiteral("<text y='40' font-family='%1'>ab</text>").arg(QLatin1String(generic)));
    row("inherit", text("font-family='inherit'"));
    row("nothing", text("font-family=''"));
    row("a font of the title's, by its id", svgFont() + text("font-family='Own'"));
    row("no letters", QStringLiteral("<text font-family='Nobody Has This'> </text>"));
    row("letters in other elements only",
        QStringLiteral("<text y='40' font-family='Nobody Has This'>"
                       "<tspan font-family='DejaVu Sans'>ab</tspan> </text>"));
    row("no text",
        QStringLiteral("<rect style='font-family:Nobody Has This' width='9'"
                       " height='9'/>"));
    row("a rule that fits nothing",
        QStringLiteral("<style>.b{font-family:'Nobody Has This'}</style>") + text("class='a'"));
    row("a rule, in quotes",
        QStringLiteral("<style>.a{font-family:'DejaVu Sans'}</style>") + text("class='a'"));
    row("a rule with one word",
        QStringLiteral("<style>.a{font-family:monospace}</style>") + text("class='a'"));
    row("a rule that an attribute of a font ends",
        QStringLiteral("<style>.a{font-family:'Nobody Has This'}</style>")
                + text("class='a' font-size='30'"));
}

void TestMissingFonts::noneAreNamed()
{
    QFETCH(QString, content);

    const QString title = titleOf(content);
    const Result rendered = runRender(
            title, {QStringLiteral("-o"), QStringLiteral("frames"), QStringLiteral("--strict")});
    QCOMPARE(rendered.errors, QString());
    QCOMPARE(rendered.exitCode, 0);
    const QString told = inspectTitle(title).output;
    QVERIFY2(!told.contains(QStringLiteral("[missing-font]")), qPrintable(told));
}

void TestMissingFonts::severalAreNamedInOrder()
{
    const QString title = titleOf(QStringLiteral(
            "<text y='40' font-family='First'>ab</text>\n"
            "<text y='50' font-family='Second'>ab<animate attributeName='font-family'"
            " values='Third;DejaVu Sans;Fourth' dur='80ms'/></text>\n"
            "<text y='60' font-family='First'>ab</text>"));
    const auto names = [](const QString &text) {
        static const QRegularExpression font(
                QStringLiteral("the font \"(\\w+)\" is not installed"));
        QStringList found;
        auto matches = font.globalMatch(text);
        while (matches.hasNext())
            found += matches.next().captured(1);
        return found;
    };
    const QStringList distinct{QStringLiteral("First"), QStringLiteral("Second"),
                               QStringLiteral("Fourth"), QStringLiteral("Third")};
    for (const char *jobs : {"1", "2"}) {
        const Result rendered = runRender(title,
                                          {QStringLiteral("-o"), QStringLiteral("frames"),
                                           QStringLiteral("--jobs"), QLatin1String(jobs)});
        QCOMPARE(rendered.exitCode, 0);
        QCOMPARE(names(rendered.errors), distinct);
    }
    QCOMPARE(runRender(title, {QStringLiteral("--raw"), QStringLiteral("--quiet")}).errors,
             QString());

    const InspectResult inspected = inspectTitle(title);
    QCOMPARE(names(inspected.output), distinct + QStringList(QStringLiteral("First")));
}

void TestMissingFonts::listsAreNamedOnceByEach()
{
    const QString title = titleOf(
            QStringLiteral("<text y='40' font-family='DejaVu Serif, sans-serif'>ab</text>"));
    const Result rendered = runRender(title, {QStringLiteral("-o"), QStringLiteral("frames")});
    QVERIFY2(rendered.errors.startsWith(
                     QStringLiteral("titlescene-render: warning: the list of fonts DejaVu Serif,"
                                    " sans-serif counts as one font that is not installed: \"")),
             qPrintable(rendered.errors));
    QCOMPARE(rendered.errors.count(QLatin1Char('\n')), 1);

    const QString told = inspectTitle(title).output;
    QVERIFY(told.contains(QStringLiteral("[font-list]")));
    QVERIFY(!told.contains(QStringLiteral("[missing-font]")));
}

void TestMissingFonts::manyTakeAnEnd()
{
    QString content;
    for (int i = 0; i < 150; ++i)
        content += QStringLiteral("<text y='40' font-family='Gone %1'>ab</text>").arg(i % 120);
    const QJsonArray problems =
            inspectTitle(titleOf(content), {QStringLiteral("--json")}).problems();
    const QString code = QStringLiteral("missing-font");
    const auto isMissingFont = [&code](const QJsonValue &problem) {
        return problem.toObject().value(QLatin1String("code")).toString() == code;
    };
    // The first hundred names, of which thirty come twice.
    QCOMPARE(std::count_if(problems.begin(), problems.end(), isMissingFont), 130);
}

void TestMissingFonts::strictRefuses_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("frames") << QStringList{QStringLiteral("-o"), QStringLiteral("frames")};
    QTest::newRow("by workers") << QStringList{QStringLiteral("-o"), QStringLiteral("frames"),
                                               QStringLiteral("--jobs"), QStringLiteral("2")};
    QTest::newRow("raw") << QStringList{QStringLiteral("--raw")};
    QTest::newRow("contact sheet")
            << QStringList{QStringLiteral("--contact-sheet"), QStringLiteral("sheet.png")};
    QTest::newRow("quiet") << QStringList{QStringLiteral("-o"), QStringLiteral("frames"),
                                          QStringLiteral("--quiet")};
}

void TestMissingFonts::strictRefuses()
{
    QFETCH(QStringList, arguments);

    const QString title =
            titleOf(QStringLiteral("<text y='40' font-family='Nobody Has This'>ab</text>"));
    const Result result = runRender(title, arguments + QStringList(QStringLiteral("--strict")));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(written(), QStringList());
    QVERIFY2(result.errors.contains(QStringLiteral("\"Nobody Has This\"")),
             qPrintable(result.errors));
    QVERIFY2(result.errors.endsWith(QStringLiteral(
                     "titlescene-render: warnings count as errors, because of --strict\n")),
             qPrintable(result.errors));

    const InspectResult inspected = inspectTitle(title, {QStringLiteral("--strict")});
    QCOMPARE(inspected.exitCode, 1);
    QCOMPARE(inspectTitle(title).exitCode, 0);
}

void TestMissingFonts::strictTakesAnyWarning()
{
    const QString title = titleOf(QStringLiteral("<rect width='9' height='9' fill='url(#gone)'/>"));
    const QStringList arguments{QStringLiteral("-o"), QStringLiteral("frames")};
    const Result strict = runRender(title, arguments + QStringList(QStringLiteral("--strict")));
    QCOMPARE(strict.exitCode, 1);
    QVERIFY2(strict.errors.contains(QStringLiteral("#gone")), qPrintable(strict.errors));
    QCOMPARE(written(), QStringList());
    QCOMPARE(runRender(title, arguments).exitCode, 0);
}

void TestMissingFonts::strictEndsARunThatWarnsLater_data()
{
    QTest::addColumn<QString>("jobs");

    QTest::newRow("one process") << QStringLiteral("1");
    QTest::newRow("two workers") << QStringLiteral("2");
}

// The renderer looks for what a frame refers to when it comes to the frame.
void TestMissingFonts::strictEndsARunThatWarnsLater()
{
    QFETCH(QString, jobs);

    const QString title = titleOf(QStringLiteral(
            "<rect width='9' height='9' fill='red'>"
            "<animate attributeName='stroke' values='none;none;url(#gone);none' calcMode='discrete'"
            " dur='400ms'/></rect>"));
    const QStringList arguments{QStringLiteral("-o"), QStringLiteral("frames"),
                                QStringLiteral("--jobs"), jobs};
    const Result strict = runRender(title, arguments + QStringList(QStringLiteral("--strict")));
    QCOMPARE(strict.exitCode, 1);
    QVERIFY2(strict.errors.contains(QStringLiteral("#gone")), qPrintable(strict.errors));
    QVERIFY(!QFile::exists(m_folder->filePath(QStringLiteral("frames/frame-000005.png"))));
}

void TestMissingFonts::strictLetsGoodTitlesPass()
{
    const QDir templates(QStringLiteral(TITLESCENE_TEMPLATES));
    const QStringList names = templates.entryList({QStringLiteral("*.svg")}, QDir::Files);
    QVERIFY(!names.isEmpty());
    for (const QString &name : names) {
        const Result result = runRender(readTemplate(name),
                                        {QStringLiteral("-o"), name, QStringLiteral("--at"),
                                         QStringLiteral("0"), QStringLiteral("--strict")});
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.exitCode, 0);
    }
}

QTEST_MAIN(TestMissingFonts)
#include "tst_missingfonts.moc"
