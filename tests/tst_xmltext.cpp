// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/XmlText_p.h>

#include <QXmlStreamReader>

namespace {

struct Range
{
    uint first;
    uint last;
};

template <std::size_t count>
bool isIn(const Range (&ranges)[count], uint c)
{
    for (const Range &range : ranges) {
        if (c >= range.first && c <= range.last)
            return true;
    }
    return false;
}

/// With which characters XML 1.0 lets a name start; the colon divides prefix and name here.
bool mayStartName(uint c)
{
    static const Range ranges[] = {{'A', 'Z'},       {'_', '_'},       {'a', 'z'},
                                   {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},
                                   {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D},
                                   {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF},
                                   {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
    return isIn(ranges, c);
}

bool mayStandInName(uint c)
{
    static const Range others[] = {{'-', '-'},   {'.', '.'},     {'0', '9'},
                                   {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};
    return mayStartName(c) || isIn(others, c);
}

/// The characters that XML 1.0 allows in a text.
bool mayStandInText(uint c)
{
    static const Range ranges[] = {
            {0x9, 0xA}, {0xD, 0xD}, {0x20, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}};
    return isIn(ranges, c);
}

QString character(uint c)
{
    return QString::fromUcs4(&c, 1);
}

QString inHexadecimal(uint c)
{
    return QStringLiteral("U+") + QString::number(c, 16);
}

/// The text of the root element, or the reader's complaint.
QString rootText(const QByteArray &document)
{
    QXmlStreamReader reader(document);
    reader.readNextStartElement();
    const QString text = reader.readElementText();
    return reader.hasError() ? QStringLiteral("error: ") + reader.errorString() : text;
}

} // namespace

class XmlTextTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void attributeNames_data();
    void attributeNames();
    void everyAttributeNameIsAnXmlName();
    void textWithoutForbiddenCharacters_data();
    void textWithoutForbiddenCharacters();
    void allowedCharactersStayForbiddenOnesGo();
    void declaration_data();
    void declaration();
    void textStaysWhatItIsWhateverTheDeclarationSays_data();
    void textStaysWhatItIsWhateverTheDeclarationSays();
};

void XmlTextTest::attributeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isName");

    QTest::newRow("lower case") << QStringLiteral("opacity") << true;
    QTest::newRow("camel case") << QStringLiteral("stopColor") << true;
    QTest::newRow("one letter") << QStringLiteral("x") << true;
    QTest::newRow("hyphen inside") << QStringLiteral("stop-color") << true;
    QTest::newRow("digit inside") << QStringLiteral("x1") << true;
    QTest::newRow("point inside") << QStringLiteral("a.b") << true;
    QTest::newRow("underscore first") << QStringLiteral("_a") << true;
    QTest::newRow("prefix") << QStringLiteral("xlink:href") << true;
    QTest::newRow("unknown prefix") << QStringLiteral("prefix:name") << true;
    QTest::newRow("Chinese") << QStringLiteral("\u989c\u8272") << true;
    QTest::newRow("Japanese") << QStringLiteral("\u3044\u308d") << true;
    QTest::newRow("Korean") << QStringLiteral("\uc0c9") << true;
    QTest::newRow("Cyrillic with prefix")
            << QStringLiteral("\u0430:\u0446\u0432\u0435\u0442") << true;
    QTest::newRow("accented letter") << QStringLiteral("\u00e9tat") << true;

    QTest::newRow("null") << QString() << false;
    QTest::newRow("empty") << QStringLiteral("") << false;
    QTest::newRow("space") << QStringLiteral(" ") << false;
    QTest::newRow("space inside") << QStringLiteral("x y") << false;
    QTest::newRow("space first") << QStringLiteral(" x") << false;
    QTest::newRow("space last") << QStringLiteral("x ") << false;
    QTest::newRow("newline inside") << QStringLiteral("x\ny") << false;
    QTest::newRow("no-break space inside") << QStringLiteral("x\u00a0y") << false;
    QTest::newRow("markup") << QStringLiteral("a=\"1\" b") << false;
    QTest::newRow("equals sign") << QStringLiteral("a=b") << false;
    QTest::newRow("quote") << QStringLiteral("a\"") << false;
    QTest::newRow("apostrophe") << QStringLiteral("a'") << false;
    QTest::newRow("less-than sign") << QStringLiteral("a<b") << false;
    QTest::newRow("greater-than sign") << QStringLiteral("a>") << false;
    QTest::newRow("slash") << QStringLiteral("a/") << false;
    QTest::newRow("ampersand") << QStringLiteral("a&amp;b") << false;
    QTest::newRow("semicolon") << QStringLiteral("a;") << false;
    QTest::newRow("digit first") << QStringLiteral("1x") << false;
    QTest::newRow("hyphen first") << QStringLiteral("-x") << false;
    QTest::newRow("point first") << QStringLiteral(".x") << false;
    QTest::newRow("two colons") << QStringLiteral("a:b:c") << false;
    QTest::newRow("only a colon") << QStringLiteral(":") << false;
    QTest::newRow("colon first") << QStringLiteral(":a") << false;
    QTest::newRow("colon last") << QStringLiteral("a:") << false;
    QTest::newRow("adjacent colons") << QStringLiteral("a::b") << false;
    QTest::newRow("digit after the prefix") << QStringLiteral("a:1") << false;
    QTest::newRow("digit as prefix") << QStringLiteral("1:a") << false;
    QTest::newRow("space after the prefix") << QStringLiteral("a: b") << false;
    QTest::newRow("control character") << QStringLiteral("a\u0001") << false;
    QTest::newRow("NUL inside") << QString(QStringLiteral("a") + QChar(QChar::Null)
                                           + QStringLiteral("b"))
                                << false;
    QTest::newRow("lone surrogate") << QString(QStringLiteral("a") + QChar(0xD83D)) << false;
    QTest::newRow("emoji") << QStringLiteral("a\u2764") << false;
    QTest::newRow("non-character") << QString(QStringLiteral("a") + QChar(0xFFFE)) << false;
    QTest::newRow("superscript digit") << QStringLiteral("a\u00b2") << false;
    QTest::newRow("ordinal indicator") << QStringLiteral("\u00aa") << false;
    QTest::newRow("micro sign") << QStringLiteral("a\u00b5") << false;
}

void XmlTextTest::attributeNames()
{
    QFETCH(QString, name);
    QFETCH(bool, isName);
    QCOMPARE(isAttributeName(name), isName);
}

void XmlTextTest::everyAttributeNameIsAnXmlName()
{
    QStringList wrong;
    for (uint c = 0; c <= 0xFFFF; ++c) {
        const QString name{QChar(c)};
        if (isAttributeName(name) && !mayStartName(c))
            wrong << inHexadecimal(c) + QStringLiteral(" first");
        if (isAttributeName(QStringLiteral("a") + name) && !mayStandInName(c))
            wrong << inHexadecimal(c);
    }
    QCOMPARE(wrong, QStringList());
}

void XmlTextTest::textWithoutForbiddenCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");

