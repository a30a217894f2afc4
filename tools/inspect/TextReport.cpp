// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextReport.h"

#include "Problems.h"
#include "Timeline.h"
#include "Understood.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int barColumns = 60;
constexpr int mostTicks = 6;
constexpr int mostUsers = 6;
constexpr int widestCell = 400; // with all users
constexpr int widestText = 80;
constexpr int longestReason = 1000;

QString yesOrNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString placeText(const Place &place)
{
    return QStringLiteral("%1:%2").arg(place.line).arg(place.column);
}

// How many columns of a terminal a character takes.
int columnsOf(uint c)
{
    struct Range
    {
        uint first;
        uint last;
    };
    static const std::array<Range, 9> wide{{{0x1100, 0x115f},
                                            {0x2e80, 0x303e},
                                            {0x3041, 0xa4cf},
                                            {0xac00, 0xd7a3},
                                            {0xf900, 0xfaff},
                                            {0xfe30, 0xfe6f},
                                            {0xff00, 0xff60},
                                            {0x1f300, 0x1faff},
                                            {0x20000, 0x3fffd}}};
    switch (QChar::category(c)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        return std::any_of(wide.begin(), wide.end(),
                           [c](const Range &range) { return range.first <= c && c <= range.last; })
                ? 2
                : 1;
    }
}

int columnsOf(const QString &text)
{
    int columns = 0;
    for (const uint c : text.toUcs4())
        columns += columnsOf(c);
    return columns;
}

// Rows of cells, each column as wide as its widest cell.
class Table
{
public:
    void add(const QStringList &cells)
    {
        m_rows.emplace_back();
        for (const QString &cell : cells)
            m_rows.back() += shortened(cell, widestCell);
    }

    QString text() const
    {
        std::vector<int> widths;
        for (const QStringList &row : m_rows) {
            widths.resize(std::max(widths.size(), std::size_t(row.size())), 0);
            for (int column = 0; column < row.size(); ++column) {
                int &width = widths[std::size_t(column)];
                width = std::max(width, columnsOf(row.at(column)));
            }
        }
        QString result;
        for (const QStringList &row : m_rows) {
            QString line;
            for (int column = 0; column < row.size(); ++column)
                line += QStringLiteral("  ") + row.at(column)
                        + QString(widths[std::size_t(column)] - columnsOf(row.at(column)),
                                  QLatin1Char(' '));
            while (line.endsWith(QLatin1Char(' ')))
                line.chop(1);
            result += line + QLatin1Char('\n');
        }
        return result;
    }

private:
    std::vector<QStringList> m_rows;
};

QString heading(const QString &text, std::size_t count)
{
    return count == 0 ? QStringLiteral("\n%1: none\n").arg(text)
                      : QStringLiteral("\n%1\n").arg(text);
}

QString repeatText(const Animation &animation)
{
    return animation.repeatCount < 0 ? QStringLiteral("indefinite")
                                     : QString::number(animation.repeatCount);
}

QString attributeText(const Animation &animation)
{
    return animation.attribute.isEmpty() ? QStringLiteral("-")
                                         : shortened(animation.attribute, widestText);
}

QString triggerText(const Animation &animation)
{
    return animation.trigger.isEmpty() ? QStringLiteral("-")
                                       : shortened(animation.trigger, widestText);
}

QString summary(const Understood &title)
{
    Table table;
    const QSizeF size = title.size();
    table.add({QStringLiteral("bounds"),
               QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())});
    table.add({QStringLiteral("duration"), secondsText(title.duration())});
    const int conclusion = title.conclusionDuration();
    table.add({QStringLiteral("conclusion"),
               conclusion == 0 ? QStringLiteral("none")
                               : QStringLiteral("%1, from %2 on")
                                         .arg(secondsText(conclusion),
                                              secondsText(Timeline(title).conclusion()))});
    table.add({QStringLiteral("clipping"),
               title.hasClipping()
                       ? QStringLiteral("%1 shapes erase the title").arg(title.clippingShapes())
                       : QStringLiteral("none")});
    return table.text();
}

QString animationsText(const Understood &title)
{
    Table table;
    table.add({QStringLiteral("#"), QStringLiteral("element"), QStringLiteral("attribute"),
               QStringLiteral("kind"), QStringLiteral("begin"), QStringLiteral("end"),
               QStringLiteral("repeat"), QStringLiteral("freeze"), QStringLiteral("player"),
               QStringLiteral("place"), QStringLiteral("animation"), QStringLiteral("trigger")});
    int number = 0;
    for (const Animation &animation : title.animations()) {
        table.add({QString::number(++number), title.label(animation.target),
                   attributeText(animation), nameOf(animation.kind), secondsText(animation.begin),
                   secondsText(animation.end), repeatText(animation), yesOrNo(animation.freezes),
                   nameOf(animation.player), placeText(title.element(animation.element).place),
                   title.label(animation.element), triggerText(animation)});
    }
    return heading(QStringLiteral("Animations"), title.animations().size())
            + (number > 0 ? table.text() : QString());
}

