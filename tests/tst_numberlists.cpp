// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/NumberList_p.h>

#include <QStringList>

using Numbers = QVector<double>;

class NumberListsTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void numberCharacters_data();
    void numberCharacters();
    void closing_data();
    void closing();
    void separators_data();
    void separators();
    void numbers_data();
    void numbers();
    void okIsSetEitherWay();
    void interleaving_data();
    void interleaving();
};

void NumberListsTest::numberCharacters_data()
{
    QTest::addColumn<QString>("characters");
    QTest::addColumn<bool>("areNumbers");

    QTest::newRow("ASCII digits") << QStringLiteral("0123456789") << true;
    QTest::newRow("point and minus") << QStringLiteral(".-") << true;
    QTest::newRow("other decimal digits") << QStringLiteral("\u0660\u0669\u0966\uff11") << true;
    QTest::newRow("plus") << QStringLiteral("+") << false;
    QTest::newRow("exponent letters") << QStringLiteral("eE") << false;
    QTest::newRow("comma, space, tab, newline") << QStringLiteral(", \t\n") << false;
    QTest::newRow("brackets and signs") << QStringLiteral("()[]%#/:;_") << false;
    QTest::newRow("letters") << QStringLiteral("azAZ\u00e9\u4e2d") << false;
    QTest::newRow("numbers that are no decimal digits")
            << QStringLiteral("\u00b2\u00bd\u2167\u2460") << false;
    QTest::newRow("dashes that are no minus") << QStringLiteral("\u2212\u2013") << false;
    QTest::newRow("halves of surrogate pairs") << QStringLiteral("\U0001F600") << false;
}

void NumberListsTest::numberCharacters()
{
    QFETCH(QString, characters);
    QFETCH(bool, areNumbers);
    for (const QChar c : characters) {
        QVERIFY2(isNumberCharacter(c) == areNumbers, qPrintable(QString::number(c.unicode(), 16)));
    }
}

void NumberListsTest::closing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("character");

    QTest::newRow("digit") << QStringLiteral("10,20") << QStringLiteral("#");
    QTest::newRow("point") << QStringLiteral("10.") << QStringLiteral("#");
    QTest::newRow("minus") << QStringLiteral("10-") << QStringLiteral("#");
    QTest::newRow("other decimal digit") << QStringLiteral("\u0663") << QStringLiteral("#");
    QTest::newRow("bracket") << QStringLiteral("rotate(1)") << QStringLiteral("0");
    QTest::newRow("letter") << QStringLiteral("10px") << QStringLiteral("0");
    QTest::newRow("space") << QStringLiteral("10 ") << QStringLiteral("0");
    QTest::newRow("number sign") << QStringLiteral("10#") << QStringLiteral("0");
    QTest::newRow("empty") << QStringLiteral("") << QStringLiteral("0");
    QTest::newRow("null") << QString() << QStringLiteral("0");
}

void NumberListsTest::closing()
{
    QFETCH(QString, text);
    QFETCH(QString, character);
    QCOMPARE(QString(closingCharacter(text)), character);
}

void NumberListsTest::separators_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("separators");

    QTest::newRow("rotation") << QStringLiteral("rotate(0 50 50)0")
                              << QStringList{QStringLiteral("rotate("), QStringLiteral(" "),
                                             QStringLiteral(" "), QStringLiteral(")")};
    QTest::newRow("an open run at the end is left out")
            << QStringLiteral("10,20#") << QStringList{QStringLiteral(",")};
    QTest::newRow("long runs") << QStringLiteral("a( 1 , \t2)0")
                               << QStringList{QStringLiteral("a( "), QStringLiteral(" , \t"),
                                              QStringLiteral(")")};
    QTest::newRow("plus and exponent separate")
            << QStringLiteral("+1e3#") << QStringList{QStringLiteral("+"), QStringLiteral("e")};
    QTest::newRow("minus and point do not") << QStringLiteral("10-5.5.#") << QStringList();
    QTest::newRow("no number at all")
            << QStringLiteral("none0") << QStringList{QStringLiteral("none")};
    QTest::newRow("only a number") << QStringLiteral("42#") << QStringList();
    QTest::newRow("only the closing digit") << QStringLiteral("0") << QStringList();
    QTest::newRow("only an open separator") << QStringLiteral("#") << QStringList();
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("beyond the basic plane")
            << QStringLiteral("\U0001F6001#") << QStringList{QStringLiteral("\U0001F600")};
}

void NumberListsTest::separators()
{
    QFETCH(QString, text);
    QFETCH(QStringList, separators);
    const std::vector<QString> runs = separatorRuns(text);
    QCOMPARE(QStringList(runs.begin(), runs.end()), separators);
}