    const QString ab = QStringLiteral("ab");
    const QString emoji = QStringLiteral("\U0001F600");
    const QChar high = emoji.at(0);
    const QChar low = emoji.at(1);
    QTest::newRow("null") << QString() << QString();
    QTest::newRow("empty") << QStringLiteral("") << QString();
    QTest::newRow("plain") << QStringLiteral("#ff0000") << QStringLiteral("#ff0000");
    QTest::newRow("markup is not this function's concern")
            << QStringLiteral("<a b=\"c\">&'") << QStringLiteral("<a b=\"c\">&'");
    QTest::newRow("tab, newline and carriage return stay")
            << QStringLiteral("a\tb\nc\rd") << QStringLiteral("a\tb\nc\rd");
    QTest::newRow("delete and C1 control characters stay")
            << QStringLiteral("a\u007f\u0085\u009fb") << QStringLiteral("a\u007f\u0085\u009fb");
    QTest::newRow("U+0001") << QStringLiteral("a\u0001b") << ab;
    QTest::newRow("U+001F") << QStringLiteral("a\u001fb") << ab;
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral("b"))
                         << ab;
    QTest::newRow("first") << QStringLiteral("\u0001ab") << ab;
    QTest::newRow("last") << QStringLiteral("ab\u0001") << ab;
    QTest::newRow("several") << QStringLiteral("\u0001a\u0002\u0003b\u0004") << ab;
    QTest::newRow("nothing else") << QStringLiteral("\u0001\u0002") << QString();
    QTest::newRow("U+FFFD stays") << QStringLiteral("a\ufffdb") << QStringLiteral("a\ufffdb");
    QTest::newRow("U+FFFE") << QString(QStringLiteral("a") + QChar(0xFFFE) + QStringLiteral("b"))
                            << ab;
    QTest::newRow("U+FFFF") << QString(QStringLiteral("a") + QChar(0xFFFF) + QStringLiteral("b"))
                            << ab;
    QTest::newRow("emoji stays") << QString(emoji + emoji) << QString(emoji + emoji);
    QTest::newRow("high surrogate")
            << QString(QStringLiteral("a") + high + QStringLiteral("b")) << ab;
    QTest::newRow("high surrogate last") << QString(ab + high) << ab;
    QTest::newRow("low surrogate")
            << QString(QStringLiteral("a") + low + QStringLiteral("b")) << ab;
    QTest::newRow("low surrogate first") << QString(low + ab) << ab;
    QTest::newRow("wrong order") << QString(QStringLiteral("a") + low + high + QStringLiteral("b"))
                                 << ab;
    QTest::newRow("high surrogate before a pair")
            << QString(QString(high) + emoji + ab) << QString(emoji + ab);
    QTest::newRow("low surrogate after a pair") << QString(emoji + low + ab) << QString(emoji + ab);
}

