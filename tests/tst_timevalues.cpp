// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/TimeValue_p.h>

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

int clamped(qint64 value)
{
    return int(std::clamp<qint64>(value, lowest, highest));
}

} // namespace

class TimeValuesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void timeFromText_data();
    void timeFromText();
    void tellsTimesFromOtherTexts_data();
    void tellsTimesFromOtherTexts();
    void readsReferences_data();
    void readsReferences();
    void endIsBeginPlusDuration_data();
    void endIsBeginPlusDuration();
    void saturatedInt_data();
    void saturatedInt();
    void saturatedArithmetic_data();
    void saturatedArithmetic();
    void saturatedArithmeticIsExactOtherwise();
};

void TimeValuesTest::timeFromText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("ms");

    QTest::newRow("no unit is seconds") << QStringLiteral("2") << 2000;
    QTest::newRow("seconds") << QStringLiteral("2s") << 2000;
    QTest::newRow("milliseconds") << QStringLiteral("2ms") << 2;
    QTest::newRow("250 milliseconds") << QStringLiteral("250ms") << 250;
    QTest::newRow("surrounding spaces") << QStringLiteral("  1.5s ") << 1500;
    QTest::newRow("surrounding tabs and newlines") << QStringLiteral("\t250ms\r\n") << 250;
    QTest::newRow("surrounding no-break spaces") << QStringLiteral("\u00a01.5s\u00a0") << 1500;
    QTest::newRow("space before the unit") << QStringLiteral("3 s") << 3000;
    QTest::newRow("space before ms") << QStringLiteral("3 ms") << 3;
    QTest::newRow("zero") << QStringLiteral("0s") << 0;
    QTest::newRow("plus sign") << QStringLiteral("+2s") << 2000;
    QTest::newRow("negative") << QStringLiteral("-0.5s") << -500;
    QTest::newRow("negative milliseconds") << QStringLiteral("-3ms") << -3;
    QTest::newRow("leading point") << QStringLiteral(".5s") << 500;
    QTest::newRow("trailing point") << QStringLiteral("2.s") << 2000;
    QTest::newRow("exponent") << QStringLiteral("1e3ms") << 1000;
    QTest::newRow("negative exponent") << QStringLiteral("5e-1") << 500;

    QTest::newRow("1.9999ms is truncated") << QStringLiteral("1.9999ms") << 1;
    QTest::newRow("-1.9999ms is truncated") << QStringLiteral("-1.9999ms") << -1;
    QTest::newRow("0.0015s is truncated") << QStringLiteral("0.0015s") << 1;
    QTest::newRow("-0.0009s is truncated") << QStringLiteral("-0.0009s") << 0;
    QTest::newRow("1.0009s is truncated") << QStringLiteral("1.0009s") << 1000;
    QTest::newRow("the product is a double: 1.005") << QStringLiteral("1.005") << 1004;
    QTest::newRow("the product is a double: 1.005s") << QStringLiteral("1.005s") << 1004;
    QTest::newRow("the product is a double: 1.001") << QStringLiteral("1.001") << 1000;
    QTest::newRow("1005ms") << QStringLiteral("1005ms") << 1005;

    QTest::newRow("null") << QString() << 0;
    QTest::newRow("empty") << QStringLiteral("") << 0;
    QTest::newRow("only spaces") << QStringLiteral("   ") << 0;
    QTest::newRow("only s") << QStringLiteral("s") << 0;
    QTest::newRow("only ms") << QStringLiteral("ms") << 0;
    QTest::newRow("letters") << QStringLiteral("abc") << 0;
    QTest::newRow("upper case S") << QStringLiteral("2S") << 0;
    QTest::newRow("upper case MS") << QStringLiteral("2MS") << 0;
    QTest::newRow("mixed case Ms") << QStringLiteral("2Ms") << 0;
    QTest::newRow("mixed case mS") << QStringLiteral("2mS") << 0;
    QTest::newRow("minutes") << QStringLiteral("5min") << 0;
    QTest::newRow("hours") << QStringLiteral("5h") << 0;
    QTest::newRow("only one unit is taken off") << QStringLiteral("2ss") << 0;
    QTest::newRow("s after ms") << QStringLiteral("2mss") << 0;
    QTest::newRow("indefinite") << QStringLiteral("indefinite") << 0;
    QTest::newRow("clock value") << QStringLiteral("00:00:05") << 0;
    QTest::newRow("clock value with unit") << QStringLiteral("00:05s") << 0;
    QTest::newRow("syncbase") << QStringLiteral("a.end+1s") << 0;
    QTest::newRow("event") << QStringLiteral("click") << 0;
    QTest::newRow("decimal comma") << QStringLiteral("1,5s") << 0;
    QTest::newRow("group separator") << QStringLiteral("1,000ms") << 0;
    QTest::newRow("hexadecimal") << QStringLiteral("0x10ms") << 0;
    QTest::newRow("two numbers") << QStringLiteral("1 2s") << 0;
    QTest::newRow("list of begins") << QStringLiteral("1s;2s") << 0;
    QTest::newRow("Arabic-Indic digits") << QStringLiteral("\u0661\u0662s") << 0;

    QTest::newRow("highest") << QStringLiteral("2147483647ms") << highest;
    QTest::newRow("one below the highest") << QStringLiteral("2147483646ms") << highest - 1;
    QTest::newRow("one above the highest") << QStringLiteral("2147483648ms") << highest;
    QTest::newRow("lowest") << QStringLiteral("-2147483648ms") << lowest;
    QTest::newRow("one above the lowest") << QStringLiteral("-2147483647ms") << lowest + 1;
    QTest::newRow("one below the lowest") << QStringLiteral("-2147483649ms") << lowest;
    QTest::newRow("seconds above int") << QStringLiteral("2147484s") << highest;
    QTest::newRow("seconds below int") << QStringLiteral("-2147484s") << lowest;
    QTest::newRow("huge") << QStringLiteral("1e300") << highest;
    QTest::newRow("huge and negative") << QStringLiteral("-1e300ms") << lowest;
    QTest::newRow("product beyond double") << QStringLiteral("1e308") << highest;
    QTest::newRow("a number that no double can be") << QStringLiteral("1e999") << 0;
    QTest::newRow("inf") << QStringLiteral("inf") << highest;
    QTest::newRow("-inf") << QStringLiteral("-inf") << lowest;
    QTest::newRow("inf milliseconds") << QStringLiteral("infms") << highest;
    QTest::newRow("inf seconds") << QStringLiteral("infs") << highest;
    QTest::newRow("nan") << QStringLiteral("nan") << 0;
    QTest::newRow("nan seconds") << QStringLiteral("nans") << 0;
}

