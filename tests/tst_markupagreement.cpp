// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MarkupTexts.h"
#include "WarningFreeTest.h"

#include <Scene/Admission_p.h>

#include <QDomDocument>
#include <QXmlDefaultHandler>
#include <QXmlStreamReader>

// Two parsers read a title that has been admitted: the tree's and the renderer's. Where both read
// it to the end they have to find the same in it, and the tree's may never come upon a declaration
// that is not admitted.

namespace {

QString oneLine(QString text)
{
    return text.simplified();
}

/// What a tree holds, up to the end of the root, without texts.
QStringList treePieces(const QDomNode &node)
{
    QStringList pieces;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement()) {
            QStringList attributes;
            for (int i = 0; i < child.attributes().length(); ++i) {
                const QDomAttr attribute = child.attributes().item(i).toAttr();
                attributes += attribute.name() + QLatin1Char('=') + oneLine(attribute.value());
            }
            attributes.sort();
            pieces += QLatin1Char('<') + child.nodeName() + attributes.join(QLatin1Char('|'));
            pieces += treePieces(child);
            pieces += QLatin1Char('/') + child.nodeName();
            if (node.isDocument())
                break;
        } else if (child.isComment()) {
            pieces += QStringLiteral("comment ") + oneLine(child.nodeValue());
        } else if (child.isCDATASection()) {
            pieces += QStringLiteral("data ") + oneLine(child.nodeValue());
        } else if (child.isProcessingInstruction()) {
            pieces += oneLine(QStringLiteral("instruction ") + child.nodeName() + QLatin1Char(' ')
                              + child.nodeValue());
        }
    }
    return pieces;
}

/// The same by the renderer's parser.
QStringList readerPieces(const QByteArray &text)
{
    QStringList pieces;
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    for (int depth = 0; !xml.atEnd();) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            QStringList attributes;
            for (const QXmlStreamAttribute &attribute : xml.attributes())
                attributes += attribute.qualifiedName() + QLatin1Char('=')
                        + oneLine(attribute.value().toString());
            attributes.sort();
            pieces += QLatin1Char('<') + xml.qualifiedName() + attributes.join(QLatin1Char('|'));
            ++depth;
            break;
        }
        case QXmlStreamReader::EndElement:
            pieces += QLatin1Char('/') + xml.qualifiedName();
            if (--depth == 0)
                return pieces;
            break;
        case QXmlStreamReader::Comment:
            pieces += QStringLiteral("comment ") + oneLine(xml.text().toString());
            break;
        case QXmlStreamReader::Characters:
            if (xml.isCDATA())
                pieces += QStringLiteral("data ") + oneLine(xml.text().toString());
            break;
        case QXmlStreamReader::ProcessingInstruction:
            pieces += oneLine(QStringLiteral("instruction ") + xml.processingInstructionTarget()
                              + QLatin1Char(' ') + xml.processingInstructionData());
            break;
        default:
            break;
        }
    }
    return pieces;
}

/// Counts what the tree's parser comes upon in document types.
class DeclarationCounter : public QXmlDefaultHandler
{
public:
    bool attributeDecl(const QString & /*element*/, const QString & /*name*/,
                       const QString & /*type*/, const QString & /*kind*/,
                       const QString & /*value*/) override
    {
        ++others;
        return true;
    }
    bool internalEntityDecl(const QString &name, const QString & /*value*/) override
    {
        others += name.startsWith(QLatin1Char('%')) ? 1 : 0;
        return true;
    }
    bool externalEntityDecl(const QString &name, const QString & /*publicId*/,
                            const QString & /*systemId*/) override
    {
        others += name.startsWith(QLatin1Char('%')) ? 1 : 0;
        return true;
    }
    bool notationDecl(const QString & /*name*/, const QString & /*publicId*/,
                      const QString & /*systemId*/) override
    {
        ++others;
        return true;
    }

    int others = 0;
};

