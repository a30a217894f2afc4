// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QStringList>

#include <map>

// Titles in every script: as text, in attributes, in ids that other elements refer to, and as
// values of animations. Whatever is played, adjusted and saved, no letter of them changes.

namespace {

/// A text, and three words that are also ids.
struct Sample
{
    QString text;
    QStringList words;
};

/// What an animation of an attribute makes of key values of a kind.
enum class Played {
    WordByWord,   ///< letters only: one after the other
    FirstForEver, ///< no number in them that could change
    Nothing       ///< numbers that can't be read
};

/// What the title shows at a time.
struct Frame
{
    QString label;
    QString x;
    bool isUseVisible;
};

const QString red = QStringLiteral("#c02040");
const QString green = QStringLiteral("#208040");
const QString blue = QStringLiteral("#2040c0");

enum class Form { Template, Playing, Still };

/// The title as its author wrote it, as it has to be while it plays, or as a still picture.
QString title(const Sample &sample, const Frame &frame, const QString &fill, Form form)
{
    const QString text = sample.text.toHtmlEscaped();
    const QString first = sample.words.at(0).toHtmlEscaped();
    const QString second = sample.words.at(1).toHtmlEscaped();

    QString visibility;
    if (form != Form::Template)
        visibility = frame.isUseVisible ? QStringLiteral("visibility=\"visible\"")
                                        : QStringLiteral("visibility=\"hidden\"");
    QString showing;
    QString labelling;
    QString moving;
    if (form != Form::Still) {
        showing = QStringLiteral("<animate attributeName=\"visibility\" values=\"visible;hidden\""
                                 " begin=\"0.5s\" dur=\"2s\"/>");
        labelling = QStringLiteral("<animate id=\"%1\" attributeName=\"class\" begin=\"0.5s\""
                                   " dur=\"3s\" values=\"%2\"/>")
                            .arg(first, sample.words.join(QLatin1Char(';')).toHtmlEscaped());
        const QString begin = form == Form::Template ? first + QStringLiteral(".end-3s")
                                                     : QStringLiteral("500ms");
        moving = QStringLiteral("<animate attributeName=\"x\" from=\"2\" to=\"50\" begin=\"%1\""
                                " dur=\"2s\"/>")
                         .arg(begin);
    }
    // Given all at once, so that no text's own "%" counts.
    return QStringLiteral(
                   "<svg xmlns=\"http://www.w3.org/2000/svg\""
                   " xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 240 120\""
                   " font-size=\"16\" font-family=\"DejaVu Sans\" lang=\"%1\">"
                   "<title>%1</title><!-- %2 -->"
                   "<defs><g id=\"%3\">%5<text y=\"50\" fill=\"%4\">%1</text></g></defs>"
                   "<use xlink:href=\"#%3\" %6/>"
                   "<text y=\"20\">%1<tspan fill=\"%4\">%2</tspan>%1</text>"
                   "<rect x=\"%7\" y=\"60\" width=\"20\" height=\"10\" class=\"%8\">%9</rect>"
                   "<text y=\"90\">%1</text></svg>")
            .arg(text, first, second, fill, showing, visibility, frame.x,
                 frame.label.toHtmlEscaped(), labelling + moving);
}

/// The node and all below it, with the attributes in an order of their own.
QString described(const QDomNode &node)
{
    std::map<QString, QString> attributes;
    for (int i = 0; i < node.attributes().length(); ++i) {
        const QDomNode attribute = node.attributes().item(i);
        attributes[attribute.nodeName()] = attribute.nodeValue();
    }
    QString result = QLatin1Char('(') + node.nodeName() + QLatin1Char('=') + node.nodeValue();
    for (const auto &attribute : attributes)
        result += QLatin1Char('\n') + attribute.first + QLatin1Char('=') + attribute.second;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        result += described(child);
    return result + QStringLiteral(")\n");
}

QString describedText(const QByteArray &text)
{
    QDomDocument document;
    QString error;
    if (!document.setContent(text, &error))
        return error;
    return described(document.documentElement());
}

QString letters(std::initializer_list<uint> codes)
{
    QString text;
    for (const uint code : codes)
        text += QString::fromUcs4(&code, 1);
    return text;
}

} // namespace

Q_DECLARE_METATYPE(Played)

class LanguagesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheText_data();
    void showsTheText();
    void playsEveryFrame_data();
    void playsEveryFrame();
    void bearsCyclesOfPlayingAdjustingAndSaving_data();
    void bearsCyclesOfPlayingAdjustingAndSaving();
    void shrinksAndGrows_data();
    void shrinksAndGrows();
    void savingSeparatesTouchingSpans();
    void dropsWhiteSpaceAlone();