void TimeValuesTest::timeFromText()
{
    QFETCH(QString, text);
    QFETCH(int, ms);
    QCOMPARE(::timeFromText(text), ms);
}

void TimeValuesTest::endIsBeginPlusDuration_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("duration");
    QTest::addColumn<int>("end");

    QTest::newRow("different units") << QStringLiteral("1s") << QStringLiteral("500ms") << 1500;
    QTest::newRow("unreadable begin") << QStringLiteral("x") << QStringLiteral("2s") << 2000;
    QTest::newRow("unreadable duration") << QStringLiteral("2s") << QStringLiteral("x") << 2000;
    QTest::newRow("negative begin") << QStringLiteral("-1s") << QStringLiteral("3s") << 2000;
    QTest::newRow("negative duration") << QStringLiteral("1s") << QStringLiteral("-3s") << -2000;
    QTest::newRow("beyond the highest")
            << QStringLiteral("2147483647ms") << QStringLiteral("1ms") << highest;
    QTest::newRow("beyond the lowest")
            << QStringLiteral("-2147483648ms") << QStringLiteral("-1ms") << lowest;
    QTest::newRow("inf and -inf") << QStringLiteral("inf") << QStringLiteral("-inf") << -1;
}

void TimeValuesTest::endIsBeginPlusDuration()
{
    QFETCH(QString, begin);
    QFETCH(QString, duration);
    QFETCH(int, end);
    QCOMPARE(saturatedSum(::timeFromText(duration), ::timeFromText(begin)), end);
}

void TimeValuesTest::saturatedInt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("result");

    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("0") << 0.0 << 0;
    QTest::newRow("-0") << -0.0 << 0;
    QTest::newRow("truncated") << 1.9999 << 1;
    QTest::newRow("truncated towards zero") << -1.9999 << -1;
    QTest::newRow("highest") << double(highest) << highest;
    QTest::newRow("just below the highest") << double(highest) - 0.5 << highest - 1;
    QTest::newRow("just above the highest") << double(highest) + 0.5 << highest;
    QTest::newRow("one above the highest") << double(highest) + 1.0 << highest;
    QTest::newRow("lowest") << double(lowest) << lowest;
    QTest::newRow("just above the lowest") << double(lowest) + 0.5 << lowest + 1;
    QTest::newRow("just below the lowest") << double(lowest) - 0.5 << lowest;
    QTest::newRow("one below the lowest") << double(lowest) - 1.0 << lowest;
    QTest::newRow("largest double") << std::numeric_limits<double>::max() << highest;
    QTest::newRow("smallest double") << std::numeric_limits<double>::lowest() << lowest;
    QTest::newRow("infinity") << infinity << highest;
    QTest::newRow("minus infinity") << -infinity << lowest;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 0;
    QTest::newRow("negative NaN") << -std::numeric_limits<double>::quiet_NaN() << 0;
}

