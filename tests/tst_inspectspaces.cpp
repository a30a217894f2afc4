// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "InspectRun.h"

#include <QRandomGenerator>
#include <QSet>

// Random texts: titlescene-inspect tells of the spaces of a text exactly when they are drawn in
// other places than those where CSS has them.

namespace {

/// A text as it is written, beside the letters that a browser shows of it.
class RandomText
{
public:
    explicit RandomText(QRandomGenerator &random) : m_random(random)
    {
        const QString space = spaceAttribute(3);
        const int children = m_random.bounded(1, 5);
        for (int i = 0; i < children; ++i)
            m_markup += randomChild();
        // No text runs are as wide as the picture, and each has a letter.
        m_markup += letters(QStringLiteral("e"));
        if (m_random.bounded(2) == 0)
            m_markup += randomChild();
        m_anchor = randomAnchor();
        m_markup = textWith(space, m_markup);
        if (m_takesSpaces)
            m_shown.chop(1); // at the end of a line
    }

    QString markup() const { return m_markup; }

    /// The same in letters that are all kept.
    QString shown() const { return textWith(QStringLiteral(" xml:space=\"preserve\""), m_shown); }

private:
    QString textWith(const QString &space, const QString &content) const
    {
        return QStringLiteral("<text x=\"200\" y=\"30\" font-size=\"16\" font-family=\"DejaVu "
                              "Sans Mono\" text-anchor=\"%1\"%2>%3</text>")
                .arg(m_anchor, space, content);
    }

    QString randomAnchor()
    {
        static const QStringList anchors{QStringLiteral("start"), QStringLiteral("middle"),
                                         QStringLiteral("end")};
        return anchors.at(m_random.bounded(anchors.size()));
    }

    QString spaceAttribute(int chances)
    {
        const int choice = m_random.bounded(chances);
        if (choice > 1)
            return QString();
        m_isKept = choice == 0;
        return m_isKept ? QStringLiteral(" xml:space=\"preserve\"")
                        : QStringLiteral(" xml:space=\"default\"");
    }

    QString randomChild()
    {
        switch (m_random.bounded(6)) {
        case 0:
            return QStringLiteral("<animate/>");
        case 1:
        case 2:
            return letters(randomLetters());
        default:
            return randomSpan();
        }
    }

    QString randomSpan()
    {
        const bool isKeptAround = m_isKept;
        const QString space = spaceAttribute(12);
        const QString markup =
                QStringLiteral("<tspan%1>%2</tspan>").arg(space, letters(randomLetters()));
        m_isKept = isKeptAround;
        return markup;
    }

    QString randomLetters()
    {
        static const QStringList words{QStringLiteral("a"),
                                       QStringLiteral("b"),
                                       QStringLiteral("c d"),
                                       QStringLiteral(" a"),
                                       QStringLiteral("b "),
                                       QStringLiteral(" "),
                                       QStringLiteral("\n  a"),
                                       QStringLiteral("\n "),
                                       QStringLiteral("a  b"),
                                       QStringLiteral("a\u00a0"),
                                       QString()};
        return words.at(m_random.bounded(words.size()));
    }

    /// As CSS has it: spaces that are not kept go into one in front of them that is not kept.
    QString letters(const QString &written)
    {
        for (const QChar c : written) {
            const bool isSpace = c == QLatin1Char(' ') || c == QLatin1Char('\n');
            if (!isSpace || m_isKept || !m_takesSpaces)
                m_shown += c.isSpace() ? QLatin1Char(' ') : c;
            m_takesSpaces = isSpace && !m_isKept;
        }
        return written;
    }

    QRandomGenerator &m_random;
    QString m_anchor;
    QString m_markup;
    QString m_shown;
    bool m_isKept = false;
    bool m_takesSpaces = true; // as at the begin of a line
};

QString titleAround(const QString &text, bool isAnimated)
{
    const QString moving = isAnimated
            ? QStringLiteral(
                    "<rect width=\"9\" height=\"9\"><animate attributeName=\"y\" from=\"0\""
                    " to=\"0\" dur=\"1s\"/></rect>")
            : QStringLiteral("<rect width=\"9\" height=\"9\" y=\"0\"/>");
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 400 40\">%1%2"
                          "</svg>")
            .arg(text, moving);
}

bool looksLike(SvgDocument &document, const QString &other)
{
    SvgDocument expected(other);
    return renderAt(document, 500) == renderAt(expected, 500);
}

/// What is told of spaces: "", "note" or "warning".
QString toldOfSpaces(const QString &title)
{
    const InspectResult result = inspectTitle(title, {QStringLiteral("--json")});
    for (const QJsonValue &value : result.problems()) {
        const QJsonObject problem = value.toObject();
        if (problem.value(QLatin1String("code")).toString() == QLatin1String("text-spacing"))
            return problem.value(QLatin1String("severity")).toString();
    }
    return QString();
}

} // namespace

class TestInspectSpaces : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfSpaces_data();
    void tellsOfSpaces();
};

void TestInspectSpaces::tellsOfSpaces_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestInspectSpaces::tellsOfSpaces()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    QSet<QString> seen;
    for (int i = 0; i < 25; ++i) {
        const RandomText text(random);
        const bool isAnimated = i % 2 == 0;
        const QString title = titleAround(text.markup(), isAnimated);
        const QString plain = titleAround(text.shown(), false);
        SvgDocument document(title);
        const bool isRight = looksLike(document, plain);
        document.saveToBuffer();
        const bool isRightOnceSaved = looksLike(document, plain);
        const QString expected = !isRight ? QStringLiteral("warning")
                : isRightOnceSaved        ? QString()
                                          : QStringLiteral("note");
        QVERIFY2(toldOfSpaces(title) == expected,
                 qPrintable(expected + QLatin1String(" expected of ") + title));
        seen.insert(expected);
    }
    QCOMPARE(seen.size(), 3);
}

QTEST_MAIN(TestInspectSpaces)
#include "tst_inspectspaces.moc"
