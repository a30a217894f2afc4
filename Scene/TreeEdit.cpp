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

std::optional<QString> usedId(const QDomElement &element)
{
    const QString reference = element.attribute(QStringLiteral("xlink:href"));
    if (element.tagName() != QLatin1String("use") || !reference.startsWith(QLatin1Char('#')))
        return std::nullopt;
    return reference.mid(1);
}

bool writeAttribute(QDomElement element, const QString &name, const QString &value)
{
    if (element.isNull() || !isAttributeName(name))
        return false;
    const QString text = withoutForbiddenCharacters(value);
    if (element.hasAttribute(name) && element.attribute(name) == text)
        return false;
    element.setAttribute(name, text);
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
