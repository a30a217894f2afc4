// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MarkupTexts.h"
#include "WarningFreeTest.h"

#include <Scene/MarkupScanner_p.h>
#include <Scene/Markup_p.h>

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>

// Markup that is found by its bytes is compared with what a reader of XML finds, piece by piece:
// all of it in a well-formed text, and all that comes before the error in any other.

namespace {

/// As a reader gives it. QString::fromUtf8() would take a byte order mark at the start away.
QString decoded(std::string_view text)
{
    const std::string guarded = '.' + std::string(text);
    return QString::fromUtf8(guarded.data(), int(guarded.size()))
            .mid(1)
            .replace(QLatin1String("\r\n"), QLatin1String("\n"))
            .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/// A piece without its begin and end, which one that the text breaks off does not have as a whole.
QString between(const QString &piece, int begin, int end)
{
    return piece.mid(begin, std::max(0, piece.size() - begin - end));
}

/// What a scanner finds, in the words of a reader.
QStringList scannedPieces(std::string_view text,
                          MarkupScanner::Place place = MarkupScanner::Place::Document)
{
    QStringList pieces;
    MarkupScanner markup(text, place);
    while (markup.next()) {
        const QString piece = decoded(markup.piece());
        switch (markup.kind()) {
        case MarkupScanner::Kind::StartTag: {
            const int name = markup.begin() + 1;
            QString tag = QLatin1Char('<')
                    + decoded(text.substr(std::size_t(name),
                                          std::size_t(markup.attributesBegin() - name)));
            for (AttributeScanner attribute(text, markup); attribute.next();) {
                const int value = attribute.valueBegin();
                tag += QLatin1Char('|') + decoded(attribute.name()) + QLatin1Char('=')
                        + decoded(text.substr(std::size_t(value),
                                              std::size_t(attribute.valueEnd() - value)))
                                  .replace(QLatin1String("&amp;"), QLatin1String("&"))
                                  .replace(QRegularExpression(QStringLiteral("\\s")),
                                           QStringLiteral(" "));
            }
            pieces += tag;
            if (piece.endsWith(QLatin1String("/>")))
                pieces += QStringLiteral("/") + tag.mid(1).section(QLatin1Char('|'), 0, 0);
            break;
        }
        case MarkupScanner::Kind::EndTag:
            pieces += QLatin1Char('/') + between(piece, 2, 1).trimmed();
            break;
        case MarkupScanner::Kind::Comment:
            pieces += QStringLiteral("comment ") + between(piece, 4, 3);
            break;
        case MarkupScanner::Kind::CharacterData:
            pieces += QStringLiteral("data ") + between(piece, 9, 3);
            break;
        case MarkupScanner::Kind::Instruction:
            if (!piece.startsWith(QLatin1String("<?xml ")))
                pieces += QStringLiteral("instruction ") + between(piece, 2, 2).simplified();
            break;
        case MarkupScanner::Kind::Declaration:
            if (place == MarkupScanner::Place::Document) {
                // A reader tells what is in a document type before the type itself.
                pieces +=
                        scannedPieces(markup.internalSubset(), MarkupScanner::Place::DocumentType);
                pieces += QStringLiteral("document type");
            }
            break;
        }
    }
    return pieces;
}

struct ReadPieces
{
    QStringList pieces;
    bool isWellFormed;
};

ReadPieces readPieces(const QByteArray &text)
{
    ReadPieces result;
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            QString tag = QLatin1Char('<') + xml.qualifiedName();
            for (const QXmlStreamAttribute &attribute : xml.attributes())
                tag += QLatin1Char('|') + attribute.qualifiedName() + QLatin1Char('=')
                        + attribute.value();
            result.pieces += tag;
            break;
        }
        case QXmlStreamReader::EndElement:
            result.pieces += QLatin1Char('/') + xml.qualifiedName();
            break;
        case QXmlStreamReader::Comment:
            result.pieces += QStringLiteral("comment ") + xml.text();
            break;
        case QXmlStreamReader::Characters:
            if (xml.isCDATA())
                result.pieces += QStringLiteral("data ") + xml.text();
            break;
        case QXmlStreamReader::ProcessingInstruction:
            result.pieces += (QStringLiteral("instruction ") + xml.processingInstructionTarget()
                              + QLatin1Char(' ') + xml.processingInstructionData())
                                     .simplified();
            break;
        case QXmlStreamReader::DTD:
            result.pieces += QStringLiteral("document type");
            break;
        default:
            break;
        }
    }
    result.isWellFormed = !xml.hasError();
    return result;
}

