// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleTest.h"

#include <Scene/AnimatableAttributeText.h>
#include <Scene/SvgDocument.h>

#include <QDomDocument>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QThread>
#include <QXmlStreamReader>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>

// Text that is broken, hostile or nonsense: what becomes of it is as well defined as for any other.
// Every such document also goes through all public functions at all kinds of times.

namespace {

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();
constexpr std::array<int, 5> times{lowest, -1, 0, 1, highest};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

const QRectF canvas(0, 0, 96, 64);

QString svg(const QString &content, const QString &viewBox = QStringLiteral("0 0 96 64"))
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"%1\">%2</svg>")
            .arg(viewBox, content);
}

QString redRect()
{
    return QStringLiteral("<rect x=\"8\" y=\"8\" width=\"40\" height=\"20\" fill=\"#ff0000\"/>");
}

/// A shape in which one attribute is animated, frozen unless the timing says otherwise.
QString animated(const QString &attributeName, const QString &values, const QString &timing)
{
    return QStringLiteral("<rect y=\"8\" width=\"20\" height=\"20\" fill=\"#ff0000\"><animate"
                          " attributeName=\"%1\" values=\"%2\" fill=\"freeze\" %3/></rect>")
            .arg(attributeName, values, timing);
}

QString moved(const QString &timing)
{
    return svg(animated(QStringLiteral("x"), QStringLiteral("0;60"), timing));
}

QString valued(const char *attributeName, const QString &values)
{
    return svg(animated(QLatin1String(attributeName), values, QStringLiteral("dur=\"1s\"")));
}

QString nested(int depth, const QString &startTag, const QString &endTag)
{
    const int inside = depth - 2; // the root and the shape
    return svg(startTag.repeated(inside) + redRect() + endTag.repeated(inside));
}

QString nestedElements(int depth, const QString &name)
{
    return nested(depth, QStringLiteral("<%1>").arg(name), QStringLiteral("</%1>").arg(name));
}

/// Animations of 1 ms each that begin one after the other; "first" tells what the first waits for.
QString chain(int length, const QString &first, bool backwards)
{
    QStringList animations;
    for (int i = 0; i < length; ++i) {
        const QString begin = i == 0 ? first : QStringLiteral("a%1.end").arg(i - 1);
        animations.append(
                QStringLiteral("<animate id=\"a%1\" attributeName=\"x\" from=\"0\" to=\"9\""
                               " begin=\"%2\" dur=\"1ms\"/>")
                        .arg(i)
                        .arg(begin));
    }
    if (backwards)
        std::reverse(animations.begin(), animations.end());
    return svg(QStringLiteral("<rect width=\"20\" height=\"20\">%1</rect>")
                       .arg(animations.join(QString())));
}

bool isTransparent(const QImage &picture)
{
    QImage nothing(picture.size(), picture.format());
    nothing.fill(Qt::transparent);
    return picture == nothing;
}

/// One character for each of the times: "#" when something is drawn, "." when nothing is.
QByteArray drawings(SvgDocument &document)
{
    QByteArray result;
    for (const int ms : times)
        result += isTransparent(renderAt(document, ms)) ? '.' : '#';
    return result;
}

const QByteArray always("#####");
const QByteArray never(".....");

/// Draws where something would be seen even of a document that fills the whole device.
bool drawsNothing(SvgDocument &document)
{
    QImage picture(120, 80, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    for (const int ms : times)
        document.paint(&painter, ms);
    painter.end();
    return isTransparent(picture);
}

bool isOneLine(const QString &text)
{
    return !text.isEmpty() && !text.contains(QLatin1Char('\n'));
}

void callAnalysis(SvgDocument &document)
{
    int latestEnd = 0;
    document.fixConditionalTiming();
    document.detectAnimatableAttibutes(latestEnd);
    document.detectUseElements();
    document.detectConclusionTime();
    document.fixDefinitionsVisibility();
    document.viewBox();
}

void callPlayback(SvgDocument &document)
{
    for (const int ms : times) {
        document.applyAnimation(ms);
        document.paint(nullptr, ms);
        renderAt(document, ms);
    }
}

void callAdjustment(SvgDocument &document)
{
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
    document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#00ff00"));
    document.adjustAttribute(QStringLiteral("stroke"), QStringLiteral("#0000ff"));
    document.adjustAttribute(QStringLiteral("unknown"), QStringLiteral("1"));
}

void callClipping(SvgDocument &document)
{
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    if (clipping)
        callPlayback(*clipping);
}

void callTreeAndText(SvgDocument &document)
{
    const QDomNode root = document.documentRoot();
    std::vector<QDomNode> nodes;
    document.getAllNodes(root, nodes);
    document.detectAdjustableAttibute(QStringLiteral("id"), nodes);
    const boost::shared_ptr<AnimatableAttribute> attribute(new AnimatableAttributeText(
            root.firstChild(), root, QStringLiteral("visibility"), {QStringLiteral("visible")}));
    document.updateDefinitionVisibility(root, attribute, QStringLiteral("visible"));
    document.saveToBuffer();
    QByteArray text = document.data();
    document.fixColors(text);
}

/// Everything that can be done with a document, as it is and once more after all of that.
void callEverything(SvgDocument &document)
{
    for (int round = 0; round < 2; ++round) {
        callPlayback(document);
        callAdjustment(document);
        callClipping(document);
        callAnalysis(document);
        callPlayback(document);
        callTreeAndText(document);
        callPlayback(document);
    }
}

/// Whether the text is XML up to the end of its root, and that is an svg element. It is UTF-8,
/// whatever encoding it names.
bool isWellFormedSvg(const QString &text)
{
    static const QRegularExpression encoding(
            QStringLiteral("^(<\\?xml version=\"1.0\" encoding=\")[^\"]*"));
    const QByteArray bytes = text.toUtf8(); // without halves of characters
    QString whole = QString::fromUtf8(bytes.constData(), bytes.size());
    QXmlStreamReader reader(whole.replace(encoding, QStringLiteral("\\1UTF-8")).toUtf8());
    reader.setNamespaceProcessing(false);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("svg"))
        return false;
    reader.skipCurrentElement();
    return !reader.hasError();
}

