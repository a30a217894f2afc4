// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeText_p.h"

#include "TreeEdit_p.h"

#include <QDomElement>
#include <QDomNamedNodeMap>
#include <QRegularExpression>
#include <QSet>
#include <QTextCodec>
#include <QTextStream>

namespace {

/// What stands for a character wherever it is written; null for the character itself.
const char *escapedAnywhere(QChar c)
{
    switch (c.unicode()) {
    case '<':
        return "&lt;";
    case '&':
        return "&amp;";
    default:
        return nullptr;
    }
}

/// The same between quotes.
constexpr auto escapedInQuotes = [](QChar c) {
    return c == QLatin1Char('"') ? "&quot;" : escapedAnywhere(c);
};

/// The same in the value of an attribute.
constexpr auto escapedInValue = [](QChar c) {
    switch (c.unicode()) {
    case '\t':
        return "&#x9;";
    case '\n':
        return "&#xa;";
    case '\r':
        return "&#xd;";
    default:
        return escapedInQuotes(c);
    }
};

/// The same for text between tags.
constexpr auto escapedInText = [](QChar c) {
    return c == QLatin1Char('\r') ? "&#xd;" : escapedAnywhere(c);
};

/// The same for text beside the root element, where only a program can have put it.
constexpr auto escapedBesideRoot = [](QChar c) {
    return c == QLatin1Char('"') ? "&quot;" : escapedInText(c);
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

void appendNamespace(const QString &name, const QString &escapedUri, QString *text)
{
    *text += QLatin1String(" xmlns");
    *text += name;
    *text += QLatin1String("=\"");
    *text += escapedUri;
    *text += QLatin1Char('"');
}

/// A prefix without a namespace, which only programs can bring about, is dropped.
QString writtenName(const QDomNode &node)
{
    const bool hasPrefix = !node.prefix().isEmpty();
    return hasPrefix && node.namespaceURI().isNull() ? node.localName() : node.nodeName();
}

template <typename Escaped>
QString escapedText(const QString &text, Escaped escaped)
{
    QString result;
    append(text, escaped, &result);
    return result;
}

/// Writes what costs Qt more than it must, and has Qt write the nodes that it copies as they are.
class TreeWriter
{
public:
    explicit TreeWriter(int expectedSize) : m_stream(&m_text)
    {
        m_stream.setCodec("UTF-8");
        m_text.reserve(expectedSize);
    }

    void writeWithDeclaration(const QDomDocument &tree)
    {
        m_text += QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        for (QDomNode node = firstAfterDeclaration(tree); !node.isNull(); node = node.nextSibling())
            writeTopNode(node);
    }

    void writeAsDeclared(const QDomDocument &tree)
    {
        bool isTypeWritten = false;
        for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling()) {
            if (!isTypeWritten && !isXmlDeclaration(node)) {
                tree.doctype().save(m_stream, 1);
                isTypeWritten = true;
            }
            writeTopNode(node);
        }
    }

    const QString &text() const { return m_text; }

private:
    static QDomNode firstAfterDeclaration(const QDomDocument &tree)
    {
        for (QDomNode node = tree.firstChild(); !node.isNull(); node = node.nextSibling()) {
            if (isXmlDeclaration(node))
                return node.nextSibling();
        }
        return tree.firstChild();
    }

    void writeTopNode(QDomNode node)
    {
        int depth = 0;
        while (true) {
            open(node, depth);
            if (node.isElement() && node.hasChildNodes()) {
                node = node.firstChild();
                ++depth;
                continue;
            }
            while (depth > 0 && node.nextSibling().isNull()) {
                node = node.parentNode();
                --depth;
                close(node, depth);
            }
            if (depth == 0)
                return;
            node = node.nextSibling();
        }
    }

    /// Writes what comes before the children, or all of a node without any.
    void open(const QDomNode &node, int depth)
    {
        switch (node.nodeType()) {
        case QDomNode::ElementNode:
            indentUnlessAfterText(node, depth);
            writeStartTag(node);
            break;
        case QDomNode::TextNode:
            if (depth > 0)
                append(node.nodeValue(), escapedInText, &m_text);
            else
                append(node.nodeValue(), escapedBesideRoot, &m_text);
            break;
        case QDomNode::CommentNode:
            indentUnlessAfterText(node, depth);
            writeComment(node);
            break;
        default:
            node.save(m_stream, 1);
            break;
        }
    }

    void close(const QDomNode &element, int depth)
    {
        if (!element.lastChild().isText())
            m_text += QString(depth, QLatin1Char(' '));
        m_text += QLatin1String("</");
        m_text += writtenName(element);
        m_text += QLatin1Char('>');
        breakUnlessBeforeText(element);
    }

    void writeStartTag(const QDomNode &element)
    {
        m_text += QLatin1Char('<');
        m_text += writtenName(element);
        if (!element.namespaceURI().isNull())
            appendNamespace(withColon(element.prefix()),
                            escapedText(element.namespaceURI(), escapedInQuotes), &m_text);
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

    static QString withColon(const QString &prefix)
    {
        return prefix.isEmpty() ? QString() : QLatin1Char(':') + prefix;
    }

    QString m_text;
    QTextStream m_stream; ///< over the text, which it writes to at once
};

/// Whether the declaration asks for another encoding, which a text that is parsed never does.
bool declaresOtherEncoding(const QDomDocument &tree)
{
    const QDomNode first = tree.firstChild();
    if (!isXmlDeclaration(first))
        return false;
    static const QRegularExpression encoding(
            QStringLiteral("encoding\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)')"));
    const QRegularExpressionMatch match = encoding.match(first.nodeValue());
    const QString name = match.captured(match.lastCapturedIndex());
    const QTextCodec *codec = QTextCodec::codecForName(name.toLatin1());
    return codec && codec->name() != "UTF-8";
}

QByteArray savedByQt(const QDomDocument &tree)
{
    QByteArray text;
    QTextStream stream(&text);
    tree.save(stream, 1, QDomNode::EncodingFromDocument);
    stream.flush();
    return text;
}

} // namespace

void appendAttribute(const QDomNode &attribute, QString *text)
{
    if (!attribute.namespaceURI().isNull() && attribute.prefix().isEmpty())
        *text += QLatin1Char(':');
    *text += writtenName(attribute);
    *text += QLatin1String("=\"");
    append(attribute.nodeValue(), escapedInValue, text);
    *text += QLatin1Char('"');
}

void appendAttributes(const QDomNode &element, QString *text)
{
    const QDomNamedNodeMap attributes = element.attributes();
    const int count = attributes.length();
    QSet<QString> declared;
    for (int i = 0; i < count; ++i) {
        const QDomNode attribute = attributes.item(i);
        *text += QLatin1Char(' ');
        appendAttribute(attribute, text);
        const QString uri = attribute.namespaceURI();
        if (uri.isNull() || attribute.prefix() == element.prefix()
            || declared.contains(attribute.prefix()))
            continue;
        declared.insert(attribute.prefix());
        appendNamespace(QLatin1Char(':') + attribute.prefix(), escapedText(uri, escapedInValue),
                        text);
    }
}

QByteArray textOfTree(const QDomDocument &tree, QDomNode::EncodingPolicy policy, int expectedSize)
{
    if (tree.isNull())
        return {};
    if (policy == QDomNode::EncodingFromDocument && declaresOtherEncoding(tree))
        return savedByQt(tree);
    TreeWriter writer(expectedSize);
    if (policy == QDomNode::EncodingFromDocument)
        writer.writeAsDeclared(tree);
    else
        writer.writeWithDeclaration(tree);
    return writer.text().toUtf8();
}

QString stringOfTree(const QDomDocument &tree)
{
    TreeWriter writer(0);
    if (!tree.isNull())
        writer.writeAsDeclared(tree);
    return writer.text();
}