private:
    static void addLanguages();
    static Sample sample();
    static Frame frameAt(const Sample &sample, Played played, int ms);
    static void compare(SvgDocument &document, const Sample &sample, const Frame &frame,
                        const QString &fill, int ms);
};

void LanguagesTest::addLanguages()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<Played>("played");
    const auto add = [](const char *name, Played played, const QString &text,
                        const QStringList &words) {
        QTest::newRow(name) << text << words << played;
    };

    add("English", Played::WordByWord, QStringLiteral("The quick brown fox"),
        {QStringLiteral("quick"), QStringLiteral("a"), QStringLiteral("foxes")});
    add("Czech", Played::WordByWord, QStringLiteral("Příliš žluťoučký kůň"),
        {QStringLiteral("příliš"), QStringLiteral("kůň"), QStringLiteral("ž")});
    add("Greek", Played::WordByWord, QStringLiteral("Καλημέρα, κόσμε"),
        {QStringLiteral("καλημέρα"), QStringLiteral("ω"), QStringLiteral("κόσμε")});
    add("Russian", Played::WordByWord, QStringLiteral("Съешь ещё этих булок"),
        {QStringLiteral("ё"), QStringLiteral("съешь"), QStringLiteral("мягких")});
    add("Hebrew", Played::WordByWord, QStringLiteral("שלום, עולם"),
        {QStringLiteral("שלום"), QStringLiteral("א"), QStringLiteral("עולם")});
    add("Arabic", Played::WordByWord, QStringLiteral("مرحبا بالعالم"),
        {QStringLiteral("مرحبا"), QStringLiteral("بالعالم"), QStringLiteral("و")});
    add("Chinese", Played::WordByWord, QStringLiteral("你好，世界"),
        {QStringLiteral("你好"), QStringLiteral("世"), QStringLiteral("標題動畫")});
    add("Japanese", Played::WordByWord, QStringLiteral("こんにちは世界"),
        {QStringLiteral("世界"), QStringLiteral("こんにちは"), QStringLiteral("カ")});
    add("Korean", Played::WordByWord, QStringLiteral("안녕하세요 세계"),
        {QStringLiteral("안녕하세요"), QStringLiteral("세계"), QStringLiteral("가")});
    add("Georgian", Played::WordByWord, QStringLiteral("გამარჯობა"),
        {QStringLiteral("გამარჯობა"), QStringLiteral("ა"), QStringLiteral("ბგ")});
    add("directions mixed", Played::WordByWord, QStringLiteral("abc שלום 123 مرحبا"),
        {QStringLiteral("abcשלום"), QStringLiteral("مرحبا"), QStringLiteral("x")});

    // A letter and its marks, which are no letters.
    add("Hindi", Played::FirstForEver, QStringLiteral("नमस्ते दुनिया"),
        {QStringLiteral("नमस्ते"), QStringLiteral("दुनिया"), QStringLiteral("अ")});
    add("Thai", Played::FirstForEver, QStringLiteral("สวัสดีชาวโลก"),
        {QStringLiteral("สวัสดี"), QStringLiteral("ชาว"), QStringLiteral("โลก")});
    add("combining marks", Played::FirstForEver,
        letters({'e', 0x301, ' ', 'o', 0x308, 0x304, 'n', 0x303, 0x323}),
        {letters({'e', 0x301}), letters({'o', 0x308, 0x304, 0x300, 0x327}), QStringLiteral("n")});
    add("Hebrew with points", Played::FirstForEver, letters({0x5E9, 0x5C1, 0x5B8, 0x5DC}),
        {letters({0x5E9, 0x5C1}), letters({0x5B8, 0x5DC}), letters({0x5DC})});

    // Characters that take two code units each. Of a font of coloured bitmaps the renderer leaves
    // the place blank, which the letter behind shows.
    add("emoji", Played::FirstForEver, letters({0x1F3AC, ' ', 0x1F389, 'a'}),
        {letters({0x1F3AC}), letters({0x1F389, 0x1F389}), letters({0x2728})});
    add("emoji joined to one", Played::FirstForEver,
        letters({0x1F468, 0x200D, 0x1F469, 0x200D, 0x1F467, 0x200D, 0x1F466, 'a'}),
        {letters({0x1F468, 0x200D, 0x1F469}), letters({0x1F3F3, 0xFE0F, 0x200D, 0x1F308}),
         letters({0x1F469, 0x1F3FD, 0x200D, 0x1F680})});
    add("emoji with skin tones and flags", Played::FirstForEver,
        letters({0x1F44D, 0x1F3FD, 0x1F1E8, 0x1F1FF, 'a'}),
        {letters({0x1F1E8, 0x1F1FF}), letters({0x1F44D, 0x1F3FD}), letters({0x1F1EF, 0x1F1F5})});
    add("rare ideographs", Played::FirstForEver, letters({0x2000B, 0x2123D, 0x30EDE}),
        {letters({0x2000B}), letters({0x2123D, 0x4E16}), letters({0x30EDE})});
    add("mathematical letters", Played::FirstForEver, letters({0x1D4AF, 0x1D4BE, 0x1D4C9}),
        {letters({0x1D4AF}), letters({0x1D4BE, 0x1D4C9}), letters({0x1D4C9})});

    add("digits of another script", Played::Nothing, letters({0x661, 0x662, 0x663}),
        {letters({0x661}), letters({0x662, 0x663}), letters({0x664})});
    add("invisible characters", Played::FirstForEver,
        letters({'a', 0xAD, 'b', 0x200B, 'c', 0x200E, 'd', 0x2060, 'e', 0xA0, 'f'}),
        {letters({'a', 0x200C, 'b'}), letters({'c', 0xAD, 'd'}), letters({'e', 0x2060, 'f'})});
    add("direction reversed", Played::FirstForEver, letters({'a', 0x202E, 'b', 'c', 0x202C, 'd'}),
        {letters({'a', 0x202E, 'b', 0x202C}), letters({0x2067, 'c', 0x2069}), QStringLiteral("d")});
    add("characters of markup", Played::FirstForEver,
        QStringLiteral("<b> & \"c\" 'd' > ]]> &amp; %1"),
        {QStringLiteral("<b>&"), QStringLiteral("\"c\"'d'"), QStringLiteral("]]>%1")});
    add("ends of every plane", Played::FirstForEver,
        letters({0xD7FF, 0xE000, 0xFFFD, 0x10000, 0x1FFFD, 0xFFFFD, 0x10FFFD}),
        {letters({0x10000}), letters({0xFFFD, 0x10FFFD}), letters({0xE000})});
}