QStringList templateNames()
{
    return QDir(QStringLiteral(TITLESCENE_TEMPLATES))
            .entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
}

void addTemplates()
{
    QTest::addColumn<QString>("text");
    for (const QString &name : templateNames())
        QTest::newRow(qPrintable(name)) << readTemplate(name);
}

/// The same numbers in every run and on every machine.
class Random
{
public:
    explicit Random(unsigned seed) : m_generator(seed) {}

    int below(int bound) { return int(m_generator() % unsigned(bound)); }

private:
    std::mt19937 m_generator;
};

QString characters(int first, int last)
{
    QString text;
    for (int code = first; code <= last; ++code)
        text += QChar(code);
    return text;
}

/// Runs the function on a thread with a small stack.
void runOnSmallStack(const std::function<void()> &function)
{
    const std::unique_ptr<QThread> thread(QThread::create(function));
    thread->setStackSize(512 * 1024);
    thread->start();
    thread->wait();
}

} // namespace

class BadInputTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void refusesText_data();
    void refusesText();
    void refusesGarbage_data();
    void refusesGarbage();
    void refusesTemplatesThatAreCutOff_data();
    void refusesTemplatesThatAreCutOff();
    void judgesDamagedTemplates_data();
    void judgesDamagedTemplates();

    void limitsNesting_data();
    void limitsNesting();
    void limitsNestingOnASmallStack_data();
    void limitsNestingOnASmallStack();

    void hasAnOutcome_data();
    void hasAnOutcome();
    void bearsChains_data();
    void bearsChains();
    void bearsChainsOnASmallStack_data();
    void bearsChainsOnASmallStack();
    void bearsGradientCycles_data();
    void bearsGradientCycles();
    void drawsOnlyWhatCanBeRead();
    void bearsAnyBounds_data();
    void bearsAnyBounds();
    void bearsAnyTimeText_data();
    void bearsAnyTimeText();
};

/// What the renderer does not understand it says in a category of its own.
void BadInputTest::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg.warning=false"));
}

void BadInputTest::refusesText_data()
{
    QTest::addColumn<QString>("text");
    const QString rect = redRect();
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("spaces") << QStringLiteral("   ");
    QTest::newRow("white space") << QStringLiteral(" \t\r\n \n");
    QTest::newRow("byte order mark alone") << QString(QChar(0xFEFF));
    QTest::newRow("NUL") << QString(QChar(0));
    QTest::newRow("many NULs") << QString(1000, QChar(0));
    QTest::newRow("NUL before the root") << QChar(0) + svg(rect);
    QTest::newRow("NUL in the root") << svg(QString(QChar(0)) + rect);
    QTest::newRow("NUL in an attribute")
            << svg(QStringLiteral("<g id=\"a%1b\"/>").arg(QChar(0)) + rect);
    QTest::newRow("NUL by reference") << svg(QStringLiteral("<text>&#0;</text>") + rect);
    QTest::newRow("surrogate by reference") << svg(QStringLiteral("<text>&#xD800;</text>") + rect);
    QTest::newRow("character beyond Unicode") << svg(QStringLiteral("<text>&#x110000;</text>"));
    QTest::newRow("noncharacter") << svg(QStringLiteral("<text>%1</text>").arg(QChar(0xFFFE)));
    QTest::newRow("control character") << svg(QStringLiteral("<text>%1</text>").arg(QChar(7)));

    QTest::newRow("word") << QStringLiteral("title");
    QTest::newRow("number") << QStringLiteral("42");
    QTest::newRow("less-than sign") << QStringLiteral("<");
    QTest::newRow("greater-than sign") << QStringLiteral(">");
    QTest::newRow("ampersand") << QStringLiteral("&");
    QTest::newRow("JSON") << QStringLiteral("{\"svg\": [\"rect\"]}");
    QTest::newRow("style sheet") << QStringLiteral("svg { fill: red }");
    QTest::newRow("plain HTML") << QStringLiteral("<!DOCTYPE html><html><body><br></body></html>");
    QTest::newRow("well-formed HTML")
            << QStringLiteral("<!DOCTYPE html><html><body>%1</body></html>").arg(svg(rect));
    QTest::newRow("another vocabulary")
            << QStringLiteral("<title viewBox=\"0 0 96 64\">%1</title>").arg(rect);
    QTest::newRow("name in upper case")
            << svg(rect).replace(QStringLiteral("svg"), QStringLiteral("SVG"));
    QTest::newRow("compressed") << QString::fromLatin1(qCompress(svg(rect).toUtf8()));
    QTest::newRow("path of a file") << QStringLiteral("title.svg");

    QTest::newRow("comment alone") << QStringLiteral("<!-- %1 -->").arg(rect);
    QTest::newRow("declaration alone") << QStringLiteral("<?xml version=\"1.0\"?>");
    QTest::newRow("document type alone") << QStringLiteral("<!DOCTYPE svg>");
    QTest::newRow("document type that never ends")
            << QStringLiteral("<!DOCTYPE svg [ <!ELEMENT svg ") + svg(rect);
    QTest::newRow("processing instruction alone") << QStringLiteral("<?svg viewBox?>");
    QTest::newRow("end tag alone") << QStringLiteral("</svg>");
    QTest::newRow("start tag alone")
            << svg(rect).section(QLatin1Char('>'), 0, 0) + QLatin1Char('>');
    QTest::newRow("declaration after the start")
            << QStringLiteral(" <?xml version=\"1.0\"?>") + svg(rect);
    QTest::newRow("two declarations")
            << QStringLiteral("<?xml version=\"1.0\"?>").repeated(2) + svg(rect);
    QTest::newRow("unknown XML version") << QStringLiteral("<?xml version=\"7\"?>") + svg(rect);
    QTest::newRow("elements that overlap") << svg(QStringLiteral("<g><a></g></a>") + rect);
    QTest::newRow("attribute twice") << svg(QStringLiteral("<g id=\"a\" id=\"b\"/>") + rect);
    QTest::newRow("attributes without space") << svg(QStringLiteral("<g id=\"a\"x=\"b\"/>") + rect);
    QTest::newRow("two hyphens in a comment") << svg(QStringLiteral("<!-- a -- b -->") + rect);
    QTest::newRow("entity that contains itself")
            << QStringLiteral("<!DOCTYPE svg [<!ENTITY a \"&a;\">]>")
                    + svg(QStringLiteral("<text>&a;</text>") + rect);
    QTest::newRow("entities that contain each other")
            << QStringLiteral("<!DOCTYPE svg [<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">]>")
                    + svg(QStringLiteral("<text>&a;</text>") + rect);
}

