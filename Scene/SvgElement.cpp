// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgElement.h"

#include "TreeEdit_p.h"

#include <algorithm>
#include <utility>

SvgElement::SvgElement(const QDomNode &node, const QDomNode &root)
    : m_svgId(node.toElement().attribute(QStringLiteral("id")))
{
    calculateNodeLocation(node, root);
}

SvgElement::SvgElement(const QDomNode &node, std::vector<int> location, bool hasVisibilityAncestor,
                       bool isDefinition)
    : m_location(std::move(location)), m_svgId(node.toElement().attribute(QStringLiteral("id"))),
      m_hasVisibilityAncestor(hasVisibilityAncestor), m_isDefinition(isDefinition)
{
}

void SvgElement::calculateNodeLocation(const QDomNode &node, const QDomNode &root)
{
    m_location.clear();
    m_hasVisibilityAncestor = false;
    m_isDefinition = false;

    QDomNode current = node;
    int index = 0;
    while (!current.isNull() && current != root) {
        const QDomNode previous = current.previousSibling();
        if (!previous.isNull()) {
            current = previous;
            ++index;
            continue;
        }
        m_location.push_back(index);
        current = current.parentNode();
        m_hasVisibilityAncestor |= hasVisibility(current);
        m_isDefinition |= isDefs(current);
        index = 0;
    }
    std::reverse(m_location.begin(), m_location.end());
}

QDomNode SvgElement::findNode(const QDomNode &root) const
{
    QDomNode current = root;
    for (const int index : m_location) {
        current = current.firstChild();
        for (int i = 0; i < index && !current.isNull(); ++i)
            current = current.nextSibling();
    }
    return current;
}

void SvgElement::show(const QDomNode &root, bool visible) const
{
    if (!m_hasVisibilityAncestor)
        writeVisibility(findNode(root).toElement(), visible);
}

QString SvgElement::id() const
{
    QString text;
    for (const int index : m_location)
        text += QString::number(index);
    return text;
}

QString SvgElement::svgId() const
{
    return m_svgId;
}

bool SvgElement::isDefinition() const
{
    return m_isDefinition;
}

bool SvgElement::hasVisibilityAncestor() const
{
    return m_hasVisibilityAncestor;
}

const std::vector<int> &SvgElement::location() const
{
    return m_location;
}

void SvgElement::setAttribute(const QDomNode &root, const QString &name, const QString &value) const
{
    writeAttribute(findNode(root).toElement(), name, value);
}

void SvgElement::removeAttribute(const QDomNode &root, const QString &name)
{
    eraseAttribute(findNode(root).toElement(), name);
}