/// Empty when the scanner finds what a reader finds, up to where the reader stops.
QByteArray difference(const QByteArray &text)
{
    const ReadPieces read = readPieces(text);
    QStringList scanned = scannedPieces(view(text));
    if (!read.isWellFormed)
        scanned = scanned.mid(0, read.pieces.size());
    if (scanned == read.pieces)
        return QByteArray();
    return text.toPercentEncoding(" <>!?/\"'=[]&;")
            + "\nscanned: " + scanned.join(QLatin1Char('\n')).toUtf8()
            + "\nread: " + read.pieces.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

#define COMPARE_WITH_READER(text) \
    do { \
        const QByteArray found = difference(text); \
        QVERIFY2(found.isEmpty(), found); \
    } while (false)

class MarkupScannerTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void findsShortComments();
    void findsShortInstructions();
    void findsShortCharacterData();
    void findsShortCommentsOfDocumentTypes();
    void findsMarkup();
    void findsMarkupUpToAnError();
    void endsUnfinishedMarkupWithTheText_data();
    void endsUnfinishedMarkupWithTheText();
    void tellsPlacesInTags();
    void scansDocumentTypes_data();
    void scansDocumentTypes();
    void countsEntityReferences();
};

void MarkupScannerTest::findsShortComments()
{
    for (const QByteArray &text : shortTexts(6))
        COMPARE_WITH_READER("<g><!--" + text + "--><a b=\"c\"/></g>");
}

void MarkupScannerTest::findsShortInstructions()
{
    for (QByteArray text : shortTexts(6)) {
        text.replace('!', '?');
        COMPARE_WITH_READER("<g><?" + text + "?><a b=\"c\"/></g>");
        COMPARE_WITH_READER("<g><?x " + text + "?><a b=\"c\"/></g>");
    }
}

void MarkupScannerTest::findsShortCharacterData()
{
    for (QByteArray text : shortTexts(6)) {
        text.replace('-', ']');
        COMPARE_WITH_READER("<g><![CDATA[" + text + "]]><a b=\"c\"/></g>");
    }
}

void MarkupScannerTest::findsShortCommentsOfDocumentTypes()
{
    for (const QByteArray &text : shortTexts(6))
        COMPARE_WITH_READER("<!DOCTYPE g [<!--" + text + "-->]><g/>");
}

void MarkupScannerTest::findsMarkup()
{
    int wellFormed = 0;
    for (quint32 seed = 0; seed < 10'000; ++seed) {
        const QByteArray text = RandomMarkup(seed).document();
        COMPARE_WITH_READER(text);
        wellFormed += readPieces(text).isWellFormed ? 1 : 0;
    }
    QVERIFY(wellFormed > 5'000);
}

void MarkupScannerTest::findsMarkupUpToAnError()
{
    int broken = 0;
    for (quint32 seed = 0; seed < 10'000; ++seed) {
        const QByteArray text = RandomMarkup(seed).brokenDocument();
        COMPARE_WITH_READER(text);
        broken += readPieces(text).isWellFormed ? 0 : 1;
    }
    QVERIFY(broken > 5'000);
}

void MarkupScannerTest::endsUnfinishedMarkupWithTheText_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"<",
                             "<!",
                             "<?",
                             "</",
                             "<!-",
                             "<!--",
                             "<!-->",
                             "<!--->",
                             "<!--a-",
                             "<!--a--",
                             "<![CDATA[",
                             "<![CDATA[]",
                             "<![CDATA[]]",
                             "<?>",
                             "<?a?",
                             "<a",
                             "<a b=\"",
                             "<a b='>",
                             "<a b=\"'>",
                             "<a b=''",
                             "</a",
                             "<!DOCTYPE",
                             "<!DOCTYPE a '>",
                             "<!DOCTYPE a [",
                             "<!DOCTYPE a []",
                             "<!DOCTYPE a [<!--]>",
                             "<!DOCTYPE a [<?]>",
                             "<!DOCTYPE a [<!ENTITY b ']>",
                             "<!DOCTYPE a [<",
                             "<!DOCTYPE a [<b c=\"]>"})
        QTest::newRow(text) << QByteArray(text);
}

