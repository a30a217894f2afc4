// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "SvgDocument.h"

#include "AdmissionLimits_p.h"
#include "TreeText_p.h"
#include "TreeWalk_p.h"

#include <QDomNamedNodeMap>

#include <algorithm>
#include <array>
#include <vector>

// The companion document that draws the shapes of all clip paths.

namespace {

bool isKeptOnRoot(const QString &attributeName)
{
    static const std::array<QLatin1String, 7> kept{
            QLatin1String("xmlns:svg"), QLatin1String("xmlns"), QLatin1String("xmlns:xlink"),
            QLatin1String("version"),   QLatin1String("width"), QLatin1String("height"),
            QLatin1String("viewBox")};
    return std::find(kept.begin(), kept.end(), attributeName) != kept.end();
}

/// Removes while counting on, so that the attribute that moves up into a removed one's place stays.
void removeForeignAttributes(QDomElement root)
{
    const QDomNamedNodeMap attributes = root.attributes();
    const int count = attributes.length();
    for (int i = 0; i < count; ++i) {
        const QString name = attributes.item(i).nodeName();
        if (!name.isEmpty() && !isKeptOnRoot(name))
            root.removeAttribute(name);
    }
}

bool isClipPath(const QDomNode &node)
{
    return node.nodeName() == QLatin1String("clipPath");
}

/// At least that many characters of a text are the node without its children.
qint64 lengthOf(const QDomNode &node)
{
    qint64 length = node.nodeName().size() + node.nodeValue().size();
    const QDomNamedNodeMap attributes = node.attributes();
    const int count = attributes.length();
    for (int i = 0; i < count; ++i)
        length += attributes.item(i).nodeName().size() + attributes.item(i).nodeValue().size();
    return length;
}

/// Whether all that would have to be copied could be admitted: each node as often as there are clip
/// paths around it.
bool mayBeCopied(const QDomNode &root)
{
    qint64 copies = 0;
    qint64 length = 0;
    std::vector<std::size_t> open; // the depths of the clip paths around the current node
    for (TreeWalk walk(root); !walk.atEnd(); walk.next()) {
        while (!open.empty() && open.back() >= walk.depth())
            open.pop_back();
        copies += qint64(open.size());
        if (!open.empty())
            length += qint64(open.size()) * lengthOf(walk.node());
        if (isClipPath(walk.node()))
            open.push_back(walk.depth());
    }
    return copies <= AdmissionLimits::drawnElements.most
            && length <= AdmissionLimits::textSize.most;
}

void appendCopiesOfChildren(const QDomNode &source, QDomNode &target)
{
    for (QDomNode child = source.firstChild(); !child.isNull(); child = child.nextSibling())
        target.appendChild(child.cloneNode(true));
}

} // namespace

SvgDocument *SvgDocument::makeClippingDocument()
{
    if (!m_hasClipping)
        return nullptr;
    QDomDocument clipping(m_dom.doctype());
    QDomNode root = clipping.appendChild(m_dom.documentElement().cloneNode(false));
    removeForeignAttributes(root.toElement());

    // More than that would be refused, but only after it has filled the memory.
    if (mayBeCopied(m_dom.documentElement())) {
        std::vector<QDomNode> nodes;
        getAllNodes(m_dom.documentElement(), nodes);
        for (const QDomNode &node : nodes) {
            if (isClipPath(node))
                appendCopiesOfChildren(node, root);
        }
    }
    return new SvgDocument(stringOfTree(clipping));
}