int columnOf(const Timeline &timeline, int ms)
{
    return int(std::lround(timeline.positionOf(ms) * barColumns));
}

// "=" while the animation runs, "-" while its last value holds, "|" where the closing part begins.
QString barText(const Timeline &timeline, const Animation &animation)
{
    QString bar(barColumns, QLatin1Char(' '));
    if (timeline.conclusion() > 0)
        bar[std::min(columnOf(timeline, timeline.conclusion()), barColumns - 1)] = QLatin1Char('|');
    const int begin = std::min(columnOf(timeline, animation.begin), barColumns - 1);
    const int end = std::max(columnOf(timeline, timeline.runsUntil(animation)), begin + 1);
    for (int column = begin; column < end; ++column)
        bar[column] = QLatin1Char('=');
    if (Timeline::isHeld(animation)) {
        for (int column = end; column < barColumns; ++column)
            bar[column] = QLatin1Char('-');
    }
    return bar;
}

QString scaleText(const Timeline &timeline)
{
    QString scale;
    const int tick = timeline.tick(mostTicks);
    for (qint64 ms = timeline.begin(); ms <= timeline.end(); ms += tick)
        scale = scale.leftJustified(columnOf(timeline, int(ms))) + secondsText(int(ms))
                + QLatin1Char(' ');
    return scale;
}

QString timelineText(const Understood &title)
{
    if (title.animations().empty())
        return QString();
    const Timeline timeline(title);
    Table table;
    table.add({QString(), QString(), scaleText(timeline)});
    int number = 0;
    for (const Animation &animation : title.animations())
        table.add({QString::number(++number),
                   title.label(animation.target) + QLatin1Char(' ') + attributeText(animation),
                   barText(timeline, animation)});
    return QStringLiteral(
                   "\nTimeline (= runs, - holds its last value, | the closing part begins)\n")
            + table.text();
}

QString colorsText(const Understood &title)
{
    Table table;
    for (const AdjustableColor &color : title.adjustableColors())
        table.add({title.label(color.element), color.attribute, shortened(color.value, widestText),
                   placeText(title.element(color.element).placeOf(color.attribute))});
    return heading(QStringLiteral("Adjustable colours"), title.adjustableColors().size())
            + table.text();
}

QString usersText(const Understood &title, const Definition &definition)
{
    if (definition.users.empty())
        return QStringLiteral("used by nobody");
    QStringList users;
    for (const Definition::User &user : definition.users) {
        if (users.size() == mostUsers) {
            users += QStringLiteral("%1 more").arg(int(definition.users.size()) - mostUsers);
            break;
        }
        users += QStringLiteral("%1 (%2)").arg(title.label(user.element),
                                               placeText(title.element(user.element).place));
    }
    return QStringLiteral("used by ") + users.join(QStringLiteral(", "));
}

QString definitionsText(const Understood &title)
{
    Table table;
    for (const Definition &definition : title.definitions())
        table.add({title.label(definition.element),
                   placeText(title.element(definition.element).place),
                   usersText(title, definition)});
    return heading(QStringLiteral("Definitions"), title.definitions().size()) + table.text();
}

QString counted(int count, const QString &what)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(what,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

QString factsText(const Understood &title)
{
    return title.name() + QLatin1Char('\n') + summary(title) + animationsText(title)
            + timelineText(title) + colorsText(title) + definitionsText(title) + QLatin1Char('\n');
}

QString problemsText(const QString &titleName, const std::vector<Problem> &problems)
{
    QString text;
    for (const Problem &problem : problems)
        text += QStringLiteral("%1:%2: %3: %4 [%5]\n    %6\n")
                        .arg(titleName, placeText(problem.place), nameOf(problem.severity),
                             shortened(problem.reason, longestReason), problem.code,
                             problem.remedy);
    const auto count = [&](Problem::Severity severity) {
        return counted(countOf(severity, problems), nameOf(severity));
    };
    return text
            + QStringLiteral("%1: %2, %3\n")
                      .arg(titleName, count(Problem::Severity::Warning),
                           count(Problem::Severity::Note));
}
