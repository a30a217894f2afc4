// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/PlainXml_p.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

// What is plain must be read as by a reader that knows all of XML. What is not plain is left to
// such a reader, so that it may be anything.

namespace {

constexpr int mostAttributes = 20;

/// QString::fromUtf8() takes a byte order mark away.
QString decoded(std::string_view text)
{
    const QString result = QString::fromUtf8(text.data(), int(text.size()));
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? QChar(QChar::ByteOrderMark) + result : result;
}

QString withoutCarriageReturns(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"))
            .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/// Tokens as lines of text; neighbouring characters are one token.
class TokenList
{
public:
    void start(const QString &name, const QStringList &attributes)
    {
        m_tokens += QLatin1Char('<') + name + QLatin1Char('|') + attributes.join(QLatin1Char('|'));
        m_endsWithText = false;
    }
    void end()
    {
        m_tokens += QStringLiteral("/");
        m_endsWithText = false;
    }
    void text(const QString &text)
    {
        if (!m_endsWithText)
            m_tokens += QStringLiteral("=");
        m_tokens.last() += text;
        m_endsWithText = true;
    }
    const QStringList &tokens() const { return m_tokens; }

private:
    QStringList m_tokens;
    bool m_endsWithText = false;
};

/// Nothing when the text is not plain.
std::optional<QStringList> plainTokens(const QByteArray &text)
{
    PlainXml xml(text, mostAttributes);
    TokenList list;
    while (true) {
        switch (xml.next()) {
        case PlainXml::Token::StartElement: {
            QStringList attributes;
            for (const XmlAttribute &attribute : xml.attributes())
                attributes += decoded(attribute.name) + QLatin1Char('=') + decoded(attribute.value);
            list.start(decoded(xml.name()), attributes);
            break;
        }
        case PlainXml::Token::EndElement:
            list.end();
            break;
        case PlainXml::Token::Characters:
            list.text(withoutCarriageReturns(decoded(xml.text())));
            break;
        case PlainXml::Token::End:
            return list.tokens();
        case PlainXml::Token::NotPlain:
            return std::nullopt;
        }
    }
}

/// Nothing when the text is not well-formed.
std::optional<QStringList> readerTokens(const QByteArray &text)
{
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    TokenList list;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            QStringList attributes;
            for (const QXmlStreamAttribute &attribute : xml.attributes())
                attributes += attribute.qualifiedName() + QLatin1Char('=') + attribute.value();
            list.start(xml.qualifiedName().toString(), attributes);
            break;
        }
        case QXmlStreamReader::EndElement:
            list.end();
            break;
        case QXmlStreamReader::Characters:
            list.text(xml.text().toString());
            break;
        default:
            break;
        }
    }
    if (xml.hasError())
        return std::nullopt;
    return list.tokens();
}

QByteArray templateText(const QString &name)
{
    QFile file(QDir(QStringLiteral(TITLESCENE_TEMPLATES)).filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void addTemplates()
{
    const QDir folder(QStringLiteral(TITLESCENE_TEMPLATES));
    for (const QString &name : folder.entryList({QStringLiteral("*.svg")}, QDir::Files))
        QTest::newRow(qPrintable(name)) << templateText(name);
}

/// Bytes that mean something, or nothing good.
QByteArray piece(QRandomGenerator &random)
{
    static const QByteArrayList pieces{"<",
                                       ">",
                                       "&",
                                       "\"",
                                       "'",
                                       "=",
                                       "/",
                                       "!",
                                       "-",
                                       "?",
                                       "[",
                                       "]",
                                       " ",
                                       "\t",
                                       "\n",
                                       "\r",
                                       "\r\n",
                                       ":",
                                       ".",
                                       "x",
                                       "1",
                                       "]]>",
                                       "<!--",
                                       "-->",
                                       "--",
                                       "<a>",
                                       "</a>",
                                       "<a/>",
                                       "</g>",
                                       "a='b'",
                                       " id=\"a\"",
                                       "/>",
                                       "&amp;",
                                       "<![CDATA[",
                                       "<?a?>",
                                       "\x01",
                                       "\x7f",
                                       "\xc3\xa9",
                                       "\xc3",
                                       "\xed\xa0\x80",
                                       "\xef\xbf\xbf",
                                       "\xc0\x80",
                                       "\xf0\x9f\x8e\xac",
                                       "\xf4\x90\x80\x80",
                                       "\xe0\x80\xaf",
                                       "\xef\xbb\xbf",
                                       QByteArray(1, '\0')};
    return pieces.at(random.bounded(pieces.size()));
}

QByteArray mutated(QByteArray text, QRandomGenerator &random)
{
    const int changes = random.bounded(1, 4);
    for (int i = 0; i < changes; ++i) {
        const int at = random.bounded(text.size());
        const int length = random.bounded(3);
        switch (random.bounded(3)) {
        case 0:
            text.insert(at, piece(random));
            break;
        case 1:
            text.remove(at, 1 + length);
            break;
        default:
            text.replace(at, 1 + length, piece(random));
            break;
        }
    }
    return text;
}

} // namespace

class PlainXmlTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsTemplates_data() { addTextColumn(addTemplates); }
    void readsTemplates();
    void readsPlainTexts_data();
    void readsPlainTexts();
    void leavesOtherTexts_data();
    void leavesOtherTexts();
    void readsWhatReadersRead_data() { addTextColumn(addTemplates); }
    void readsWhatReadersRead();

private:
    template <typename AddRows>
    static void addTextColumn(AddRows addRows)
    {
        QTest::addColumn<QByteArray>("text");
        addRows();
    }
};