void BadInputTest::refusesText()
{
    QFETCH(QString, text);
    SvgDocument document(text);
    QVERIFY(!document.isLoaded());
    QVERIFY2(isOneLine(document.errorString()), qPrintable(document.errorString()));
    QCOMPARE(document.data(), text.toUtf8());
    QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
    QCOMPARE(document.animationDurationTotal(), 0);
    QCOMPARE(document.animationConclusionDuration(), 0);
    QVERIFY(!document.hasClipping());
    QVERIFY(drawsNothing(document));

    document.setBounds(canvas);
    QVERIFY(drawsNothing(document));
    callEverything(document);
    QVERIFY(!document.isLoaded());
    QVERIFY(!document.makeClippingDocument());
    QCOMPARE(document.animationDurationTotal(), 0);
    QVERIFY(drawsNothing(document));
}

void BadInputTest::refusesGarbage_data()
{
    QTest::addColumn<QString>("alphabet");
    QTest::addColumn<QString>("frame");
    const QString alone = QStringLiteral("%1");
    QTest::newRow("bytes") << characters(0, 0xFF) << alone;
    QTest::newRow("letters of any kind") << characters(0, 0xFFFF) << alone;
    QTest::newRow("surrogates") << characters(0xD800, 0xDFFF) << alone;
    QTest::newRow("markup without order")
            << QStringLiteral("<<<>>>/\"'=&;!-?[]svgrectanimate #09 \n") << alone;
    QTest::newRow("bytes in an svg element") << characters(0, 0xFF) << svg(alone);
    QTest::newRow("markup without order in an svg element")
            << QStringLiteral("<<<>>>/\"'=&;!-?[]svgrectanimate #09 \n") << svg(alone);
}

void BadInputTest::refusesGarbage()
{
    QFETCH(QString, alphabet);
    QFETCH(QString, frame);
    Random random(424242);
    for (int i = 0; i < 100; ++i) {
        QString garbage;
        for (int length = 30 + random.below(3000); length > 0; --length)
            garbage += alphabet.at(random.below(alphabet.size()));
        SvgDocument document(frame.arg(garbage));
        QVERIFY(!document.isLoaded());
        QVERIFY2(isOneLine(document.errorString()), qPrintable(document.errorString()));
        QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
        QCOMPARE(document.animationDurationTotal(), 0);
        document.setBounds(canvas);
        callEverything(document);
        QVERIFY(drawsNothing(document));
    }
}

void BadInputTest::refusesTemplatesThatAreCutOff_data()
{
    addTemplates();
}

void BadInputTest::refusesTemplatesThatAreCutOff()
{
    QFETCH(QString, text);
    const QString endTag = QStringLiteral("</svg>");
    const int whole = text.lastIndexOf(endTag) + endTag.size();
    QVERIFY(SvgDocument(text.left(whole)).isLoaded());

    QVector<int> lengths;
    for (int i = 0; i < 100; ++i)
        lengths.append(whole * i / 100);
    for (int i = 1; i <= 20; ++i)
        lengths.append(whole - i);
    for (const int length : qAsConst(lengths)) {
        SvgDocument document(text.left(length));
        QVERIFY2(!document.isLoaded(), QByteArray::number(length).constData());
        QVERIFY(isOneLine(document.errorString()));
        QCOMPARE(document.bounds(), QRectF(0, 0, 0, 0));
        QCOMPARE(document.animationDurationTotal(), 0);
        document.setBounds(canvas);
        callEverything(document);
        QVERIFY(document.documentRoot().isNull());
        QVERIFY(drawsNothing(document));
    }
}

void BadInputTest::judgesDamagedTemplates_data()
{
    addTemplates();
}