void XmlTextTest::textWithoutForbiddenCharacters()
{
    QFETCH(QString, text);
    QFETCH(QString, kept);
    QCOMPARE(withoutForbiddenCharacters(text), kept);
}

void XmlTextTest::allowedCharactersStayForbiddenOnesGo()
{
    QStringList wrong;
    for (uint c = 0; c <= 0x10FFFF; ++c) {
        const bool isSurrogate = c >= 0xD800 && c <= 0xDFFF;
        const QString text = isSurrogate ? QString(QChar(c)) : character(c);
        if (withoutForbiddenCharacters(text) != (mayStandInText(c) ? text : QString()))
            wrong << inHexadecimal(c);
    }
    QCOMPARE(wrong, QStringList());
}

void XmlTextTest::declaration_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("normalised");

    const QByteArray byteOrderMark("\xEF\xBB\xBF");
    const QByteArray utf8("<?xml version=\"1.0\" encoding=\"UTF-8\"?><svg/>");
    const auto unchanged = [](const char *row, const QByteArray &text) {
        QTest::newRow(row) << text << text;
    };

    QTest::newRow("Latin 1") << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><svg/>")
                             << utf8;
    QTest::newRow("UTF-16") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-16\"?><svg/>")
                            << utf8;
    QTest::newRow("unknown") << QByteArray("<?xml version=\"1.0\" encoding=\"klingon\"?><svg/>")
                             << utf8;
    QTest::newRow("empty") << QByteArray("<?xml version=\"1.0\" encoding=\"\"?><svg/>") << utf8;
    QTest::newRow("nearly UTF-8") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF8\"?><svg/>")
                                  << utf8;
    QTest::newRow("single quotes")
            << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?><svg/>")
            << QByteArray("<?xml version='1.0' encoding='UTF-8'?><svg/>");
    QTest::newRow("empty in single quotes")
            << QByteArray("<?xml version='1.0' encoding=''?><svg/>")
            << QByteArray("<?xml version='1.0' encoding='UTF-8'?><svg/>");
    QTest::newRow("mixed quotes") << QByteArray("<?xml version='1.0' encoding=\"UTF-16LE\"?><svg/>")
                                  << QByteArray("<?xml version='1.0' encoding=\"UTF-8\"?><svg/>");
    QTest::newRow("white space around the equals sign")
            << QByteArray("<?xml version=\"1.0\"\n\tencoding =\r\n \"latin1\" ?><svg/>")
            << QByteArray("<?xml version=\"1.0\"\n\tencoding =\r\n \"UTF-8\" ?><svg/>");
    QTest::newRow("standalone after it")
            << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-16\" standalone=\"yes\"?><svg/>")
            << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><svg/>");
    QTest::newRow("after a byte order mark")
            << QByteArray(byteOrderMark + "<?xml version=\"1.0\" encoding=\"UTF-16\"?><svg/>")
            << QByteArray(byteOrderMark + utf8);
    QTest::newRow("only the declaration changes")
            << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-16\"?>"
                          "<svg encoding=\"UTF-16\">encoding=\"UTF-16\"\xD0\x96</svg>")
            << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                          "<svg encoding=\"UTF-16\">encoding=\"UTF-16\"\xD0\x96</svg>");
    QTest::newRow("after a byte order mark, text beyond ASCII")
            << QByteArray(byteOrderMark + "<?xml version='1.0' encoding='x'?><a>\xD0\x96</a>")
            << QByteArray(byteOrderMark + "<?xml version='1.0' encoding='UTF-8'?><a>\xD0\x96</a>");
    QTest::newRow("an encoding that is not ASCII")
            << QByteArray("<?xml version='1.0' encoding='\xD0\x96\xD0\x96'?><a>\xD0\x96</a>")
            << QByteArray("<?xml version='1.0' encoding='UTF-8'?><a>\xD0\x96</a>");

    unchanged("UTF-8", utf8);
    unchanged("lower case utf-8", "<?xml version=\"1.0\" encoding=\"utf-8\"?><svg/>");
    unchanged("mixed case, single quotes", "<?xml version='1.0'  encoding = 'Utf-8' ?>\n<svg/>");
    unchanged("no encoding", "<?xml version=\"1.0\"?><svg/>");
    unchanged("no encoding but standalone", "<?xml version=\"1.0\" standalone=\"no\"?><svg/>");
    unchanged("no encoding, one in the root", "<?xml version='1.0'?><svg encoding='UTF-16'/>");
    unchanged("no declaration", "<svg encoding=\"UTF-16\"/>");
    unchanged("no declaration after a byte order mark", byteOrderMark + "<svg/>");
    unchanged("byte order mark alone", byteOrderMark);
    unchanged("empty", QByteArray());
    unchanged("a declaration that does not end", "<?xml version=\"1.0\" encoding=\"UTF-16\"");
    unchanged("a declaration that is not first", "\n<?xml version='1.0' encoding='UTF-16'?><svg/>");
    unchanged("no quotes", "<?xml version=\"1.0\" encoding=UTF-16?><svg/>");
    unchanged("unequal quotes", "<?xml version=\"1.0\" encoding=\"UTF-16'?><svg/>");
    unchanged("another name that ends alike", "<?xml version='1.0' myencoding='UTF-16'?><svg/>");
    unchanged("another processing instruction",
              "<?xml-stylesheet href='a.css' encoding='UTF-16'?><svg/>");
}