Sample LanguagesTest::sample()
{
    QFETCH(QString, text);
    QFETCH(QStringList, words);
    return {text, words};
}

/// The words label the shape from 0.5 s on, for a second each; from 0.5 s to 2.5 s it moves, and
/// the definition is shown in the first half of that.
Frame LanguagesTest::frameAt(const Sample &sample, Played played, int ms)
{
    Frame frame{sample.text, QStringLiteral("2"), true};
    if (ms >= 500 && ms < 3500) {
        if (played == Played::Nothing)
            frame.label.clear();
        else
            frame.label = sample.words.at(played == Played::WordByWord ? (ms - 500) / 1000 : 0);
    }
    if (ms >= 500 && ms < 2500)
        frame.x = QString::number(2 + 48 * (ms - 500) / 2000.0, 'f', 3);
    frame.isUseVisible = ms < 1500 || ms >= 2500;
    return frame;
}

void LanguagesTest::compare(SvgDocument &document, const Sample &sample, const Frame &frame,
                            const QString &fill, int ms)
{
    const QImage picture = renderAt(document, ms);
    QCOMPARE(describedText(savedText(document)),
             describedText(title(sample, frame, fill, Form::Playing).toUtf8()));
    SvgDocument twin(title(sample, frame, fill, Form::Still));
    COMPARE_PICTURES(picture, renderAt(twin, 0), 0);
}

void LanguagesTest::showsTheText_data()
{
    addLanguages();
}

void LanguagesTest::showsTheText()
{
    const Sample own = sample();
    const Frame frame{own.text, QStringLiteral("2"), true};
    const QString still = title(own, frame, red, Form::Still);
    SvgDocument document(still);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(savedText(document), still.toUtf8());
    QCOMPARE(document.documentRoot().toElement().attribute(QStringLiteral("lang")), own.text);
    QCOMPARE(document.documentRoot().lastChildElement(QStringLiteral("text")).text(), own.text);

    SvgDocument empty(title({QString(), own.words}, frame, red, Form::Still));
    QVERIFY(renderAt(document, 0) != renderAt(empty, 0));
}

void LanguagesTest::playsEveryFrame_data()
{
    addLanguages();
}

