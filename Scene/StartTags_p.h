// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QDomElement>
#include <QDomNode>
#include <QString>

#include <vector>

/// Where the attributes of some elements of a tree stand in the text that saving the tree gave.
///
/// As long as nothing but attributes of these elements changes, a new text needs no new save: the
/// attributes that did change are written over the old ones, and everything between is copied.
/// The result is the text that a save would give, byte for byte.
class StartTags
{
public:
    /// \a elements are below \a root, each once, in document order. \a savedText is UTF-8.
    StartTags(const QByteArray &savedText, const QDomNode &root,
              const std::vector<QDomElement> &elements);

    /// Notes that an attribute of the element with this number has another value.
    void noteValueChange(int number, const QString &attributeName);
    /// Notes that attributes of the element with this number may have come, gone or changed.
    void noteChange(int number);
    bool hasChanges() const { return m_hasChanges; }

    /// The text that has the noted changes, too, made from the one before. It is the known one from
    /// then on, and valid until the next call.
    const QByteArray &rewritten(const QByteArray &text, const std::vector<QDomElement> &elements);

private:
    enum class Change { None, OneValue, Any };

    /// The part of a start tag after the name, without the end of the tag.
    struct Attributes
    {
        int begin;
        int end;
        Change change;
        QString changedName; ///< whose value has changed, if it is one
    };

    std::vector<Attributes> m_attributes; // by the number of the element
    bool m_hasChanges = false;
    QByteArray m_text; // what rewritten() has returned; its memory is used again
};
