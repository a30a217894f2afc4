// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "WarningFreeTest.h"

#include <Scene/SelectorScan_p.h>

// How many simple selectors a style sheet makes the renderer compare with an element.

class SelectorScanTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void counts_data();
    void counts();
    void leavesFontsOut_data();
    void leavesFontsOut();
    void weighs_data();
    void weighs();
};

void SelectorScanTest::counts_data()
{
    QTest::addColumn<QByteArray>("styleSheet");
    QTest::addColumn<int>("single");
    QTest::addColumn<int>("ancestor");
    QTest::addColumn<int>("sibling");
    const auto add = [](const char *styleSheet, int single, int ancestor = 0, int sibling = 0) {
        QTest::newRow(styleSheet) << QByteArray(styleSheet) << single << ancestor << sibling;
    };
    add("", 1);
    add("a{fill:red}", 1);
    add(" .a {\n fill: red; stroke: blue }\n\n#b\n{ }", 2);
    add("a,b , c{}", 3);
    add("a.b.c#d[e][f=g]:h{}", 7);
    add("a b{}", 2, 1);
    add("a > b{}", 2, 1);
    add("a>b>c , d{}", 4, 2);
    add("a+b{}", 2, 0, 1);
    add("a ~ b c{}", 3, 1, 1);
    add("@media print{a b{}}", 4, 2);
    add("a{font-family:'x y;{';fill:\"} b c{\"}", 1);
    add("/* a b { c } */ d{}", 1);
    add("a/* { */b{}", 3, 2);
    add("a /* b */ c{}", 5, 4);
    add("a[b='{ c d ']{}", 5, 3);
    // What may be other than it looks counts as selectors.
    add("a{b:c}/* d e f", 5, 3);
    add("a{b:\\} c d", 5, 2);
    add("a{b:'c\n'd e}", 5, 2);
}

void SelectorScanTest::counts()
{
    QFETCH(QByteArray, styleSheet);
    const SelectorScan scan =
            scanSelectors(std::string_view(styleSheet.constData(), std::size_t(styleSheet.size())));
    QTEST(int(scan.single), "single");
    QTEST(int(scan.ancestor), "ancestor");
    QTEST(int(scan.sibling), "sibling");
}

void SelectorScanTest::leavesFontsOut_data()
{
    QTest::addColumn<QByteArray>("styleSheet");
    QTest::addColumn<int>("embedded");
    const auto add = [](const char *styleSheet, int embedded) {
        QTest::newRow(styleSheet) << QByteArray(styleSheet) << embedded;
    };
    add("@font-face{src:url(Ab1+/=)}", 3);
    add("@font-face { src: url( 'Ab1' ), url(\"c\") format('d') ; }", 5);
    add("a{} \n@font-face\n{src:url(A\nB)} b{} @font-face{src:'c'}", 3);
    add("/* a */@font-face{src:url(b)}", 1);
    add("@font-face{src:local(abc)}", 0);
    // Where something else may be meant, all counts.
    add("a{src:url(Ab1)}", 0);
    add("a @font-face{src:url(Ab1)}", 0);
    add("a{@font-face{src:url(Ab1)}}", 0);
    add("@media print{@font-face{src:url(Ab1)}}", 0);
    add("@font-faces{src:url(Ab1)}", 0);
    add("@font-face{src:url(Ab1", 0);
    add("@font-face{src:'Ab1", 0);
    add("@font-face{}a{src:url(Ab1)}", 0);
    add("@font-face{src:url(}a{src:Ab1)}", 0);
    add("@font-face{src:url(a\\7d a)}", 0);
}

void SelectorScanTest::leavesFontsOut()
{
    QFETCH(QByteArray, styleSheet);
    const SelectorScan scan =
            scanSelectors(std::string_view(styleSheet.constData(), std::size_t(styleSheet.size())));
    QTEST(int(scan.embedded), "embedded");
}

void SelectorScanTest::weighs_data()
{
    QTest::addColumn<QByteArray>("styleSheet");
    QTest::addColumn<QByteArray>("stylings");
    const auto add = [](const char *styleSheet, const char *stylings) {
        QTest::newRow(styleSheet) << QByteArray(styleSheet) << QByteArray(stylings);
    };
    add("", "");
    add("a", "");
    add("a{}", "a 35");
    add("A{fill:red}", "a 59");
    add(" \n a { \t } ", "a 90");
    add(".b{}#c{}.b{}", ".b 52, #c 52, .b 52");
    add("*{} *.b{} d#c.b{} d:e{}", "* 51, .b 86, #c 88, d 70");
    add("a .b,\na>#c , d+*{}", ".b 226, #c 226, * 226");
    add("a{b:c;{d:e}f:g}", "a 143");
    add("@font-face{a:b} @media x{.b{}}", ".b 52");
    add("a{b:'};{'}", "a 138");
    add("/* a */.b{}", ".b 52");
    add("a{b:'\\201C';c:\\e9}.\\e9{}", "a 162, * 70");
    // Not told apart from all elements.
    add("a[b]{} a[b='c .d']{} e:not(.d){} .d/* */{} \xC5\xBFvg{}",
        "* 70, * 174, * 124, * 154, * 87");
    add("a/* .d*/{} */* .d */{}", "* 138, * 188");
    // What may be other than it looks.
    add("a{b:c", "a 37");
    add("a{}.b{c:d;e:'", "a 35, * 70, .b 106");
    add("a{} .b{c:\\7d d{e:f}", "a 35, * 432, .b 160");
}

void SelectorScanTest::weighs()
{
    QFETCH(QByteArray, styleSheet);
    const SelectorScan scan =
            scanSelectors(std::string_view(styleSheet.constData(), std::size_t(styleSheet.size())));
    QByteArrayList stylings;
    for (const SelectorScan::Styling &styling : scan.stylings)
        stylings.append((styling.key.empty() ? "*" : QByteArray::fromStdString(styling.key)) + ' '
                        + QByteArray::number(styling.weight));
    QTEST(stylings.join(", "), "stylings");
}

QTEST_APPLESS_MAIN(SelectorScanTest)

#include "tst_selectorscan.moc"
