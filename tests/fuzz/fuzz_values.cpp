// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FuzzCheck.h"

#include <Scene/ClipTime_p.h>
#include <Scene/HeldAnimation_p.h>
#include <Scene/KeyValues_p.h>
#include <Scene/NumberList_p.h>
#include <Scene/NumberScan_p.h>
#include <Scene/PlainXml_p.h>
#include <Scene/TimeValue_p.h>
#include <Scene/XmlText_p.h>

#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

// What holds for times, key values, number lists and names, whatever they are.

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

int clamped(qint64 value)
{
    return int(std::clamp<qint64>(value, lowest, highest));
}

void checkTimes(int a, int b, double value)
{
    FUZZ_CHECK(saturatedSum(a, b) == clamped(qint64(a) + b));
    FUZZ_CHECK(saturatedDifference(a, b) == clamped(qint64(a) - b));
    const int rounded = saturatedInt(value);
    if (std::isnan(value))
        FUZZ_CHECK(rounded == 0);
    else if (std::abs(value) < 2e9)
        FUZZ_CHECK(rounded == std::trunc(value));
    else
        FUZZ_CHECK(value > 0.0 ? rounded >= 2'000'000'000 : rounded <= -2'000'000'000);
}

void checkTimeText(const QString &text, int time)
{
    FUZZ_CHECK(timeFromText(QLatin1Char('\t') + text + QLatin1Char(' ')) == timeFromText(text));
    FUZZ_CHECK(timeFromText(QString::number(time) + QStringLiteral("ms")) == time);
}

void checkPosition(const KeyValuePosition &position, int valueCount)
{
    FUZZ_CHECK(position.index >= 0 && position.index < std::max(valueCount, 1));
    FUZZ_CHECK(position.nextIndex >= position.index && position.nextIndex <= position.index + 1);
    FUZZ_CHECK(position.nextIndex < std::max(valueCount, 1));
    FUZZ_CHECK(position.fraction >= 0.0 && position.fraction <= 1.0);
}

void checkKeyValues(int time, int begin, int end, int repeatCount, int valueCount)
{
    const double progress = cycleProgress(time, begin, end, repeatCount);
    FUZZ_CHECK(progress >= 0.0 && progress <= 1.0);
    if (end <= begin)
        FUZZ_CHECK(progress == 1.0);
    const KeyValuePosition linear = keyValuePosition(progress, valueCount, false);
    const KeyValuePosition discrete = keyValuePosition(progress, valueCount, true);
    checkPosition(linear, valueCount);
    checkPosition(discrete, valueCount);
    FUZZ_CHECK(discrete.index == linear.index && discrete.nextIndex == linear.nextIndex);
    FUZZ_CHECK(discrete.fraction == (linear.fraction > 0.5 ? 1.0 : 0.0));
    const int slice = keyValueSlice(progress, valueCount);
    FUZZ_CHECK(slice >= 0 && slice < valueCount);
}

std::vector<QString> texts(const std::vector<double> &numbers)
{
    std::vector<QString> result;
    for (const double number : numbers)
        result.push_back(interpolatedNumber(number, number, 0.0));
    return result;
}

// A list that is put together again from its numbers and separators reads as the same numbers.
void checkNumberList(const QString &text)
{
    const QString closed = text + closingCharacter(text);
    bool ok = false;
    const std::vector<double> numbers = numberRuns(closed, &ok);
    if (!ok || text.isEmpty())
        return;
    const std::vector<QString> separators = separatorRuns(closed);
    FUZZ_CHECK(std::max(numbers.size(), separators.size())
               <= std::min(numbers.size(), separators.size()) + 1);
    const bool startsWithNumber = isNumberCharacter(text.front());
    const QString again = startsWithNumber ? interleaved(texts(numbers), separators)
                                           : interleaved(separators, texts(numbers));
    FUZZ_CHECK(separatorRuns(again + closingCharacter(again)) == separators);
    const std::vector<double> read = numberRuns(again + closingCharacter(again), &ok);
    FUZZ_CHECK(ok && read.size() == numbers.size());
    for (std::size_t i = 0; i < read.size(); ++i)
        FUZZ_CHECK(std::abs(read[i] - numbers[i]) <= 0.0006 + std::abs(numbers[i]) * 1e-12);
}