/// One character at a random place is lost or becomes another one. XML decides what that means.
void BadInputTest::judgesDamagedTemplates()
{
    QFETCH(QString, text);
    Random random(171717);
    const QString replacements = QStringLiteral("<>&\"'/= x9-.;#") + QChar(0) + QChar(0xD83D);
    int accepted = 0;
    constexpr int rounds = 120;
    for (int i = 0; i < rounds; ++i) {
        QString damaged = text;
        const int place = random.below(text.size());
        if (random.below(3) == 0)
            damaged.remove(place, 1);
        else
            damaged[place] = replacements.at(random.below(replacements.size()));

        SvgDocument document(damaged);
        QVERIFY2(document.isLoaded() == isWellFormedSvg(damaged), qPrintable(damaged));
        if (i % 10 == 0) {
            document.setBounds(canvas);
            callEverything(document);
        }
        if (document.isLoaded()) {
            ++accepted;
        } else {
            QVERIFY(isOneLine(document.errorString()));
            QCOMPARE(document.animationDurationTotal(), 0);
            document.setBounds(canvas);
            QVERIFY(drawsNothing(document));
        }
    }
    QVERIFY(accepted > rounds / 10 && accepted < rounds);
}

void BadInputTest::limitsNesting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<QByteArray>("drawn");
    const struct
    {
        const char *name;
        bool showsChildren;
    } kinds[] = {{"g", true},     {"switch", true},   {"x", true},
                 {"defs", false}, {"clipPath", true}, {"text", false},
                 {"tspan", true}, {"animate", true},  {"linearGradient", true},
                 {"svg", false}}; // each of them enlarges its content to the whole canvas again
    for (const auto &kind : kinds) {
        const QLatin1String name(kind.name);
        QTest::addRow("256 %s", kind.name)
                << nestedElements(256, name) << true << (kind.showsChildren ? always : never);
        QTest::addRow("257 %s", kind.name) << nestedElements(257, name) << false << never;
        QTest::addRow("100,000 %s", kind.name) << nestedElements(100000, name) << false << never;
    }
    QTest::newRow("100,000 that never end")
            << svg(QStringLiteral("<g>").repeated(100000)) << false << never;
    QTest::newRow("100,000 without a root")
            << QStringLiteral("<svg>").repeated(100000) << false << never;
    QTest::newRow("257 after 1,000 others")
            << svg(QStringLiteral("<g/>").repeated(1000) + QStringLiteral("<g>").repeated(256)
                   + QStringLiteral("</g>").repeated(256))
            << false << never;
    QTest::newRow("many of 255 beside each other")
            << svg((QStringLiteral("<g>").repeated(255) + QStringLiteral("</g>").repeated(255))
                           .repeated(20)
                   + redRect())
            << true << always;
    QTest::newRow("256 that are animated")
            << nested(256, QStringLiteral("<g opacity=\"1\">"),
                      QStringLiteral("<animate attributeName=\"opacity\" from=\"1\" to=\"1\""
                                     " dur=\"1s\" begin=\"0\"/></g>"))
            << true << always;
}

void BadInputTest::limitsNesting()
{
    QFETCH(QString, text);
    QFETCH(bool, loaded);
    QFETCH(QByteArray, drawn);
    SvgDocument document(text);
    QCOMPARE(document.isLoaded(), loaded);
    QCOMPARE(document.bounds(), loaded ? canvas : QRectF(0, 0, 0, 0));
    if (!loaded) {
        QVERIFY(isOneLine(document.errorString()));
        QVERIFY(document.documentRoot().isNull());
    }
    document.setBounds(canvas);
    QCOMPARE(drawings(document), drawn);
    callEverything(document);
    QCOMPARE(document.isLoaded(), loaded);
    QCOMPARE(drawings(document), drawn);
}

void BadInputTest::limitsNestingOnASmallStack_data()
{
    limitsNesting_data();
}

void BadInputTest::limitsNestingOnASmallStack()
{
    QFETCH(QString, text);
    QFETCH(bool, loaded);
    QFETCH(QByteArray, drawn);
    bool wasLoaded = !loaded;
    QByteArray before;
    QByteArray after;
    runOnSmallStack([&] {
        SvgDocument document(text);
        wasLoaded = document.isLoaded();
        document.setBounds(canvas);
        before = drawings(document);
        callEverything(document);
        after = drawings(document);
    });
    QCOMPARE(wasLoaded, loaded);
    QCOMPARE(before, drawn);
    QCOMPARE(after, drawn);
}

