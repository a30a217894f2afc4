// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/TitleSceneExport.h>

#include <QDomElement>
#include <QDomNode>
#include <QString>

#include <vector>

/// An element of a title's document tree, remembered by its place.
///
/// A QDomNode does not outlive its tree, and a title's tree is parsed again several times. An
/// SvgElement remembers the child indices that lead from the root down to the element instead, so
/// it finds "the same" element in every later tree of the same shape. It owns no node and holds on
/// to no tree; it is a plain value.
///
/// An element that can't be found is skipped silently: the tree stays as it is.
///
/// \ingroup documents
class TITLESCENE_EXPORT SvgElement
{
public:
    /// Remembers the place of \a node below \a root, and its "id" attribute. \a root is normally
    /// the document element.
    SvgElement(const QDomNode &node, const QDomNode &root);

    /// Replaces the place by that of \a node below \a root. Takes time proportional to the number
    /// of preceding siblings of the node and of its ancestors.
    void calculateNodeLocation(const QDomNode &node, const QDomNode &root);

    /// The node at this place below \a root; a null node when the tree has no such place.
    QDomNode findNode(const QDomNode &root) const;

    /// Sets the "visibility" attribute of the element to "visible" or "hidden". An element with an
    /// ancestor that has a "visibility" attribute of its own is left alone.
    void show(const QDomNode &root, bool visible) const;

    /// The child indices written one after the other without separator, root side first. Two
    /// places can share a text: (1, 1) and (11) both give "11".
    QString id() const;

    /// The element's "id" attribute at the time of construction; empty when it had none.
    QString svgId() const;

    /// True when an ancestor of the element is a "defs" element.
    bool isDefinition() const;

    /// True when an ancestor of the element, the root included, has a "visibility" attribute.
    bool hasVisibilityAncestor() const;

    /// The child indices from the root down to the element. Every node counts: elements, text,
    /// comments.
    const std::vector<int> &location() const;

    /// Sets an attribute of the element. A \a name that is no XML name is not written; characters
    /// that XML forbids are left out of \a value.
    void setAttribute(const QDomNode &root, const QString &name, const QString &value) const;

    /// Removes an attribute of the element.
    void removeAttribute(const QDomNode &root, const QString &name);

private:
    friend class TreeWalk;

    SvgElement(const QDomNode &node, std::vector<int> location, bool hasVisibilityAncestor,
               bool isDefinition);

    std::vector<int> m_location;
    QString m_svgId;
    bool m_hasVisibilityAncestor = false;
    bool m_isDefinition = false;
};
