// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "PathData.h"

#include <QPointF>
#include <QRegularExpression>

#include <vector>

namespace {

// How many numbers a segment takes; -1 for what is no command.
int numbersOf(QChar command)
{
    switch (command.toUpper().unicode()) {
    case 'Z':
        return 0;
    case 'H':
    case 'V':
        return 1;
    case 'M':
    case 'L':
    case 'T':
        return 2;
    case 'S':
    case 'Q':
        return 4;
    case 'C':
        return 6;
    case 'A':
        return 7;
    default:
        return -1;
    }
}

class PathReader
{
public:
    PathReader(const QString &d, PathData &result) : m_d(d), m_result(result) {}

    void run()
    {
        QChar command;
        while (skipSpaces()) {
            if (m_d.at(m_at).isLetter())
                command = m_d.at(m_at++);
            else if (command.toUpper() == QLatin1Char('M'))
                command = command.isUpper() ? QLatin1Char('L') : QLatin1Char('l');
            if (!readSegment(command))
                break;
            m_result.isWhole = !skipSpaces();
        }
        endPart();
    }

private:
    bool skipSpaces()
    {
        while (m_at < m_d.size() && (m_d.at(m_at).isSpace() || m_d.at(m_at) == QLatin1Char(',')))
            ++m_at;
        return m_at < m_d.size();
    }

    bool readNumber(bool isFlag)
    {
        static const QRegularExpression number(
                QStringLiteral("[-+]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][-+]?[0-9]+)?"));
        static const QRegularExpression flag(QStringLiteral("[01]"));
        const QRegularExpression::MatchOptions anchored = QRegularExpression::AnchoredMatchOption
                | QRegularExpression::DontCheckSubjectStringMatchOption;
        if (!skipSpaces())
            return false;
        // Checking the whole text for each number would take its length squared.
        const QRegularExpressionMatch match =
                (isFlag ? flag : number)
                        .match(m_d, m_at, QRegularExpression::NormalMatch, anchored);
        if (!match.hasMatch())
            return false;
        m_numbers.push_back(match.captured().toDouble());
        m_at = match.capturedEnd();
        return true;
    }

    bool readSegment(QChar command)
    {
        const int count = numbersOf(command);
        const bool isArc = command.toUpper() == QLatin1Char('A');
        const bool isRepeatedEnd = count == 0 && m_at > 0 && m_d.at(m_at - 1) != command;
        m_numbers.clear();
        for (int i = 0; i < count; ++i) {
            if (!readNumber(isArc && (i == 3 || i == 4)))
                return false;
        }
        if (count < 0 || isRepeatedEnd)
            return false;
        m_result.hasArcs = m_result.hasArcs || isArc;
        // The first place is never relative, and there is one way only to the start of a part.
        m_result.commands +=
                count == 0 || m_result.commands.isEmpty() ? command.toUpper() : command;
        draw(command);
        return true;
    }

    void draw(QChar command)
    {
        const QPointF origin = command.isLower() ? m_point : QPointF();
        const QChar kind = command.toUpper();
        if (kind == QLatin1Char('M')) {
            endPart();
            m_start = m_point = origin + QPointF(m_numbers[0], m_numbers[1]);
        } else if (kind == QLatin1Char('Z')) {
            lineTo(m_start);
        } else if (kind == QLatin1Char('H')) {
            lineTo(QPointF(origin.x() + m_numbers[0], m_point.y()));
        } else if (kind == QLatin1Char('V')) {
            lineTo(QPointF(m_point.x(), origin.y() + m_numbers[0]));
        } else {
            const std::size_t first = kind == QLatin1Char('A') ? 5 : 0;
            for (std::size_t i = first; i + 1 < m_numbers.size(); i += 2)
                m_hasLength =
                        m_hasLength || origin + QPointF(m_numbers[i], m_numbers[i + 1]) != m_point;
            const std::size_t last = m_numbers.size() - 2;
            lineTo(origin + QPointF(m_numbers[last], m_numbers[last + 1]));
        }
    }

    void lineTo(const QPointF &point)
    {
        m_hasSegments = true;
        m_hasLength = m_hasLength || point != m_point;
        m_point = point;
    }

    void endPart()
    {
        m_result.hasDots = m_result.hasDots || (m_hasSegments && !m_hasLength);
        m_hasSegments = m_hasLength = false;
    }

    const QString &m_d;
    PathData &m_result;
    int m_at = 0;
    std::vector<double> m_numbers; // of the current segment
    QPointF m_start;
    QPointF m_point;
    bool m_hasSegments = false;
    bool m_hasLength = false;
};

} // namespace

PathData::PathData(const QString &d)
{
    PathReader(d, *this).run();
}
