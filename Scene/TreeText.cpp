// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeText_p.h"

#include "TreeEdit_p.h"

#include <QDomElement>
#include <QDomNamedNodeMap>

namespace {

/// What stands for a character in the value of an attribute; null for the character itself.
constexpr auto escapedInValue = [](QChar c) -> const char * {
    switch (c.unicode()) {
    case '<':
        return "&lt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#x9;";
    case '\n':
        return "&#xa;";
    case '\r':
        return "&#xd;";
    default:
        return nullptr;
    }
};

/// The same for text between tags.
constexpr auto escapedInText = [](QChar c) -> const char * {
    switch (c.unicode()) {
    case '<':
        return "&lt;";
    case '&':
        return "&amp;";
    case '\r':
        return "&#xd;";
    default:
        return nullptr;
    }
};

bool endsCharacterData(const QString &text, int i)
{
    return text.at(i) == QLatin1Char('>') && i >= 2 && text.at(i - 1) == QLatin1Char(']')
            && text.at(i - 2) == QLatin1Char(']');
}

template <typename Escaped>
void append(const QString &text, Escaped escaped, QString *to)
{
    int copied = 0;
    for (int i = 0; i < text.size(); ++i) {
        const char *replacement = escaped(text.at(i));
        if (!replacement && endsCharacterData(text, i))
            replacement = "&gt;";
        if (!replacement)
            continue;
        *to += text.midRef(copied, i - copied);
        *to += QLatin1String(replacement);
        copied = i + 1;
    }
    *to += text.midRef(copied);
}

class TreeWriter
{
public:
    explicit TreeWriter(int expectedSize) { m_text.reserve(expectedSize); }

    /// False when the tree has a node that this class can't write.
    bool write(const QDomDocument &tree)
    {
        m_text += QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        for (QDomNode node = firstAfterDeclaration(tree); !node.isNull();
             node = node.nextSibling()) {
            if (!writeTopNode(node))
                return false;
        }
        return true;
    }

    QByteArray text() const { return m_text.toUtf8(); }

private:
    static QDomNode firstAfterDeclaration(const QDomDocument &tree)
    {
        for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling()) {
            if (isXmlDeclaration(node))
                return node.nextSibling();
        }
        return tree.firstChild();
    }

    bool writeTopNode(QDomNode node)
    {
        int depth = 0;
        while (true) {
            if (!open(node, depth))
                return false;
            const QDomNode child = node.firstChild();
            if (!child.isNull()) {
                node = child;
                ++depth;
                continue;
            }
            while (depth > 0 && node.nextSibling().isNull()) {
                node = node.parentNode();
                --depth;
                close(node, depth);
            }
            if (depth == 0)
                return true;
            node = node.nextSibling();
        }
    }

    /// Writes what comes before the children, or all of a node without any.
    bool open(const QDomNode &node, int depth)
    {
        switch (node.nodeType()) {
        case QDomNode::ElementNode:
            indentUnlessAfterText(node, depth);
            writeStartTag(node);
            break;
        case QDomNode::TextNode:
            append(node.nodeValue(), escapedInText, &m_text);
            break;
        case QDomNode::CommentNode:
            indentUnlessAfterText(node, depth);
            writeComment(node);
            break;
        default:
            return false;
        }
        return true;
    }

    void close(const QDomNode &element, int depth)
    {
        if (!element.lastChild().isText())
            m_text += QString(depth, QLatin1Char(' '));
        m_text += QLatin1String("</");
        m_text += element.nodeName();
        m_text += QLatin1Char('>');
        breakUnlessBeforeText(element);
    }

    void writeStartTag(const QDomNode &element)
    {
        m_text += QLatin1Char('<');
        m_text += element.nodeName();
        appendAttributes(element, &m_text);
        const QDomNode child = element.firstChild();
        if (child.isNull()) {
            m_text += QLatin1String("/>");
            breakUnlessBeforeText(element);
        } else {
            m_text += QLatin1Char('>');
            if (!child.isText())
                m_text += QLatin1Char('\n');
        }
    }

    void writeComment(const QDomNode &comment)
    {
        m_text += QLatin1String("<!--");
        m_text += comment.nodeValue();
        if (comment.nodeValue().endsWith(QLatin1Char('-')))
            m_text += QLatin1Char(' ');
        m_text += QLatin1String("-->");
        breakUnlessBeforeText(comment);
    }

    void indentUnlessAfterText(const QDomNode &node, int depth)
    {
        if (!node.previousSibling().isText())
            m_text += QString(depth, QLatin1Char(' '));
    }

    void breakUnlessBeforeText(const QDomNode &node)
    {
        if (!node.nextSibling().isText())
            m_text += QLatin1Char('\n');
    }

    QString m_text;
};

} // namespace

void appendAttribute(const QDomNode &attribute, QString *text)
{
    *text += attribute.nodeName();
    *text += QLatin1String("=\"");
    append(attribute.nodeValue(), escapedInValue, text);
    *text += QLatin1Char('"');
}

void appendAttributes(const QDomNode &element, QString *text)
{
    const QDomNamedNodeMap attributes = element.attributes();
    const int count = attributes.length();
    for (int i = 0; i < count; ++i) {
        *text += QLatin1Char(' ');
        appendAttribute(attributes.item(i), text);
    }
}

QByteArray textOfTree(const QDomDocument &tree, int expectedSize)
{
    TreeWriter writer(expectedSize);
    return !tree.isNull() && writer.write(tree) ? writer.text() : QByteArray();
}