void MarkupScannerTest::endsUnfinishedMarkupWithTheText()
{
    QFETCH(QByteArray, text);
    MarkupScanner markup(view(text));
    QVERIFY(markup.next());
    QCOMPARE(markup.begin(), 0);
    QCOMPARE(markup.end(), text.size());
    QVERIFY(!markup.isFinished());
    if (markup.kind() == MarkupScanner::Kind::StartTag) {
        QVERIFY(markup.attributesBegin() <= markup.attributesEnd());
        QVERIFY(markup.attributesEnd() <= text.size());
    }
    QVERIFY(!markup.next());
}

void MarkupScannerTest::tellsPlacesInTags()
{
    const QByteArray text("a<b c = \"1>\"\n d='\"/>'  /><e/>");
    MarkupScanner markup(view(text));
    QVERIFY(markup.next());
    QCOMPARE(text.mid(markup.attributesBegin(), markup.attributesEnd() - markup.attributesBegin()),
             QByteArray(" c = \"1>\"\n d='\"/>'  "));
    AttributeScanner attribute(view(text), markup);
    QVERIFY(attribute.next());
    QCOMPARE(text.mid(attribute.begin(), attribute.end() - attribute.begin()),
             QByteArray("c = \"1>\""));
    QVERIFY(attribute.next());
    QCOMPARE(text.mid(attribute.begin(), attribute.end() - attribute.begin()),
             QByteArray("d='\"/>'"));
    QVERIFY(!attribute.next());
    QVERIFY(markup.next());
    QCOMPARE(markup.attributesBegin(), markup.attributesEnd());
    QVERIFY(!AttributeScanner(view(text), markup).next());
}

void MarkupScannerTest::scansDocumentTypes_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<int>("entities");
    QTest::addColumn<bool>("declaresMore");
    const auto add = [](const char *declarations, int entities, bool declaresMore) {
        QTest::newRow(declarations) << QByteArray(declarations) << entities << declaresMore;
    };
    add("", 0, false);
    add("<!ENTITY a 'b'> <!ENTITY c \"d\">", 2, false);
    add("<!ENTITY a SYSTEM 'b%20c'><!ENTITY d PUBLIC \"e\" 'f'>", 2, false);
    add("<!ENTITY a '100%'>", 1, false);
    add("<!ENTITY a '%b;'>", 1, false);
    add("<!ENTITY a '100&#37;b;'>", 1, false);
    add("<!-- 100% <!ELEMENT a (b)> %c; --><?d 100% <!ATTLIST %c; ?>", 0, false);
    add("<!ENTITY a '<!ELEMENT b (c)>'>", 1, false);
    add("<!ENTITY % a 'b'>", 1, true);
    add("<!ENTITY a % 'b'>", 1, true);
    add("%a;", 0, true);
    add("a", 0, true);
    add("<a/>", 0, true);
    add("</a>", 0, true);
    add("<![CDATA[a]]>", 0, true);
    add("<!ELEMENT a (b)>", 1, true);
    add("<!ATTLIST a b CDATA 'c'>", 1, true);
    add("<!NOTATION a SYSTEM 'b'>", 1, true);
    add("<!ENTITY a <!ELEMENT b (c)>", 1, true);
    add("<!entity a 'b'>", 1, true);
}

void MarkupScannerTest::scansDocumentTypes()
{
    QFETCH(QByteArray, declarations);
    QFETCH(int, entities);
    QFETCH(bool, declaresMore);
    const QByteArray type = "<!DOCTYPE a [" + declarations + "]>";
    for (const QByteArray &text : {type + "<a/>", "<!-->]--><?b c?>" + type + "<a/>",
                                   "<!DOCTYPE a 'b'>" + type + "<a/>", "<a>" + type + "</a>"}) {
        const DocumentTypeScan scan = scanDocumentTypes(text);
        QCOMPARE(scan.entities, qint64(entities));
        QCOMPARE(scan.declaresMore, declaresMore);
        QVERIFY(scan.isFinished);
        QVERIFY(scan.size >= type.size());
    }
}

void MarkupScannerTest::countsEntityReferences()
{
    QCOMPARE(countEntityReferences("&lt;&gt;&amp;&apos;&quot;&#38;&#x26;"), qint64(0));
    QCOMPARE(countEntityReferences("&a;&ltx;&LT;&lt &amp&;"), qint64(6));
}

QTEST_APPLESS_MAIN(MarkupScannerTest)

#include "tst_markupscanner.moc"