void BadInputTest::hasAnOutcome_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRectF>("bounds");
    QTest::addColumn<int>("duration");
    QTest::addColumn<QByteArray>("drawn"); // in the whole canvas, whatever the bounds were
    const auto still = [](const char *name, const QString &text, const QByteArray &drawn = always) {
        QTest::newRow(name) << text << canvas << 0 << drawn;
    };
    const auto playing = [](const char *name, const QString &text, int duration,
                            const QByteArray &drawn = always) {
        QTest::newRow(name) << text << canvas << duration << drawn;
    };
    const auto boxed = [](const char *name, const char *viewBox, const QSizeF &size,
                          const QByteArray &drawn = always) {
        QTest::newRow(name) << svg(redRect(), QLatin1String(viewBox)) << QRectF(QPointF(), size)
                            << 0 << drawn;
    };

    boxed("view box of nothing", "", QSizeF(0, 0));
    boxed("view box not a number", "nan nan nan nan", QSizeF(0, 0));
    boxed("view box infinite", "0 0 inf inf", QSizeF(0, 0));
    boxed("view box beyond a double", "0 0 1e400 1e400", QSizeF(0, 0));
    boxed("view box below a double", "0 0 -1e308 -1e308", QSizeF(0, 0));
    boxed("view box of size 0", "0 0 0 0", QSizeF(0, 0));
    boxed("view box with an exponent", "0 0 1e2 64", QSizeF(0, 64));
    boxed("view box with a fraction", "0 0 96.5 64", QSizeF(0, 64));
    boxed("view box of one number", "96", QSizeF(0, 0));
    boxed("view box without height", "0 0 96", QSizeF(96, 0));
    boxed("view box of five numbers", "0 0 96 64 5", QSizeF(96, 64));
    boxed("view box with many separators", " ,,0,, 0,96,,,,64 ,", QSizeF(96, 64));
    boxed("view box beyond int", "0 0 2147483648 64", QSizeF(0, 64), never);
    boxed("view box largest", "0 0 2147483647 2147483647", QSizeF(2147483647, 2147483647), never);
    boxed("view box negative", "0 0 -96 -64", QSizeF(-96, -64), never);
    boxed("view box negative width", "0 0 -96 64", QSizeF(-96, 64), never);
    boxed("view box lowest", "0 0 -2147483648 -2147483648", QSizeF(-2147483648.0, -2147483648.0),
          never);
    boxed("view box whose origin is no number", "nan inf 96 64", QSizeF(96, 64));
    boxed("view box whose origin is far away", "1e30 -1e30 96 64", QSizeF(96, 64), never);

    playing("begin not a number", moved(QStringLiteral("begin=\"nan\" dur=\"1s\"")), 1000);
    playing("begin infinite", moved(QStringLiteral("begin=\"inf\" dur=\"1s\"")), highest);
    playing("begin infinitely early", moved(QStringLiteral("begin=\"-inf\" dur=\"1s\"")), 0);
    playing("begin beyond a double", moved(QStringLiteral("begin=\"1e400\" dur=\"1s\"")), 1000);
    playing("begin near the end of double", moved(QStringLiteral("begin=\"1e308\" dur=\"1s\"")),
            highest);
    playing("begin near the start of double", moved(QStringLiteral("begin=\"-1e308\" dur=\"1s\"")),
            0);
    playing("begin highest", moved(QStringLiteral("begin=\"2147483647ms\" dur=\"1s\"")), highest);
    playing("begin lowest", moved(QStringLiteral("begin=\"-2147483648ms\" dur=\"1s\"")), 0);
    playing("begin empty", moved(QStringLiteral("begin=\"\" dur=\"1s\"")), 1000);
    playing("begin hexadecimal", moved(QStringLiteral("begin=\"0x10\" dur=\"1s\"")), 1000);
    playing("begin of letters", moved(QStringLiteral("begin=\"click\" dur=\"1s\"")), 1000);
    playing("duration not a number", moved(QStringLiteral("dur=\"nan\"")), 0);
    playing("duration infinite", moved(QStringLiteral("dur=\"inf\"")), highest);
    playing("duration infinitely negative", moved(QStringLiteral("dur=\"-inf\"")), 0);
    playing("duration beyond a double", moved(QStringLiteral("dur=\"1e400\"")), 0);
    playing("duration near the end of double", moved(QStringLiteral("dur=\"1e308\"")), highest);
    playing("duration near the start of double", moved(QStringLiteral("dur=\"-1e308\"")), 0);
    playing("duration missing", moved(QString()), 0);
    playing("duration negative", moved(QStringLiteral("begin=\"3s\" dur=\"-1s\"")), 2000);
    playing("begin and duration highest",
            moved(QStringLiteral("begin=\"2147483647ms\" dur=\"2147483647ms\"")), highest);
    playing("begin and duration lowest",
            moved(QStringLiteral("begin=\"-2147483648ms\" dur=\"-2147483648ms\"")), 0);
    playing("begin lowest, duration highest",
            moved(QStringLiteral("begin=\"-2147483648ms\" dur=\"2147483647ms\"")), 0);
    for (const char *count : {"nan", "inf", "-1e308", "1e400", "2147483648", "-2147483648", ""})
        QTest::addRow("repeat count %s", count)
                << moved(QStringLiteral("dur=\"1s\" repeatCount=\"%1\"").arg(QLatin1String(count)))
                << canvas << 1000 << always;

    // A size that can't be read is none at all; before the begin the template's own counts.
    const QByteArray untilBegin("##...");
    playing("values not numbers", valued("width", QStringLiteral("nan;nan")), 1000, untilBegin);
    playing("values infinite", valued("width", QStringLiteral("inf;inf")), 1000, untilBegin);
    playing("values of opposite infinities", valued("width", QStringLiteral("-inf;inf")), 1000,
            untilBegin);
    playing("values beyond a double", valued("width", QStringLiteral("1e400;1e400")), 1000,
            untilBegin);
    playing("values from end to end of double", valued("width", QStringLiteral("-1e308;1e308")),
            1000, untilBegin);
    playing("values lost in a list", valued("width", QStringLiteral("1 2;nan")), 1000, untilBegin);
    playing("values of two separators", valued("width", QStringLiteral(";;")), 1000, untilBegin);
    playing("values of white space", valued("width", QStringLiteral(" \t")), 1000, untilBegin);
    playing("values that are colours", valued("width", QStringLiteral("red;blue")), 1000,
            untilBegin);
    playing("values that are words", valued("width", QStringLiteral("wide;narrow")), 1000,
            untilBegin);
    // Where a place can't be read it is 0.
    playing("places not numbers", valued("x", QStringLiteral("nan;nan")), 1000);
    playing("places of opposite infinities", valued("x", QStringLiteral("-inf;inf")), 1000);
    playing("places beyond a double", valued("x", QStringLiteral("1e400;-1e400")), 1000);
    playing("colours not colours", valued("fill", QStringLiteral("red;nan;#12;;url(#x)")), 1000);
    playing("transforms of nothing", valued("transform", QStringLiteral(";")), 1000);
    playing("transforms of the infinite",
            valued("transform", QStringLiteral("scale(inf);scale(nan)")), 1000);
    playing("transforms beyond a double",
            valued("transform", QStringLiteral("scale(1e400);scale(1e400)")), 1000, untilBegin);
    playing("10,000 values", valued("x", QStringLiteral("1;").repeated(10000)), 1000);
    playing("number of 10,000 digits", valued("x", QString(10000, QLatin1Char('9'))), 1000);
    playing("attribute without a name", valued("", QStringLiteral("1;2")), 1000);
    playing("attribute whose name is markup",
            valued("x=&quot;1&quot; &lt;g", QStringLiteral("1;2")), 1000);
    playing("attribute whose name is the end of the root",
            valued("&lt;/svg&gt;", QStringLiteral("1;2")), 1000);
    playing("values that are markup", valued("class", QStringLiteral("&lt;/svg&gt;;&quot;&amp;")),
            1000);

    still("used by itself", svg(redRect() + QStringLiteral("<use id=\"a\" xlink:href=\"#a\"/>")));
    still("two that use each other",
          svg(redRect()
              + QStringLiteral("<g id=\"a\"><use xlink:href=\"#b\"/></g>"
                               "<g id=\"b\"><use xlink:href=\"#a\"/></g>")));
    still("used by its child",
          svg(QStringLiteral("<g id=\"a\">%1<use xlink:href=\"#a\"/></g>").arg(redRect())));
    still("three in a ring of definitions",
          svg(redRect()
              + QStringLiteral("<defs><g id=\"a\"><use xlink:href=\"#b\"/></g>"
                               "<g id=\"b\"><use xlink:href=\"#c\"/></g>"
                               "<g id=\"c\"><use xlink:href=\"#a\"/></g></defs>"
                               "<use xlink:href=\"#a\"/>")));
    still("hidden ring of definitions",
          svg(redRect()
              + QStringLiteral("<defs><use id=\"a\" visibility=\"hidden\" xlink:href=\"#b\"/>"
                               "<use id=\"b\" visibility=\"visible\" xlink:href=\"#a\"/></defs>"
                               "<use xlink:href=\"#a\"/>")));
    still("the root used",
          svg(redRect() + QStringLiteral("<use xlink:href=\"#r\"/>"))
                  .replace(QStringLiteral("viewBox"), QStringLiteral("id=\"r\" viewBox")));
    still("nothing to use",
          svg(redRect()
              + QStringLiteral("<use/><use xlink:href=\"\"/><use xlink:href=\"#\"/>"
                               "<use xlink:href=\"#b\"/><use xlink:href=\"b#b\"/>")));
    playing("animated visibility in a ring of definitions",
            svg(redRect()
                + QStringLiteral("<defs><use id=\"a\" xlink:href=\"#b\">"
                                 "<animate attributeName=\"visibility\" from=\"hidden\""
                                 " to=\"visible\" dur=\"1s\"/></use>"
                                 "<use id=\"b\" xlink:href=\"#a\"/></defs>"
                                 "<use xlink:href=\"#a\"/>")),
            1000);
    playing("animation of the root",
            QString(svg(redRect()))
                    .replace(QStringLiteral("</svg>"),
                             QStringLiteral("<animate attributeName=\"viewBox\" values=\"0 0 0 0;"
                                            "0 0 96 64\" dur=\"1s\"/></svg>")),
            1000, QByteArray("###.#"));
    playing("animation of an animation",
            svg(redRect()
                + QStringLiteral("<animate attributeName=\"x\" from=\"1\" to=\"2\" dur=\"1s\">"
                                 "<animate attributeName=\"dur\" from=\"1\" to=\"inf\" dur=\"2s\"/>"
                                 "</animate>")),
            2000);

    still("lone surrogate",
          svg(QStringLiteral("<text>a%1b</text>").arg(QChar(0xD83D)) + redRect()));
    still("prefix that is not declared",
          svg(QStringLiteral("<foo:bar foo:baz=\"1\"/>") + redRect()));
    still("namespace that is not declared",
          QStringLiteral("<svg viewBox=\"0 0 96 64\">%1</svg>").arg(redRect()));
    QTest::newRow("root with a prefix")
            << QStringLiteral("<s:svg xmlns:s=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 96 64\">"
                              "<s:rect width=\"9\" height=\"9\"/></s:svg>")
            << QRectF(0, 0, 0, 0) << 0 << always;
    still("undefined entity with a document type",
          QStringLiteral("<!DOCTYPE svg SYSTEM \"svg.dtd\">")
                  + svg(QStringLiteral("<text>&nbsp;</text>") + redRect()));
    still("nothing at all", svg(QString()), never);
    still("unknown elements alone", svg(QStringLiteral("<a/><b c=\"d\"/>").repeated(100)), never);
    still("style that is broken", svg(QStringLiteral("<style>rect { fill: </style>") + redRect()));
    still("path that is broken",
          svg(QStringLiteral("<path d=\"M 1 L nan z z 5,,5 -.-\"/>") + redRect()));
}

