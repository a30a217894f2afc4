// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TimelinePlot.h"

#include "Timeline.h"
#include "Understood.h"

#include <Scene/XmlText_p.h>

#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int margin = 16;
constexpr int headHeight = 56; // the caption and the scale
constexpr int rowHeight = 22;
constexpr int barHeight = 12;
constexpr int leastBarWidth = 2;
constexpr int chartWidth = 720;
constexpr int fontSize = 12;
constexpr int letterWidth = 8;   // of the widest common letters at that size
constexpr int longestLabel = 50; // element and attribute
constexpr int mostTicks = 10;

const char *const backgroundColor = "#ffffff";
const char *const stripeColor = "#f4f6f8";
const char *const textColor = "#20262c";
const char *const tickColor = "#d4dae0";
const char *const conclusionColor = "#c0392b";

// Of bars: who plays the animation.
const char *colorOf(Animation::Player player)
{
    switch (player) {
    case Animation::Player::Document:
        return "#2f6f8f";
    case Animation::Player::Renderer:
        return "#7a5ca8";
    case Animation::Player::Nobody:
        break;
    }
    return "#9aa4ad";
}

class Plot
{
public:
    explicit Plot(const Understood &title) : m_title(title), m_timeline(title), m_writer(&m_text)
    {
        for (const Animation &animation : title.animations())
            m_longest = std::max(m_longest, labelOf(animation).size());
    }

    QByteArray draw()
    {
        const int width = chartLeft() + chartWidth + 4 * margin;
        m_writer.setAutoFormatting(true);
        m_writer.setAutoFormattingIndent(1);
        m_writer.writeStartDocument();
        m_writer.writeStartElement(QStringLiteral("svg"));
        m_writer.writeAttribute(QStringLiteral("xmlns"),
                                QStringLiteral("http://www.w3.org/2000/svg"));
        m_writer.writeAttribute(QStringLiteral("viewBox"),
                                QStringLiteral("0 0 %1 %2").arg(width).arg(height()));
        write("width", width);
        write("height", height());
        drawRect("background", 0, 0, width, height(), backgroundColor);
        drawText(margin, margin + fontSize,
                 withoutForbiddenCharacters(m_title.name()) + QStringLiteral(", ")
                         + secondsText(m_title.duration())
                         + QStringLiteral(" (lighter: the last value holds; violet: played by the "
                                          "renderer)"));
        drawScale();
        int row = 0;
        for (const Animation &animation : m_title.animations())
            drawRow(row++, animation);
        drawConclusion();
        m_writer.writeEndDocument();
        return m_text;
    }

private:
    QString labelOf(const Animation &animation) const
    {
        return shortened(m_title.label(animation.target) + QLatin1Char(' ') + animation.attribute,
                         longestLabel);
    }

    int chartLeft() const { return 2 * margin + m_longest * letterWidth; }
    int rowTop(int row) const { return headHeight + row * rowHeight; }
    int chartBottom() const { return rowTop(int(m_title.animations().size())); }
    int footLine() const { return chartBottom() + margin + fontSize; }
    int height() const { return footLine() + margin; }

    int xOf(int ms) const
    {
        return chartLeft() + int(std::lround(m_timeline.positionOf(ms) * chartWidth));
    }

    void write(const char *name, int value)
    {
        m_writer.writeAttribute(QLatin1String(name), QString::number(value));
    }

    void write(const char *name, const char *value)
    {
        m_writer.writeAttribute(QLatin1String(name), QLatin1String(value));
    }

    void drawRect(const char *kind, int x, int y, int width, int rectHeight, const char *color,
                  const char *opacity = "1")
    {
        m_writer.writeEmptyElement(QStringLiteral("rect"));
        write("class", kind);
        write("x", x);
        write("y", y);
        write("width", width);
        write("height", rectHeight);
        write("fill", color);
        write("fill-opacity", opacity);
    }

    void drawLine(const char *kind, int x, const char *color)
    {
        m_writer.writeEmptyElement(QStringLiteral("line"));
        write("class", kind);
        write("x1", x);
        write("x2", x);
        write("y1", headHeight - 4);
        write("y2", chartBottom());
        write("stroke", color);
    }

    void drawText(int x, int y, const QString &text, const char *color = textColor,
                  const char *anchor = "start")
    {
        m_writer.writeStartElement(QStringLiteral("text"));
        write("x", x);
        write("y", y);
        write("font-family", "sans-serif");
        write("font-size", fontSize);
        write("fill", color);
        write("text-anchor", anchor);
        m_writer.writeCharacters(text);
        m_writer.writeEndElement();
    }

    void drawScale()
    {
        const int tick = m_timeline.tick(mostTicks);
        for (qint64 ms = m_timeline.begin(); ms <= m_timeline.end(); ms += tick) {
            const int x = xOf(int(ms));
            drawLine("tick", x, tickColor);
            drawText(x, headHeight - 8, secondsText(int(ms)), textColor, "middle");
        }
    }

    void drawRow(int row, const Animation &animation)
    {
        const int top = rowTop(row) + (rowHeight - barHeight) / 2;
        if (row % 2 == 0)
            drawRect("stripe", 0, rowTop(row), chartLeft() + chartWidth + 4 * margin, rowHeight,
                     stripeColor, "0.6");
        drawText(margin, top + barHeight - 2, labelOf(animation));
        const int left = xOf(animation.begin);
        const int right = std::max(xOf(m_timeline.runsUntil(animation)), left + leastBarWidth);
        const char *const color = colorOf(animation.player);
        drawRect("bar", left, top, right - left, barHeight, color);
        const int rest = xOf(m_timeline.end()) - right;
        if (Timeline::isHeld(animation) && rest > 0)
            drawRect("held", right, top, rest, barHeight, color, "0.3");
    }

    void drawConclusion()
    {
        if (m_timeline.conclusion() == 0)
            return;
        const int x = xOf(m_timeline.conclusion());
        drawLine("conclusion", x, conclusionColor);
        drawText(x, footLine(), QStringLiteral("closing part"), conclusionColor, "middle");
    }

    const Understood &m_title;
    const Timeline m_timeline;
    QByteArray m_text;
    QXmlStreamWriter m_writer;
    int m_longest = 0; // label, in letters
};

} // namespace

QByteArray timelinePlot(const Understood &title)
{
    return Plot(title).draw();
}