void PlainXmlTest::readsTemplates()
{
    QFETCH(QByteArray, text);
    QVERIFY(plainTokens(text));
    QCOMPARE(*plainTokens(text), readerTokens(text).value());
}

void PlainXmlTest::readsPlainTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("tokens");
    const auto add = [](const char *name, const QByteArray &text, const QString &tokens) {
        QTest::newRow(name) << text << tokens.split(QLatin1Char(' '));
    };
    add("nothing inside", "<a/>", QStringLiteral("<a| /"));
    add("spaces around all", " \n<a >\r\n</a >\t", QStringLiteral("<a| =\n /"));
    add("declaration", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>", QStringLiteral("<a| /"));
    add("standalone declaration",
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?><a/>",
        QStringLiteral("<a| /"));
    add("comments", "<!--<x>--><a><!-- &-' --><b/>1<!---->2</a><!--]]>-->",
        QStringLiteral("<a| <b| / =12 /"));
    add("attributes", "<a b='\"1' c = \"'>2\"\n d-.=\"\"/>",
        QStringLiteral("<a|b=\"1|c='>2|d-.= /"));
    add("prefixes", "<a:b c:d=\"e:f:g\" xmlns=\"x\"></a:b>",
        QStringLiteral("<a:b|c:d=e:f:g|xmlns=x /"));
    add("beyond ASCII", "<a b=\"\xc3\xa9\">\xe6\xbc\xa2\xf0\x9f\x8e\xac\x7f</a>",
        QString::fromUtf8("<a|b=\xc3\xa9 =\xe6\xbc\xa2\xf0\x9f\x8e\xac\x7f /"));
    QTest::newRow("breaks and tabs in a value")
            << QByteArray("<a b=\"1\n2\t3\" c='\n4'/>")
            << QStringList{QStringLiteral("<a|b=1 2 3|c= 4"), QStringLiteral("/")};
}

void PlainXmlTest::readsPlainTexts()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, tokens);
    QVERIFY(plainTokens(text));
    QCOMPARE(*plainTokens(text), tokens);
    QCOMPARE(readerTokens(text).value(), tokens);
}

void PlainXmlTest::leavesOtherTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto add = [](const QByteArray &text) { QTest::newRow(text) << text; };
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("spaces") << QByteArray(" \n");
    QTest::newRow("mark of the byte order") << QByteArray("\xef\xbb\xbf<a/>");
    QTest::newRow("zero") << QByteArray("<a>\0</a>", 8);
    QTest::newRow("cut off character") << QByteArray("<a>\xc3</a>");
    QTest::newRow("character at the end") << QByteArray("<a>\xe6\xbc");
    QTest::newRow("overlong character") << QByteArray("<a>\xc0\x80</a>");
    QTest::newRow("overlong character of three bytes") << QByteArray("<a>\xe0\x80\xaf</a>");
    QTest::newRow("surrogate") << QByteArray("<a>\xed\xa0\x80</a>");
    QTest::newRow("beyond Unicode") << QByteArray("<a>\xf4\x90\x80\x80</a>");
    QTest::newRow("no character") << QByteArray("<a>\xef\xbf\xbf</a>");
    QTest::newRow("control character") << QByteArray("<a>\x01</a>");
    QTest::newRow("control character in a value") << QByteArray("<a b=\"\x01\"/>");
    QTest::newRow("control character in a comment") << QByteArray("<a><!--\x01--></a>");
    QTest::newRow("name beyond ASCII") << QByteArray("<\xc3\xa9/>");
    QTest::newRow("carriage return in a value") << QByteArray("<a b='\r'/>");
    for (const char *text : {"a",
                             "<a>",
                             "</a>",
                             "<a></b>",
                             "<a/><b/>",
                             "<a/>x",
                             "x<a/>",
                             "<a>&amp;</a>",
                             "<a b=\"&lt;\"/>",
                             "<a>></a>",
                             "<a>]]></a>",
                             "<a b=\"<\"/>",
                             "<a b/>",
                             "<a b=c/>",
                             "<a b=\"c/>",
                             "<a b=''c=''/>",
                             "<a b='' b=''/>",
                             "<a / >",
                             "< a/>",
                             "<1/>",
                             "<a><!-- -- --></a>",
                             "<a><!--",
                             "<a><!--->",
                             "<!DOCTYPE a><a/>",
                             "<a><?b?></a>",
                             "<?xml version='1.0'?><a/>",
                             " <?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>",
                             "<a><![CDATA[]]></a>",
                             "<a:b:c/>",
                             "<:a/>",
                             "<a:/>",
                             "<a:1/>",
                             "<a :b=''/>",
                             "<a",
                             "<a ",
                             "<a b",
                             "<a b=",
                             "<a b='",
                             "<a/",
                             "<a></a",
                             "<",
                             "<a></"})
        add(text);
    QByteArray attributes;
    for (int i = 0; i <= mostAttributes; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    QTest::newRow("too many attributes") << "<a" + attributes + "/>";
}

void PlainXmlTest::leavesOtherTexts()
{
    QFETCH(QByteArray, text);
    QVERIFY(!plainTokens(text));
}

void PlainXmlTest::readsWhatReadersRead()
{
    QFETCH(QByteArray, text);
    QRandomGenerator random(20);
    int plain = 0;
    for (int i = 0; i < 4000; ++i) {
        const QByteArray changed = mutated(text, random);
        const std::optional<QStringList> tokens = plainTokens(changed);
        if (!tokens)
            continue;
        ++plain;
        const std::optional<QStringList> expected = readerTokens(changed);
        QVERIFY2(expected, changed);
        QCOMPARE(*tokens, *expected);
    }
    QVERIFY(plain > 200);
}

QTEST_APPLESS_MAIN(PlainXmlTest)

#include "tst_plainxml.moc"
