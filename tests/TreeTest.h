// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "WarningFreeTest.h"

#include <QDomDocument>
#include <QTextStream>

/// The tree of a text.
inline QDomDocument parsed(const QString &text)
{
    QDomDocument document;
    document.setContent(text);
    return document;
}

/// The text that a document saves for a frame.
inline QByteArray saved(const QDomDocument &tree)
{
    QByteArray text;
    {
        QTextStream stream(&text);
        stream.setCodec("UTF-8");
        tree.save(stream, 1, QDomNode::EncodingFromTextStream);
    }
    return text;
}

/// What a tree holds, whatever the order of its attributes.
inline QString contentOf(const QDomNode &node)
{
    QStringList parts{node.nodeName(), node.nodeValue()};
    QStringList attributes;
    const QDomNamedNodeMap map = node.attributes();
    for (int i = 0; i < map.length(); ++i)
        attributes += map.item(i).nodeName() + QLatin1Char('=') + map.item(i).nodeValue();
    attributes.sort();
    parts += attributes;
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling())
        parts += contentOf(child);
    return QLatin1Char('(') + parts.join(QLatin1Char('|')) + QLatin1Char(')');
}
