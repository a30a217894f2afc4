// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"
#include "fuzz/TitleMutator.h"

#include <QDir>
#include <QSet>

// What the fuzzer makes of titles has to stay readable, or it would only ever test the parser.

class TitleMutatorTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void mostStayWellFormed();
    void changesAreMany();
    void sameSeedSameChange();
    void takesAnyText();
    void crossesTitles();
};

namespace {

bool isWellFormed(const QByteArray &text)
{
    return QDomDocument().setContent(text);
}

QVector<QByteArray> templates()
{
    QVector<QByteArray> texts;
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")}))
        texts.append(readTemplate(name).toUtf8());
    return texts;
}

bool changeable(const QByteArray &text)
{
    return text.size() < 64 * 1024;
}

} // namespace

// Ten changes, one on top of the other.
void TitleMutatorTest::mostStayWellFormed()
{
    int mutants = 0;
    int wellFormed = 0;
    for (const QByteArray &text : templates()) {
        for (quint32 seed = 0; seed < 60; ++seed) {
            TitleMutator mutator(seed);
            QByteArray mutant = text;
            for (int i = 0; i < 10 && changeable(mutant); ++i)
                mutant = mutator.mutated(mutant);
            ++mutants;
            wellFormed += isWellFormed(mutant);
        }
    }
    QVERIFY(mutants >= 300);
    QVERIFY(wellFormed * 10 >= mutants * 9);
}

void TitleMutatorTest::changesAreMany()
{
    const QByteArray text = readTemplate(QStringLiteral("lower-third.svg")).toUtf8();
    QSet<QByteArray> mutants;
    for (quint32 seed = 0; seed < 100; ++seed)
        mutants.insert(TitleMutator(seed).mutated(text));
    QVERIFY(mutants.size() >= 90);
}

void TitleMutatorTest::sameSeedSameChange()
{
    const QByteArray text = readTemplate(QStringLiteral("logo.svg")).toUtf8();
    for (quint32 seed = 0; seed < 20; ++seed) {
        QCOMPARE(TitleMutator(seed).mutated(text), TitleMutator(seed).mutated(text));
        QCOMPARE(TitleMutator(seed).times(), TitleMutator(seed).times());
    }
}

void TitleMutatorTest::takesAnyText()
{
    const QByteArray texts[] = {
            "",          "<",   "<svg",          "</svg>", "<a b='",   "<!--",
            "<![CDATA[", "<?x", "<!DOCTYPE a [", "x",      "<a/><b/>", "<a></b></a>",
            "<>",        "</>"};
    for (const QByteArray &text : texts) {
        for (quint32 seed = 0; seed < 100; ++seed) {
            QVERIFY(TitleMutator(seed).mutated(text).size() < 10'000);
            QVERIFY(TitleMutator(seed).crossed(text, "<a><b/></a>").size() < 100);
        }
    }
}

void TitleMutatorTest::crossesTitles()
{
    const QByteArray first = "<svg><g id=\"first\"/></svg>";
    const QByteArray second = "<svg><rect id=\"second\"><animate/></rect></svg>";
    for (quint32 seed = 0; seed < 20; ++seed) {
        const QByteArray crossed = TitleMutator(seed).crossed(first, second);
        QVERIFY(isWellFormed(crossed));
        QVERIFY(crossed.contains("first"));
        QVERIFY(crossed.contains("<animate/>"));
    }
}

QTEST_MAIN(TitleMutatorTest)

#include "tst_titlemutator.moc"