void XmlTextTest::declaration()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, normalised);
    QCOMPARE(withUtf8Declaration(text), normalised);
    QCOMPARE(withUtf8Declaration(normalised), normalised);
}

void XmlTextTest::textStaysWhatItIsWhateverTheDeclarationSays_data()
{
    QTest::addColumn<QString>("start");

    QTest::newRow("no declaration") << QString();
    QTest::newRow("UTF-8") << QStringLiteral("<?xml version='1.0' encoding='UTF-8'?>");
    QTest::newRow("no encoding") << QStringLiteral("<?xml version='1.0'?>");
    QTest::newRow("Latin 1") << QStringLiteral("<?xml version='1.0' encoding='ISO-8859-1'?>");
    QTest::newRow("Cyrillic") << QStringLiteral("<?xml version='1.0' encoding='windows-1251'?>");
    QTest::newRow("UTF-16") << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-16\"?>");
    QTest::newRow("UTF-32") << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-32\"?>");
    QTest::newRow("unknown") << QStringLiteral("<?xml version='1.0' encoding='klingon'?>");
    QTest::newRow("byte order mark and UTF-16")
            << QStringLiteral("\ufeff<?xml version='1.0' encoding='UTF-16'?>");
    QTest::newRow("standalone") << QStringLiteral(
            "<?xml version='1.0' encoding='Shift_JIS' standalone='yes'?>");
}

void XmlTextTest::textStaysWhatItIsWhateverTheDeclarationSays()
{
    QFETCH(QString, start);
    const QString text = QStringLiteral("\u00e9 \u0416 \u4e2d \U0001F600");
    const QString document = start + QStringLiteral("<svg>") + text + QStringLiteral("</svg>");
    QCOMPARE(rootText(withUtf8Declaration(document.toUtf8())), text);
}

QTEST_APPLESS_MAIN(XmlTextTest)

#include "tst_xmltext.moc"