void BadInputTest::hasAnOutcome()
{
    QFETCH(QString, text);
    QFETCH(QRectF, bounds);
    QFETCH(int, duration);
    QFETCH(QByteArray, drawn);
    SvgDocument document(text);
    QVERIFY2(document.isLoaded(), qPrintable(document.errorString()));
    QCOMPARE(document.bounds(), bounds);
    QCOMPARE(document.animationDurationTotal(), duration);
    if (bounds.isEmpty())
        QVERIFY(drawsNothing(document));

    document.setBounds(canvas);
    QCOMPARE(drawings(document), drawn);
    callEverything(document);
    QVERIFY(document.isLoaded());
    QCOMPARE(document.bounds(), canvas);
    QDomDocument saved;
    QVERIFY(saved.setContent(document.data().left(int(document.size()))));
}

void BadInputTest::bearsChains_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("duration");
    QTest::newRow("10,000 in order") << chain(10000, QStringLiteral("0s"), false) << 10000;
    QTest::newRow("10,000 against the order") << chain(10000, QStringLiteral("0s"), true) << 10000;
    QTest::newRow("10,000 after an unknown one")
            << chain(10000, QStringLiteral("nobody.end+1s"), false) << 11000;
    QTest::newRow("10,000 in a ring") << chain(10000, QStringLiteral("a9999.end"), false) << 10000;
    QTest::newRow("10,000 in a ring, against the order")
            << chain(10000, QStringLiteral("a9999.end"), true) << 10000;
    QTest::newRow("two that wait for each other")
            << chain(2, QStringLiteral("a1.end+1s"), false) << 1002;
    QTest::newRow("one that waits for itself")
            << chain(1, QStringLiteral("a0.end+1s"), false) << 1001;
    QTest::newRow("one that waits for its own begin")
            << chain(1, QStringLiteral("a0.begin-1s"), false) << 0;
    QTest::newRow("offset that is no number")
            << chain(1, QStringLiteral("nobody.end+nan"), false) << 1;
    QTest::newRow("infinite offset")
            << chain(2, QStringLiteral("nobody.end+inf"), false) << highest;
    QTest::newRow("infinite offset back")
            << chain(2, QStringLiteral("nobody.begin-inf"), false) << 0;
}

