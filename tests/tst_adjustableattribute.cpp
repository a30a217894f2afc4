// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"

#include <Scene/AdjustableAttribute.h>

#include <QDomDocument>

#include <type_traits>

static_assert(std::is_base_of<SvgElement, AdjustableAttribute>::value,
              "an adjustable attribute is the element that carries it");
static_assert(!std::is_polymorphic<AdjustableAttribute>::value,
              "an adjustable attribute has no virtual functions");

namespace {

} // namespace

class AdjustableAttributeTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void defaultValue_data();
    void defaultValue();
    void defaultValueIsThatOfTheConstruction();
    void nodeThatIsNoElement();
    void idIsTheElementsIdAndTheName();
    void elementIsTheObjectItself();
    void knownPlace();
    void applyWritesTheValue();
    void restoreBringsTheTemplatesValueBack_data();
    void restoreBringsTheTemplatesValueBack();
    void restoreInATreeParsedAnew();
    void otherAttributesStay();
    void lostElementChangesNothing();
    void nameThatIsNoXmlNameIsNeverWritten_data();
    void nameThatIsNoXmlNameIsNeverWritten();
};

void AdjustableAttributeTest::defaultValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("value");

    QTest::newRow("present") << QStringLiteral("<svg><a fill='#ff0000'/></svg>")
                             << QStringLiteral("#ff0000");
    QTest::newRow("spaces stay") << QStringLiteral("<svg><a fill=' red '/></svg>")
                                 << QStringLiteral(" red ");
    QTest::newRow("empty") << QStringLiteral("<svg><a fill=''/></svg>") << QString();
    QTest::newRow("absent") << QStringLiteral("<svg><a stroke='red'/></svg>") << QString();
    QTest::newRow("other case") << QStringLiteral("<svg><a Fill='red'/></svg>") << QString();
    QTest::newRow("only the parent's") << QStringLiteral("<svg fill='red'><a/></svg>") << QString();
}

void AdjustableAttributeTest::defaultValue()
{
    QFETCH(QString, text);
    QFETCH(QString, value);
    const QDomDocument document = parsed(text);
    const QDomElement root = document.documentElement();
    const AdjustableAttribute attribute(root.firstChild(), root, QStringLiteral("fill"));
    QCOMPARE(attribute.attributeName(), QStringLiteral("fill"));
    QCOMPARE(attribute.defaultValue(), value);
}

void AdjustableAttributeTest::defaultValueIsThatOfTheConstruction()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a fill='red'/></svg>"));
    const QDomElement root = document.documentElement();
    const AdjustableAttribute attribute(root.firstChild(), root, QStringLiteral("fill"));
    attribute.apply(root, QStringLiteral("blue"));
    QCOMPARE(attribute.defaultValue(), QStringLiteral("red"));
    const AdjustableAttribute later(root.firstChild(), root, QStringLiteral("fill"));
    QCOMPARE(later.defaultValue(), QStringLiteral("blue"));
}

void AdjustableAttributeTest::nodeThatIsNoElement()
{
    const QDomDocument document = parsed(QStringLiteral("<svg>text</svg>"));
    const QDomElement root = document.documentElement();
    AdjustableAttribute attribute(root.firstChild(), root, QStringLiteral("fill"));
    QCOMPARE(attribute.defaultValue(), QString());
    QCOMPARE(attribute.id(), QStringLiteral("0fill"));
    const QString before = document.toString();
    attribute.apply(root, QStringLiteral("red"));
    attribute.restoreDefaultValue(root);
    QCOMPARE(document.toString(), before);
}

void AdjustableAttributeTest::idIsTheElementsIdAndTheName()
{
    const QDomDocument document =
            parsed(QStringLiteral("<svg><a/><g><a/><a/><a id='title' opacity='1'/></g></svg>"));
    const QDomElement root = document.documentElement();
    const QDomNode node = root.lastChild().lastChild();
    const AdjustableAttribute opacity(node, root, QStringLiteral("opacity"));
    const AdjustableAttribute sameAgain(node, root, QStringLiteral("opacity"));
    const AdjustableAttribute fill(node, root, QStringLiteral("fill"));
    QCOMPARE(opacity.id(), QStringLiteral("12opacity"));
    QCOMPARE(opacity.id(), QString(opacity.element().id() + opacity.attributeName()));
    QCOMPARE(sameAgain.id(), opacity.id());
    QCOMPARE(fill.id(), QStringLiteral("12fill"));
}

void AdjustableAttributeTest::elementIsTheObjectItself()
{
    const QDomDocument document =
            parsed(QStringLiteral("<svg><defs><a id='logo' fill='red'/></defs></svg>"));
    const QDomElement root = document.documentElement();
    const AdjustableAttribute attribute(root.firstChild().firstChild(), root,
                                        QStringLiteral("fill"));
    QCOMPARE(&attribute.element(), static_cast<const SvgElement *>(&attribute));
    QCOMPARE(attribute.element().id(), QStringLiteral("00"));
    QCOMPARE(attribute.svgId(), QStringLiteral("logo"));
    QVERIFY(attribute.isDefinition());
}

void AdjustableAttributeTest::knownPlace()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a fill='red'/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = root.lastChildElement();
    const AdjustableAttribute attribute(element, SvgElement(element, root), QStringLiteral("fill"));
    QCOMPARE(attribute.id(), QStringLiteral("1fill"));
    QCOMPARE(attribute.attributeName(), QStringLiteral("fill"));
    QCOMPARE(attribute.defaultValue(), QStringLiteral("red"));
    attribute.apply(root, QStringLiteral("blue"));
    QCOMPARE(element.attribute(QStringLiteral("fill")), QStringLiteral("blue"));
    QVERIFY(!root.firstChildElement().hasAttributes());
}

