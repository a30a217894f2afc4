// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MarkupTexts.h"
#include "TitleTest.h"
#include "TreeTest.h"

#include <Scene/SvgDocument.h>

// Values are written into the text of the frame before, wherever an element stands in it. Here
// that text is full of what looks like other elements; each frame is compared with that of a tree
// that is saved as a whole.

namespace {

QByteArray animatedRect(int number, const QByteArray &attributes = QByteArray())
{
    const QByteArray x = QByteArray::number(number % 90);
    return "<rect" + attributes + " x=\"" + x + "\" width=\"9\" height=\"9\"><animate"
            + " attributeName=\"x\" from=\"" + x + "\" to=\"90\" dur=\"1s\"/><animate"
            + " attributeName=\"opacity\" begin=\"500ms\" values=\"1;0\" dur=\"1s\"/></rect>";
}

QString title(const QByteArray &content)
{
    return svgTitle(QString::fromUtf8(content));
}

/// Empty when some frames are those of the plain way.
QByteArray difference(const QString &text)
{
    SvgDocument document(text);
    SvgDocument plain(text);
    if (!document.isLoaded())
        return document.errorString().toUtf8() + '\n' + text.toUtf8();
    for (const int time : {100, 700, 300, 1200, 2000, 400}) {
        const QImage picture = renderAt(document, time);
        plain.documentRoot();
        if (renderAt(plain, time) != picture)
            return "another picture: " + text.toUtf8();
        if (contentOf(savedTree(document)) != contentOf(savedTree(plain)))
            return "another tree: " + text.toUtf8();
    }
    const QByteArray ours = savedText(document);
    if (ours != saved(document.documentRoot().ownerDocument()))
        return "another text: " + text.toUtf8() + '\n' + ours;
    return QByteArray();
}

} // namespace

#define COMPARE_WITH_THE_PLAIN_WAY(text) \
    do { \
        const QByteArray found = difference(text); \
        QVERIFY2(found.isEmpty(), found); \
    } while (false)

class MarkupFramesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void framesAfterAComment_data();
    void framesAfterAComment();
    void framesAmongShortComments();
    void framesAmongMarkup();
};

void MarkupFramesTest::framesAfterAComment_data()
{
    QTest::addColumn<QByteArray>("comment");
    for (const char *comment :
         {"><rect x=\"1\">", "-><rect x=\"1\">", "> <a b=\"", "-> <a b='", ">", "->", "<", "<!",
          "<!-a", "<?", "</", "- -a", "]]><a>", "?><a>"})
        QTest::newRow(comment) << QByteArray(comment);
}

void MarkupFramesTest::framesAfterAComment()
{
    QFETCH(QByteArray, comment);
    comment = "<!--" + comment + "-->";
    COMPARE_WITH_THE_PLAIN_WAY(title(comment + animatedRect(1) + animatedRect(2)));
    COMPARE_WITH_THE_PLAIN_WAY(title("<g>" + animatedRect(1) + comment + "</g>" + animatedRect(2)));
    COMPARE_WITH_THE_PLAIN_WAY(QString::fromUtf8(comment) + title(animatedRect(1)));
}

void MarkupFramesTest::framesAmongShortComments()
{
    QByteArray content;
    int count = 0;
    for (const QByteArray &text : shortTexts(6)) {
        if (text.contains("--") || text.endsWith('-'))
            continue;
        content += "<!--" + text + "-->" + (++count % 7 == 0 ? animatedRect(count) : "<g/>");
        if (count % 200 == 0) {
            COMPARE_WITH_THE_PLAIN_WAY(title(content));
            content.clear();
        }
    }
    COMPARE_WITH_THE_PLAIN_WAY(title(content));
}

void MarkupFramesTest::framesAmongMarkup()
{
    for (quint32 seed = 0; seed < 300; ++seed) {
        RandomMarkup random(seed);
        const auto anything = [&random] {
            return random.misc() + (random.oneIn(3) ? random.characterData() : QByteArray());
        };
        QByteArray content;
        for (int i = 0; i < 6; ++i)
            content +=
                    anything() + "<g>" + animatedRect(i, random.attributes()) + anything() + "</g>";
        QByteArray text = title(content).toUtf8();
        if (random.oneIn(3))
            text.prepend("<!DOCTYPE svg [<!ENTITY a '<b>'>" + random.misc() + "]>");
        COMPARE_WITH_THE_PLAIN_WAY(QString::fromUtf8(random.misc() + text + random.misc()));
    }
}

QTEST_MAIN(MarkupFramesTest)

#include "tst_markupframes.moc"