void BadInputTest::bearsChains()
{
    QFETCH(QString, text);
    QFETCH(int, duration);
    SvgDocument document(text);
    QVERIFY(document.isLoaded());
    QCOMPARE(document.animationDurationTotal(), duration);
    QCOMPARE(drawings(document), always);
}

void BadInputTest::bearsChainsOnASmallStack_data()
{
    bearsChains_data();
}

void BadInputTest::bearsChainsOnASmallStack()
{
    QFETCH(QString, text);
    QFETCH(int, duration);
    int measured = -1;
    runOnSmallStack([&] { measured = SvgDocument(text).animationDurationTotal(); });
    QCOMPARE(measured, duration);
}

void BadInputTest::bearsGradientCycles_data()
{
    QTest::addColumn<QString>("gradients");
    QTest::newRow("itself") << QStringLiteral("<linearGradient id=\"a\" xlink:href=\"#a\"/>");
    QTest::newRow("each other") << QStringLiteral("<linearGradient id=\"a\" xlink:href=\"#b\"/>"
                                                  "<linearGradient id=\"b\" xlink:href=\"#a\"/>");
    QTest::newRow("ring of three")
            << QStringLiteral("<radialGradient id=\"a\" xlink:href=\"#c\"/>"
                              "<linearGradient id=\"b\" xlink:href=\"#a\"/>"
                              "<linearGradient id=\"c\" xlink:href=\"#b\"/>");
}

/// A gradient without colours fills nothing.
void BadInputTest::bearsGradientCycles()
{
    QFETCH(QString, gradients);
    SvgDocument document(svg(gradients
                             + QStringLiteral("<rect width=\"90\" height=\"60\" fill=\"url(#a)\"/>")
                             + redRect()));
    QVERIFY(document.isLoaded());
    SvgDocument twin(svg(redRect()));
    for (const int ms : times) {
        const ExpectedWarning fromTheRenderer(QStringLiteral("Could not resolve property : #"));
        COMPARE_PICTURES(renderAt(document, ms), renderAt(twin, 0), 0);
    }
}

void BadInputTest::drawsOnlyWhatCanBeRead()
{
    SvgDocument document(svg(redRect()));
    document.setBounds(canvas);
    const QImage expected = renderAt(document, 0);
    document.close();
    QVERIFY(isTransparent(renderAt(document, 0)));
    QVERIFY(document.open(QIODevice::WriteOnly));
    QVERIFY(isTransparent(renderAt(document, 0)));
    document.close();
    QVERIFY(document.open(QIODevice::ReadOnly));
    COMPARE_PICTURES(renderAt(document, 0), expected, 0);
}

