// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AdmissionLimits_p.h>

#include <QLocale>
#include <QMap>

// What docs/security.md tells authors about the limits is what the library keeps.

namespace {

using Limits = QMap<QString, qint64>;

/// The value of a product of whole numbers, as C++ writes it.
qint64 productOf(QString factors)
{
    qint64 product = 1;
    factors.remove(QLatin1Char('\'')).remove(QLatin1String("LL"));
    for (const QString &factor : factors.split(QLatin1Char('*')))
        product *= factor.toLongLong();
    return product;
}

/// All limits, as the header has them.
Limits limitsOfTheLibrary()
{
    static const QRegularExpression declaration(
            QStringLiteral("constexpr AdmissionLimit \\w+\\{\\s*\"([^\"]+)\", ([^}]+)\\}"));
    Limits limits;
    const QString header = readText(QStringLiteral(TITLESCENE_LIMITS));
    QRegularExpressionMatchIterator match = declaration.globalMatch(header);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        QString name = found.captured(1);
        if (name.endsWith(QLatin1Char(','))) // which the sentence of a refusal needs
            name.chop(1);
        limits[name] = productOf(found.captured(2));
    }
    return limits;
}

/// All rows of the document's table whose second column is a number, without what is in brackets.
Limits limitsOfTheDocument()
{
    static const QRegularExpression row(
            QStringLiteral("^\\| ([^|(]+?)( \\([^|]*\\))? \\| ([0-9,]+) \\|"),
            QRegularExpression::MultilineOption);
    Limits limits;
    const QString document = readText(QStringLiteral(TITLESCENE_SECURITY_DOCUMENT));
    QRegularExpressionMatchIterator match = row.globalMatch(document);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        limits[found.captured(1)] = QLocale::c().toLongLong(found.captured(3));
    }
    return limits;
}

} // namespace

class LimitsTableTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void headerIsReadAsTheCompilerReadsIt();
    void documentSaysTheSame();
};

void LimitsTableTest::headerIsReadAsTheCompilerReadsIt()
{
    using namespace AdmissionLimits;
    const Limits limits = limitsOfTheLibrary();
    for (const AdmissionLimit &limit :
         {textSize, elements, pathNumbers, usesBesideRing, styleSheetSize, picturePixels}) {
        const QString name = QString::fromLatin1(limit.name);
        QVERIFY2(limits.contains(name), limit.name);
        QCOMPARE(limits.value(name), limit.most);
    }
    const QString header = readText(QStringLiteral(TITLESCENE_LIMITS));
    QCOMPARE(limits.size(), header.count(QStringLiteral("constexpr AdmissionLimit ")));
}

void LimitsTableTest::documentSaysTheSame()
{
    const Limits limits = limitsOfTheLibrary();
    const Limits documented = limitsOfTheDocument();
    QCOMPARE(documented.keys(), limits.keys());
    for (auto limit = limits.begin(); limit != limits.end(); ++limit)
        QVERIFY2(documented.value(limit.key()) == limit.value(), qPrintable(limit.key()));
}

QTEST_APPLESS_MAIN(LimitsTableTest)

#include "tst_limitstable.moc"
