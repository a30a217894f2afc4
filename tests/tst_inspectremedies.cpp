// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"
#include "RemedyCases.h"

#include <memory>

// Whether what titlescene-inspect says against a problem helps: tests/data/remedies/ has titles
// with problems, the same with the remedies applied, and how they look in a browser, written down
// as still titles.

namespace {

/// Composed transforms are not equal to the last bit.
constexpr int sameColor = 4;

/// A difference that a person sees.
constexpr int otherColor = 32;

int largestDifference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return 255;
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, channelDifference(a.pixel(x, y), b.pixel(x, y)));
    }
    return largest;
}

/// What an application shows, with what clip paths erase.
QImage shownAt(SvgDocument &document, int ms)
{
    QImage picture = renderAt(document, ms);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (!clipping)
        return picture;
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.drawImage(0, 0, renderAt(*clipping, ms));
    return picture;
}

QImage pictureOfStill(const QString &title)
{
    SvgDocument document(title);
    return renderAt(document, 0);
}

bool isStill(const QString &title)
{
    return !title.contains(QLatin1String("<animate")) && !title.contains(QLatin1String("<set"));
}

QString toldOf(const InspectResult &result)
{
    QStringList lines;
    for (const QJsonValue &problem : result.problems())
        lines += problemText(problem.toObject()) + QLatin1String(" -> ")
                + problem.toObject().value(QLatin1String("remedy")).toString();
    return lines.join(QLatin1Char('\n'));
}

enum class Cases { All, OfProblems };

/// A row for each case of all files, "file: name".
void addCases(Cases which)
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("number");
    const QDir folder(QStringLiteral(TITLESCENE_TEST_DATA "/remedies"));
    for (const QString &file : folder.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
        const QString path = folder.filePath(file);
        const std::vector<RemedyCase> cases = RemedyReader::cases(path);
        for (std::size_t i = 0; i < cases.size(); ++i) {
            if (which == Cases::OfProblems && !cases[i].isAboutProblem())
                continue;
            QTest::addRow("%s: %s", qPrintable(file.section(QLatin1Char('.'), 0, 0)),
                          qPrintable(cases[i].name))
                    << path << int(i);
        }
    }
}

RemedyCase currentCase()
{
    const auto value = [](const char *column, int type) { return QTest::qData(column, type); };
    const auto &path = *static_cast<QString *>(value("path", qMetaTypeId<QString>()));
    const int number = *static_cast<int *>(value("number", qMetaTypeId<int>()));
    return RemedyReader::cases(path).at(std::size_t(number));
}

/// Announces what the renderer says of the broken title when it is loaded, and then drawn as often.
std::vector<std::unique_ptr<ExpectedWarning>> announcedWarnings(const RemedyCase &remedy, int drawn)
{
    std::vector<std::unique_ptr<ExpectedWarning>> announced;
    if (!remedy.warningWhenLoaded.isEmpty())
        announced.push_back(std::make_unique<ExpectedWarning>(remedy.warningWhenLoaded));
    for (int i = 0; !remedy.warning.isEmpty() && i <= drawn; ++i)
        announced.push_back(std::make_unique<ExpectedWarning>(remedy.warning));
    return announced;
}

} // namespace

class TestInspectRemedies : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void problemIsTold_data() { addCases(Cases::OfProblems); }
    void problemIsTold();
    void problemIsReal_data() { addCases(Cases::OfProblems); }
    void problemIsReal();
    void remedyHelps_data() { addCases(Cases::All); }
    void remedyHelps();
    void remedyIsClean_data() { addCases(Cases::All); }
    void remedyIsClean();
};

void TestInspectRemedies::problemIsTold()
{
    const RemedyCase remedy = currentCase();
    const InspectResult result = inspectTitle(remedy.broken, {QStringLiteral("--json")});
    QCOMPARE(result.errors, QString());
    const QJsonArray problems = result.problems();
    QVERIFY(!problems.isEmpty());
    QStringList expected = remedy.code.split(QLatin1Char(' '));
    QStringList told;
    bool isSaid = false;
    bool isThere = remedy.line == 0;
    for (const QJsonValue &value : problems) {
        const QJsonObject problem = value.toObject();
        told.append(problem.value(QLatin1String("code")).toString());
        isThere |= problem.value(QLatin1String("line")).toInt() == remedy.line
                && problem.value(QLatin1String("column")).toInt() == remedy.column;
        isSaid |= problem.value(QLatin1String("remedy")).toString().contains(remedy.remedy);
    }
    told.removeDuplicates();
    told.sort();
    expected.sort();
    QCOMPARE(told, expected);
    QVERIFY(!remedy.remedy.isEmpty());
    QVERIFY2(isSaid, qPrintable(toldOf(result)));
    QVERIFY2(isThere, qPrintable(toldOf(result)));
}

/// The broken title differs from what a browser shows of it.
void TestInspectRemedies::problemIsReal()
{
    const RemedyCase remedy = currentCase();
    QVERIFY(!remedy.twins.empty());
    const auto announced = announcedWarnings(remedy, int(remedy.twins.size()));
    SvgDocument broken(remedy.broken);
    int largest = 0;
    for (const StillTwin &twin : remedy.twins)
        largest = std::max(largest,
                           largestDifference(shownAt(broken, twin.ms),
                                             pictureOfStill(remedy.shownOfBroken(twin))));
    if (remedy.isAboutLength())
        QVERIFY(broken.animationDurationTotal() != remedy.length.toInt());
    else
        QVERIFY2(largest >= otherColor,
                 qPrintable(QStringLiteral("the difference is %1 at most").arg(largest)));
}

/// The remedied title looks as in a browser.
void TestInspectRemedies::remedyHelps()
{
    const RemedyCase remedy = currentCase();
    QVERIFY(!remedy.twins.empty());
    SvgDocument remedied(remedy.remedied);
    QVERIFY2(remedied.isLoaded(), qPrintable(remedied.errorString()));
    for (const StillTwin &twin : remedy.twins) {
        QVERIFY(isStill(twin.title));
        const QImage expected = pictureOfStill(twin.title);
        const QImage actual = shownAt(remedied, twin.ms);
        if (isBlank(expected))
            QVERIFY2(isBlank(actual), qPrintable(QStringLiteral("at %1 ms").arg(twin.ms)));
        else
            COMPARE_PICTURES(actual, expected, sameColor);
    }
    if (remedy.isAboutLength())
        QCOMPARE(remedied.animationDurationTotal(), remedy.length.toInt());
}

void TestInspectRemedies::remedyIsClean()
{
    const InspectResult result = inspectTitle(
            currentCase().remedied, {QStringLiteral("--json"), QStringLiteral("--strict")});
    QCOMPARE(result.errors, QString());
    QVERIFY2(result.problems().isEmpty(), qPrintable(toldOf(result)));
    QCOMPARE(result.exitCode, 0);
}

QTEST_MAIN(TestInspectRemedies)
#include "tst_inspectremedies.moc"