void BadInputTest::bearsAnyBounds_data()
{
    QTest::addColumn<QRectF>("bounds");
    QTest::addColumn<bool>("isDrawn");
    QTest::newRow("as large as the title") << QRectF(0, 0, 96, 64) << true;
    QTest::newRow("as large as a pixel") << QRectF(0, 0, 1, 1) << true;
    QTest::newRow("a million times the title") << QRectF(0, 0, 96e6, 64e6) << true;
    QTest::newRow("around the canvas") << QRectF(-1e6, -1e6, 2e6, 2e6) << true;
    QTest::newRow("far to the right") << QRectF(1e6, 0, 96, 64) << false;
    QTest::newRow("far to the left") << QRectF(-1e9, -1e9, 96, 64) << false;

    QTest::newRow("null") << QRectF() << false;
    QTest::newRow("no width") << QRectF(0, 0, 0, 64) << false;
    QTest::newRow("no height") << QRectF(0, 0, 96, 0) << false;
    QTest::newRow("negative width") << QRectF(96, 0, -96, 64) << false;
    QTest::newRow("negative height") << QRectF(0, 64, 96, -64) << false;
    QTest::newRow("both negative") << QRectF(96, 64, -96, -64) << false;
    QTest::newRow("all not numbers")
            << QRectF(notANumber, notANumber, notANumber, notANumber) << false;
    QTest::newRow("x not a number") << QRectF(notANumber, 0, 96, 64) << false;
    QTest::newRow("y not a number") << QRectF(0, notANumber, 96, 64) << false;
    QTest::newRow("width not a number") << QRectF(0, 0, notANumber, 64) << false;
    QTest::newRow("height not a number") << QRectF(0, 0, 96, notANumber) << false;
    QTest::newRow("infinite width") << QRectF(0, 0, infinity, 64) << false;
    QTest::newRow("infinite height") << QRectF(0, 0, 96, infinity) << false;
    QTest::newRow("infinitely far") << QRectF(infinity, -infinity, 96, 64) << false;
    QTest::newRow("infinite all around")
            << QRectF(-infinity, -infinity, infinity, infinity) << false;
    QTest::newRow("smallest") << QRectF(0, 0, 5e-324, 5e-324) << false;
    QTest::newRow("tiny") << QRectF(0, 0, 1e-30, 1e-30) << false;
    QTest::newRow("beyond int") << QRectF(0, 0, 1e10, 1e10) << true;
    QTest::newRow("beyond a float") << QRectF(0, 0, 1e100, 1e100) << true;
    QTest::newRow("largest") << QRectF(0, 0, largest, largest) << false;
    QTest::newRow("lowest") << QRectF(-largest, -largest, largest, largest) << false;
}

void BadInputTest::bearsAnyBounds()
{
    QFETCH(QRectF, bounds);
    QFETCH(bool, isDrawn);
    SvgDocument document(
            svg(QStringLiteral("<rect width=\"96\" height=\"64\" fill=\"#ff0000\">"
                               "<animate attributeName=\"fill\" from=\"#00ff00\""
                               " to=\"#0000ff\" dur=\"1s\"/></rect>"
                               "<clipPath><rect width=\"96\" height=\"64\"/></clipPath>")));
    document.setBounds(bounds);
    QCOMPARE(drawsNothing(document), !isDrawn);
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    QVERIFY(clipping);
    clipping->setBounds(bounds);
    QCOMPARE(drawsNothing(*clipping), !isDrawn);

    document.setBounds(canvas);
    QCOMPARE(drawings(document), always);
}

void BadInputTest::bearsAnyTimeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("ms");
    QTest::newRow("null") << QString() << 0;
    QTest::newRow("unit alone") << QStringLiteral("ms") << 0;
    QTest::newRow("s alone") << QStringLiteral("s") << 0;
    QTest::newRow("minus alone") << QStringLiteral("-") << 0;
    QTest::newRow("NUL") << QString(QChar(0)) << 0;
    QTest::newRow("NUL after a number") << QStringLiteral("1") + QChar(0) << 0;
    QTest::newRow("not a number") << QStringLiteral("nan") << 0;
    QTest::newRow("not a number of seconds") << QStringLiteral("nans") << 0;
    QTest::newRow("infinite") << QStringLiteral("inf") << highest;
    QTest::newRow("infinite milliseconds") << QStringLiteral("infms") << highest;
    QTest::newRow("infinitely early") << QStringLiteral("-inf") << lowest;
    QTest::newRow("beyond a double") << QStringLiteral("1e400") << 0;
    QTest::newRow("largest double, which a factor makes infinite")
            << QStringLiteral("1.7976931348623157e308") << highest;
    QTest::newRow("lowest double") << QStringLiteral("-1.7976931348623157e308s") << lowest;
    QTest::newRow("below a double") << QStringLiteral("1e-400s") << 0;
    QTest::newRow("highest") << QStringLiteral("2147483647ms") << highest;
    QTest::newRow("one more than the highest") << QStringLiteral("2147483648ms") << highest;
    QTest::newRow("lowest") << QStringLiteral("-2147483648ms") << lowest;
    QTest::newRow("one less than the lowest") << QStringLiteral("-2147483649ms") << lowest;
    QTest::newRow("a million digits") << QString(1000000, QLatin1Char('9')) << 0;
    QTest::newRow("lone surrogate") << QString(QChar(0xD83D)) << 0;
}

void BadInputTest::bearsAnyTimeText()
{
    QFETCH(QString, text);
    QFETCH(int, ms);
    const SvgDocument document{QString()};
    QCOMPARE(document.stringToTime(text), ms);
    int begin = 1;
    int end = 1;
    document.getBeginEndParams(text, QStringLiteral("0s"), begin, end);
    QCOMPARE(begin, ms);
    QCOMPARE(end, ms);
    document.getBeginEndParams(QStringLiteral("1ms"), text, begin, end);
    QCOMPARE(begin, 1);
    QCOMPARE(end, int(std::min<qint64>(qint64(ms) + 1, highest)));
}

QTEST_MAIN(BadInputTest)

#include "tst_badinput.moc"
