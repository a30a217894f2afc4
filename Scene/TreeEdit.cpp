// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeEdit_p.h"

#include "XmlText_p.h"

bool hasVisibility(const QDomNode &node)
{
    return node.toElement().hasAttribute(QStringLiteral("visibility"));
}

bool isDefs(const QDomNode &node)
{
    return node.nodeName() == QLatin1String("defs");
}

bool isXmlDeclaration(const QDomNode &node)
{
    return node.isProcessingInstruction() && node.nodeName() == QLatin1String("xml");
}

std::optional<QString> usedId(const QDomElement &element)
{
    if (element.tagName() != QLatin1String("use"))
        return std::nullopt;
    const QString reference = element.attribute(QStringLiteral("xlink:href"));
    if (!reference.startsWith(QLatin1Char('#')))
        return std::nullopt;
    return reference.mid(1);
}

bool writeAttribute(QDomElement element, const QString &name, const QString &value)
{
    QDomAttr attribute = element.attributeNode(name);
    if (element.isNull() || (!attribute.isNull() && attribute.value() == value))
        return false;
    const QString text = withoutForbiddenCharacters(value);
    if (!isAttributeName(name) || (!attribute.isNull() && attribute.value() == text))
        return false;
    if (attribute.isNull())
        element.setAttribute(name, text);
    else
        attribute.setValue(text);
    return true;
}

bool eraseAttribute(QDomElement element, const QString &name)
{
    if (!element.hasAttribute(name))
        return false;
    element.removeAttribute(name);
    return true;
}

bool writeVisibility(const QDomElement &element, bool visible)
{
    return writeAttribute(element, QStringLiteral("visibility"),
                          visible ? QStringLiteral("visible") : QStringLiteral("hidden"));
}