void AdjustableAttributeTest::applyWritesTheValue()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = root.firstChildElement();
    const QString stroke = QStringLiteral("stroke");
    const AdjustableAttribute attribute(element, root, stroke);
    attribute.apply(root, QStringLiteral("#123456"));
    QCOMPARE(element.attribute(stroke), QStringLiteral("#123456"));
    attribute.apply(root, QStringLiteral("a\u0001b"));
    QCOMPARE(element.attribute(stroke), QStringLiteral("ab"));
    attribute.apply(root, QString());
    QVERIFY(element.hasAttribute(stroke));
    QCOMPARE(element.attribute(stroke), QString());
}

void AdjustableAttributeTest::restoreBringsTheTemplatesValueBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isThereAgain");
    QTest::addColumn<QString>("value");

    QTest::newRow("present") << QStringLiteral("<svg><a fill='red'/></svg>") << true
                             << QStringLiteral("red");
    QTest::newRow("a space is a value")
            << QStringLiteral("<svg><a fill=' '/></svg>") << true << QStringLiteral(" ");
    QTest::newRow("empty is removed")
            << QStringLiteral("<svg><a fill=''/></svg>") << false << QString();
    QTest::newRow("absent is removed") << QStringLiteral("<svg><a/></svg>") << false << QString();
}

void AdjustableAttributeTest::restoreBringsTheTemplatesValueBack()
{
    QFETCH(QString, text);
    QFETCH(bool, isThereAgain);
    QFETCH(QString, value);
    const QDomDocument document = parsed(text);
    const QDomElement root = document.documentElement();
    const QDomElement element = root.firstChildElement();
    const QString fill = QStringLiteral("fill");
    AdjustableAttribute attribute(element, root, fill);
    const auto isRestored = [&] {
        attribute.restoreDefaultValue(root);
        return element.hasAttribute(fill) == isThereAgain && element.attribute(fill) == value;
    };
    QVERIFY(isRestored()); // not written yet
    attribute.apply(root, QStringLiteral("blue"));
    QCOMPARE(element.attribute(fill), QStringLiteral("blue"));
    QVERIFY(isRestored());
    QVERIFY(isRestored());
}

void AdjustableAttributeTest::restoreInATreeParsedAnew()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a fill='red'/></svg>"));
    const QDomElement root = document.documentElement();
    AdjustableAttribute attribute(root.lastChild(), root, QStringLiteral("fill"));
    const QDomDocument anew = parsed(QStringLiteral("<svg><a/><a fill='blue'/></svg>"));
    attribute.restoreDefaultValue(anew.documentElement());
    QCOMPARE(anew.documentElement().lastChildElement().attribute(QStringLiteral("fill")),
             QStringLiteral("red"));
}

void AdjustableAttributeTest::otherAttributesStay()
{
    const QDomDocument document =
            parsed(QStringLiteral("<svg fill='a'><a fill='b' stroke='c'/><a fill='d'/></svg>"));
    const QDomElement root = document.documentElement();
    const QDomElement element = root.firstChildElement();
    const QString fill = QStringLiteral("fill");
    AdjustableAttribute attribute(element, root, fill);
    attribute.apply(root, QStringLiteral("x"));
    attribute.restoreDefaultValue(root);
    QCOMPARE(root.attribute(fill), QStringLiteral("a"));
    QCOMPARE(element.attribute(fill), QStringLiteral("b"));
    QCOMPARE(element.attribute(QStringLiteral("stroke")), QStringLiteral("c"));
    QCOMPARE(root.lastChildElement().attribute(fill), QStringLiteral("d"));
}

void AdjustableAttributeTest::lostElementChangesNothing()
{
    const QDomDocument document = parsed(QStringLiteral("<svg><a/><a fill='red'/></svg>"));
    const QDomElement root = document.documentElement();
    AdjustableAttribute present(root.lastChild(), root, QStringLiteral("fill"));
    AdjustableAttribute absent(root.lastChild(), root, QStringLiteral("stroke"));
    const QDomDocument other = parsed(QStringLiteral("<svg><a/></svg>"));
    const QString before = other.toString();
    for (AdjustableAttribute *attribute : {&present, &absent}) {
        attribute->apply(other.documentElement(), QStringLiteral("blue"));
        attribute->restoreDefaultValue(other.documentElement());
        attribute->apply(QDomNode(), QStringLiteral("blue"));
        attribute->restoreDefaultValue(QDomNode());
    }
    QCOMPARE(other.toString(), before);
}

void AdjustableAttributeTest::nameThatIsNoXmlNameIsNeverWritten_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("space") << QStringLiteral("x y");
    QTest::newRow("markup") << QStringLiteral("a=\"1\" b");
    QTest::newRow("leading digit") << QStringLiteral("1x");
    QTest::newRow("two colons") << QStringLiteral("a:b:c");
}

void AdjustableAttributeTest::nameThatIsNoXmlNameIsNeverWritten()
{
    QFETCH(QString, name);
    const QDomDocument document = parsed(QStringLiteral("<svg><a/></svg>"));
    const QDomElement root = document.documentElement();
    AdjustableAttribute attribute(root.firstChild(), root, name);
    QCOMPARE(attribute.attributeName(), name);
    attribute.apply(root, QStringLiteral("red"));
    QVERIFY(!root.firstChildElement().hasAttributes());
    attribute.restoreDefaultValue(root);
    QVERIFY(!root.firstChildElement().hasAttributes());
}

QTEST_APPLESS_MAIN(AdjustableAttributeTest)

#include "tst_adjustableattribute.moc"