/// How many declarations there are of anything but entities.
int countOtherDeclarations(const QByteArray &text)
{
    DeclarationCounter counter;
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QXmlInputSource source;
    source.setData(text);
    QXmlSimpleReader reader;
    reader.setDeclHandler(&counter);
    reader.setDTDHandler(&counter);
    reader.parse(source);
    QT_WARNING_POP
    return counter.others;
}

} // namespace

class MarkupAgreementTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void parsersAgree_data();
    void parsersAgree();
    void admitsNoOtherDeclarations_data();
    void admitsNoOtherDeclarations();
};

void MarkupAgreementTest::parsersAgree_data()
{
    QTest::addColumn<QByteArrayList>("texts");
    QTest::addColumn<int>("least");
    const auto add = [](const char *name, int least, const auto &makeText) {
        QByteArrayList texts;
        for (quint32 seed = 0; seed < 5'000; ++seed) {
            RandomMarkup random(seed);
            texts += makeText(random);
        }
        QTest::newRow(name) << texts << least;
    };
    add("markup", 2'500, [](RandomMarkup &random) { return random.document(); });
    add("broken markup", 500, [](RandomMarkup &random) { return random.brokenDocument(); });
    add("document types", 150, [](RandomMarkup &random) {
        return "<!DOCTYPE svg [" + random.declarations() + "]><svg a='&e;'>&e;</svg>";
    });
    QByteArrayList comments;
    for (const QByteArray &text : shortTexts(6))
        comments += "<!DOCTYPE svg [<!--" + text + "-->]><svg><!--" + text + "--><g/></svg>";
    QTest::newRow("short comments") << comments << 5'000;
}

void MarkupAgreementTest::parsersAgree()
{
    QFETCH(QByteArrayList, texts);
    QFETCH(int, least);
    int agreements = 0;
    for (const QByteArray &text : texts) {
        const Admission admission = admit(text);
        if (!admission.refusal.isEmpty())
            continue;
        QDomDocument tree;
        if (!tree.setContent(admission.text))
            continue;
        ++agreements;
        const QStringList pieces = treePieces(tree);
        QVERIFY2(pieces == readerPieces(admission.text),
                 text + '\n' + pieces.join(QLatin1Char('\n')).toUtf8());
    }
    QVERIFY2(agreements > least, QByteArray::number(agreements));
}

void MarkupAgreementTest::admitsNoOtherDeclarations_data()
{
    QTest::addColumn<QByteArrayList>("texts");
    QTest::addColumn<int>("least");
    const auto add = [](const char *name, int least, const auto &makeText) {
        QByteArrayList texts;
        for (quint32 seed = 10'000; seed < 20'000; ++seed) {
            RandomMarkup random(seed);
            texts += makeText(random);
        }
        QTest::newRow(name) << texts << least;
    };
    add("document types", 1'000, [](RandomMarkup &random) {
        return "<!DOCTYPE svg [" + random.declarations() + "]><svg/>";
    });
    add("several document types", 1'000, [](RandomMarkup &random) {
        return "<!DOCTYPE svg [" + random.misc() + "]>" + random.misc() + "<!DOCTYPE svg ["
                + random.declarations() + "]><svg/>";
    });
    add("broken markup", 100, [](RandomMarkup &random) { return random.brokenDocument(); });
    QByteArrayList comments;
    for (const QByteArray &text : shortTexts(6))
        comments += "<!DOCTYPE svg [<!--" + text + "--><!ATTLIST g a CDATA \"v\">]><svg/>";
    QTest::newRow("after short comments") << comments << 5'000;
}

void MarkupAgreementTest::admitsNoOtherDeclarations()
{
    QFETCH(QByteArrayList, texts);
    QFETCH(int, least);
    int declaring = 0;
    for (const QByteArray &text : texts) {
        if (countOtherDeclarations(text) == 0)
            continue;
        ++declaring;
        QVERIFY2(!admit(text).refusal.isEmpty(), text);
    }
    QVERIFY2(declaring > least, QByteArray::number(declaring));
}

QTEST_MAIN(MarkupAgreementTest)

#include "tst_markupagreement.moc"