void TimeValuesTest::saturatedInt()
{
    QFETCH(double, value);
    QFETCH(int, result);
    QCOMPARE(::saturatedInt(value), result);
}

void TimeValuesTest::saturatedArithmetic_data()
{
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("sum");
    QTest::addColumn<int>("difference");

    QTest::newRow("small") << 3 << 5 << 8 << -2;
    QTest::newRow("zero") << 0 << 0 << 0 << 0;
    QTest::newRow("highest and 0") << highest << 0 << highest << highest;
    QTest::newRow("highest and 1") << highest << 1 << highest << highest - 1;
    QTest::newRow("highest and -1") << highest << -1 << highest - 1 << highest;
    QTest::newRow("highest twice") << highest << highest << highest << 0;
    QTest::newRow("lowest and 0") << lowest << 0 << lowest << lowest;
    QTest::newRow("lowest and 1") << lowest << 1 << lowest + 1 << lowest;
    QTest::newRow("lowest and -1") << lowest << -1 << lowest << lowest + 1;
    QTest::newRow("lowest twice") << lowest << lowest << lowest << 0;
    QTest::newRow("0 and lowest") << 0 << lowest << lowest << highest;
    QTest::newRow("-1 and lowest") << -1 << lowest << lowest << highest;
    QTest::newRow("highest and lowest") << highest << lowest << -1 << highest;
    QTest::newRow("lowest and highest") << lowest << highest << -1 << lowest;
}

void TimeValuesTest::saturatedArithmetic()
{
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(int, sum);
    QFETCH(int, difference);
    QCOMPARE(saturatedSum(a, b), sum);
    QCOMPARE(saturatedDifference(a, b), difference);
}

void TimeValuesTest::saturatedArithmeticIsExactOtherwise()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 100000; ++i) {
        const int a = int(random.generate());
        const int b = int(random.generate());
        QCOMPARE(saturatedSum(a, b), clamped(qint64(a) + b));
        QCOMPARE(saturatedDifference(a, b), clamped(qint64(a) - b));
    }
}

void TimeValuesTest::tellsTimesFromOtherTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTime");

    for (const char *time : {"0", "0s", "2", " 1.5s ", "250ms", "-3s", "1e3ms", "inf"})
        QTest::newRow(time) << QString::fromLatin1(time) << true;
    for (const char *other : {"", " ", "s", "indefinite", "00:05", "5min", "1h", "a.end", "1;2",
                              "2S", "nan", "1,5", "click"})
        QTest::newRow(other) << QString::fromLatin1(other) << false;
}

void TimeValuesTest::tellsTimesFromOtherTexts()
{
    QFETCH(QString, text);
    QFETCH(bool, isTime);
    QCOMPARE(isTimeText(text), isTime);
}

void TimeValuesTest::readsReferences_data()
{
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("fromBegin");
    QTest::addColumn<int>("offset");

    const auto row = [](const char *begin, const char *id, bool fromBegin, int offset) {
        QTest::newRow(begin) << QString::fromLatin1(begin) << QString::fromLatin1(id) << fromBegin
                             << offset;
    };
    row("a.end", "a", false, 0);
    row("a.begin", "a", true, 0);
    row("a.end+0.5s", "a", false, 500);
    row("a.begin - 250ms", "a", true, -250);
    row("a.end+-1s", "a", false, -1000);
    row("a.end-x", "a", false, 0);
    row("my-anim.end-1s", "my-anim", false, 0);
    row("a.begin.end", "a", true, 0);
    row("a.end.begin", "a.end", true, 0);
    row("1s", "", false, 0);
    row("-1s", "", false, 0);
    row("a.click+1s", "", false, 0);
    row(".end+1s", "", false, 0);
}

void TimeValuesTest::readsReferences()
{
    QFETCH(QString, begin);
    QFETCH(QString, id);
    QFETCH(bool, fromBegin);
    QFETCH(int, offset);
    const BeginReference reference = referenceInBegin(begin);
    QCOMPARE(reference.id, id);
    QCOMPARE(reference.fromBegin, fromBegin);
    QCOMPARE(reference.offsetTime(), offset);
}

QTEST_APPLESS_MAIN(TimeValuesTest)

#include "tst_timevalues.moc"