void checkNumberScan(const QString &text)
{
    const std::string bytes = text.toStdString();
    const NumberScan scan = scanNumbers(bytes);
    FUZZ_CHECK(scan.count >= 0 && std::size_t(scan.count) <= bytes.size());
    scanStyle(bytes);
}

bool isWellFormed(const QString &text)
{
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

bool isPlainXml(const QByteArray &text)
{
    PlainXml xml(text, std::numeric_limits<int>::max());
    while (true) {
        const PlainXml::Token token = xml.next();
        if (token == PlainXml::Token::End || token == PlainXml::Token::NotPlain)
            return token == PlainXml::Token::End;
    }
}

// What the fast reader takes for XML is XML, also with the input inside of an element.
void checkPlainXml(const QString &text)
{
    for (const QString &pattern : {QStringLiteral("%1"), QStringLiteral("<a>%1</a>"),
                                   QStringLiteral("<a %1/>"), QStringLiteral("<a b=\"%1\"/>")}) {
        const QString xml = pattern.arg(text);
        FUZZ_CHECK(!isPlainXml(xml.toUtf8()) || isWellFormed(xml));
    }
}

void checkXmlText(const QString &text)
{
    if (isAttributeName(text))
        FUZZ_CHECK(isWellFormed(QStringLiteral("<a %1=\"\"/>").arg(text)));
    const QString allowed = withoutForbiddenCharacters(text);
    FUZZ_CHECK(withoutForbiddenCharacters(allowed) == allowed);
    FUZZ_CHECK(
            isWellFormed(QStringLiteral("<a>") + allowed.toHtmlEscaped() + QStringLiteral("</a>")));
}

void checkDeclaration(const QByteArray &text)
{
    const QByteArray declared = withUtf8Declaration(text);
    FUZZ_CHECK(withUtf8Declaration(declared) == declared);
}

// The renderer's own arithmetic shows the same progress, whatever its clock says.
void checkHeldAnimation(const RendererTiming &timing, int elapsed, int clock)
{
    for (const AfterEnd afterEnd : {AfterEnd::ShowsNothing, AfterEnd::ShowsEnd}) {
        const RendererTiming held = heldTiming(timing, afterEnd, elapsed);
        const auto progress = [&held](int ms) { return (ms - held.from) / held.runningTime; };
        FUZZ_CHECK(progress(clock) == progress(elapsed));
        FUZZ_CHECK(!std::isnan(progress(clock)));
        FUZZ_CHECK((clock < held.from) == (elapsed < held.from));
    }
}

// Played forwards, a title never runs backwards.
void checkClipTime(const ClipTiming &timing, int a, int b)
{
    const int earlier = documentTime(timing, std::min(a, b));
    const int later = documentTime(timing, std::max(a, b));
    FUZZ_CHECK(!(timing.speed > 0.0) || earlier <= later);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto integer = [&input] { return input.ConsumeIntegral<int>(); };
    const auto anyDouble = [&input] {
        const quint64 bits = input.ConsumeIntegral<quint64>();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    };
    const int a = integer();
    const int b = integer();
    const int c = integer();
    checkTimes(a, b, anyDouble());
    checkKeyValues(a, b, c, integer(), input.ConsumeIntegralInRange(1, 20'000));
    checkHeldAnimation({double(integer()), double(integer()), double(integer())}, a, b);
    checkClipTime({a, b, c, anyDouble()}, integer(), integer());
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    const QString text = QString::fromStdString(bytes);
    checkTimeText(text, a);
    checkNumberList(text.trimmed());
    checkNumberScan(text);
    checkPlainXml(text);
    checkXmlText(text);
    checkDeclaration(QByteArray::fromStdString(bytes));
    return 0;
}