void NumberListsTest::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Numbers>("numbers");
    QTest::addColumn<bool>("ok");

    QTest::newRow("rotation") << QStringLiteral("rotate(0 50 50)0") << Numbers{0, 50, 50} << true;
    QTest::newRow("closed by the number sign")
            << QStringLiteral("10,20#") << Numbers{10, 20} << true;
    QTest::newRow("an open run at the end is left out")
            << QStringLiteral("10,20") << Numbers{10} << true;
    QTest::newRow("an open run at the end is not even read")
            << QStringLiteral("10,1.2.3") << Numbers{10} << true;
    QTest::newRow("signs and points")
            << QStringLiteral("-1.5 .25 -.5 3.#") << Numbers{-1.5, 0.25, -0.5, 3} << true;
    QTest::newRow("plus separates") << QStringLiteral("+1+2#") << Numbers{1, 2} << true;
    QTest::newRow("an exponent is two numbers")
            << QStringLiteral("scale(1e3 2)0") << Numbers{1, 3, 2} << true;
    QTest::newRow("a negative exponent is two numbers")
            << QStringLiteral("1e-3#") << Numbers{1, -3} << true;
    QTest::newRow("no number") << QStringLiteral("none#") << Numbers() << true;
    QTest::newRow("empty") << QString() << Numbers() << true;
    QTest::newRow("only the closing digit") << QStringLiteral("0") << Numbers() << true;

    QTest::newRow("10-5 is one run and no number") << QStringLiteral("10-5#") << Numbers() << false;
    QTest::newRow("1.2.3") << QStringLiteral("1.2.3#") << Numbers() << false;
    QTest::newRow("--5") << QStringLiteral("--5#") << Numbers() << false;
    QTest::newRow("lone minus") << QStringLiteral("a - b#") << Numbers() << false;
    QTest::newRow("lone point") << QStringLiteral("a.b#") << Numbers() << false;
    QTest::newRow("the scan stops at the failure")
            << QStringLiteral("1 2 3-3 4 5#") << Numbers{1, 2} << false;
    QTest::newRow("Arabic-Indic digits are a run and no number")
            << QStringLiteral("7 \u0661\u0662 8#") << Numbers{7} << false;
    QTest::newRow("fullwidth digit in a number")
            << QStringLiteral("1\uff12#") << Numbers() << false;

    QTest::newRow("300 digits") << QString(QStringLiteral("1") + QString(300, QLatin1Char('0'))
                                           + QStringLiteral("#"))
                                << Numbers{1e300} << true;
    QTest::newRow("400 digits are too many for a double")
            << QString(QString(400, QLatin1Char('9')) + QStringLiteral("#")) << Numbers() << false;
    QTest::newRow("400 decimals") << QString(QStringLiteral("0.") + QString(400, QLatin1Char('3'))
                                             + QStringLiteral("#"))
                                  << Numbers{1.0 / 3.0} << true;
}

void NumberListsTest::numbers()
{
    QFETCH(QString, text);
    QFETCH(Numbers, numbers);
    QFETCH(bool, ok);
    bool allRead = !ok;
    const std::vector<double> runs = numberRuns(text, &allRead);
    QCOMPARE(Numbers(runs.begin(), runs.end()), numbers);
    QCOMPARE(allRead, ok);
}

// A run that is no number spoils its own text only.
void NumberListsTest::okIsSetEitherWay()
{
    bool ok = true;
    numberRuns(QStringLiteral("1.2.3#"), &ok);
    QVERIFY(!ok);
    numberRuns(QStringLiteral("1#"), &ok);
    QVERIFY(ok);
}

void NumberListsTest::interleaving_data()
{
    QTest::addColumn<QStringList>("first");
    QTest::addColumn<QStringList>("second");
    QTest::addColumn<QString>("text");

    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString c = QStringLiteral("c");
    const QString one = QStringLiteral("1");
    const QString two = QStringLiteral("2");
    QTest::newRow("equally many") << QStringList{a, b} << QStringList{one, two}
                                  << QStringLiteral("a1b2");
    QTest::newRow("the first has one more")
            << QStringList{a, b, c} << QStringList{one, two} << QStringLiteral("a1b2c");
    QTest::newRow("the first has many more")
            << QStringList{a, b, c} << QStringList{one} << QStringLiteral("a1bc");
    QTest::newRow("the second has many more")
            << QStringList{one} << QStringList{a, b, c} << QStringLiteral("1abc");
    QTest::newRow("no first") << QStringList() << QStringList{a, b} << QStringLiteral("ab");
    QTest::newRow("no second") << QStringList{a, b} << QStringList() << QStringLiteral("ab");
    QTest::newRow("nothing") << QStringList() << QStringList() << QString();
}

void NumberListsTest::interleaving()
{
    QFETCH(QStringList, first);
    QFETCH(QStringList, second);
    QFETCH(QString, text);
    QCOMPARE(interleaved({first.begin(), first.end()}, {second.begin(), second.end()}), text);
}

QTEST_APPLESS_MAIN(NumberListsTest)

#include "tst_numberlists.moc"