void LanguagesTest::playsEveryFrame()
{
    QFETCH(Played, played);
    const Sample own = sample();
    const Frame start{own.text, QStringLiteral("2"), true};
    SvgDocument document(title(own, start, red, Form::Template));
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(document.animationDurationTotal(), 3500);
    for (int ms = 0; ms <= 4000; ms += 125) {
        compare(document, own, frameAt(own, played, ms), red, ms);
        if (QTest::currentTestFailed())
            return;
    }
    for (const int ms : {3400, 600, 1600, 9000, 2499, 0, 1500, 501}) {
        compare(document, own, frameAt(own, played, ms), red, ms);
        if (QTest::currentTestFailed())
            return;
    }
}

void LanguagesTest::bearsCyclesOfPlayingAdjustingAndSaving_data()
{
    addLanguages();
}

void LanguagesTest::bearsCyclesOfPlayingAdjustingAndSaving()
{
    QFETCH(Played, played);
    const Sample own = sample();
    const Frame start{own.text, QStringLiteral("2"), true};
    SvgDocument document(title(own, start, red, Form::Template));
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
    const struct
    {
        int ms;
        QString fill;
        bool prepares;
    } steps[] = {{600, green, false}, {3400, blue, false}, {0, blue, true},
                 {1600, red, true},   {1600, green, true}, {2600, red, false}};
    for (const auto &step : steps) {
        renderAt(document, step.ms + 700);
        if (step.prepares)
            document.prepareAdjustedAttibutes({QStringLiteral("fill")});
        document.adjustAttribute(QStringLiteral("fill"), step.fill);
        compare(document, own, frameAt(own, played, step.ms), step.fill, step.ms);
        if (QTest::currentTestFailed())
            return;
        document.saveToBuffer();
        document.viewBox();
        document.saveToBuffer();
        compare(document, own, frameAt(own, played, step.ms), step.fill, step.ms);
        if (QTest::currentTestFailed())
            return;
    }
}

void LanguagesTest::shrinksAndGrows_data()
{
    addLanguages();
}

/// Texts that end in the language, each a byte shorter than the one before: what is left over from
/// longer ones begins anywhere, also in the middle of a character.
void LanguagesTest::shrinksAndGrows()
{
    const Sample own = sample();
    const QString start = QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                                         " viewBox=\"0 0 240 120\"><rect class=\"\" width=\"9\""
                                         " height=\"9\"/><text y=\"60\" font-size=\"16\">");
    const QString end = own.text.toHtmlEscaped().repeated(3) + QStringLiteral("</text></svg>");
    SvgDocument document(start + end);
    SvgDocument twin(start + end);
    const QImage expected = renderAt(twin, 0);
    document.prepareAdjustedAttibutes({QStringLiteral("class")});
    for (int round = 0; round < 2; ++round) {
        for (int length = 40; length >= 0; --length) {
            const QString filling(length, QLatin1Char('x'));
            document.adjustAttribute(QStringLiteral("class"), filling);
            COMPARE_PICTURES(renderAt(document, 0), expected, 0);
            QDomDocument saved;
            QVERIFY(saved.setContent(savedText(document)));
            QCOMPARE(saved.documentElement().firstChildElement().attribute(QStringLiteral("class")),
                     filling);
            QCOMPARE(saved.documentElement().lastChildElement().text(), own.text.repeated(3));
        }
    }
}

/// A title of nothing but a text.
static QString titleOfText(const QString &content)
{
    return svgTitle(QStringLiteral("<text x=\"5\" y=\"30\" font-size=\"20\""
                                   " font-family=\"DejaVu Sans\">%1</text>")
                            .arg(content));
}

void LanguagesTest::savingSeparatesTouchingSpans()
{
    SvgDocument document(titleOfText(QStringLiteral("<tspan>a</tspan><tspan>b</tspan>")));
    SvgDocument together(titleOfText(QStringLiteral("ab")));
    SvgDocument apart(titleOfText(QStringLiteral("a b")));
    COMPARE_PICTURES(renderAt(document, 0), renderAt(together, 0), 0);
    document.saveToBuffer();
    COMPARE_PICTURES(renderAt(document, 0), renderAt(apart, 0), 0);
}

void LanguagesTest::dropsWhiteSpaceAlone()
{
    SvgDocument document(titleOfText(QStringLiteral(" <tspan> </tspan> ")));
    const QDomElement text = document.documentRoot().firstChildElement();
    QCOMPARE(text.childNodes().size(), 1);
    QVERIFY(!text.firstChild().hasChildNodes());
}

QTEST_MAIN(LanguagesTest)

#include "tst_languages.moc"
