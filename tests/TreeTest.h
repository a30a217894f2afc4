// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "WarningFreeTest.h"

#include <QDomDocument>
#include <QRandomGenerator>
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

/// The text of a small tree of all kinds of nodes.
inline QString randomTreeText(QRandomGenerator &random)
{
    const char *const pieces[] = {"<a>",    "<b c='&lt;'>", "</>",     "</>",          "x",
                                  " ",      "\n",           "&amp;",   "<d/>",         "<!--e-->",
                                  "]]&gt;", "&#13;",        "<?f g?>", "<![CDATA[h]]>"};
    QString text = QStringLiteral("<svg>");
    QStringList open{QStringLiteral("</svg>")};
    const int count = random.bounded(12);
    for (int k = 0; k < count; ++k) {
        // The last pieces are rarer, since no tree with them survives.
        const int last = random.bounded(4) == 0 ? 14 : 11;
        const QString piece = QString::fromLatin1(pieces[random.bounded(last)]);
        if (piece == QLatin1String("</>")) {
            if (open.size() > 1)
                text += open.takeLast();
            continue;
        }
        if (piece == QLatin1String("<a>") || piece.startsWith(QLatin1String("<b")))
            open.append(QStringLiteral("</%1>").arg(piece.at(1)));
        text += piece;
    }
    while (!open.isEmpty())
        text += open.takeLast();
    return text;
}
