// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QRandomGenerator>

// Texts that are all about where markup ends.

/// All texts of up to that many letters of what comments are made of.
inline QByteArrayList shortTexts(int longest)
{
    QByteArrayList texts{QByteArray()};
    for (int first = 0, length = 0; length < longest; ++length) {
        const int end = texts.size();
        for (; first < end; ++first) {
            for (const char c : {'<', '!', '-', '>', 'a'})
                texts += texts.at(first) + c;
        }
    }
    return texts;
}

/// Makes XML out of pieces that look as if markup began or ended with them. The most of it is
/// well-formed.
class RandomMarkup
{
public:
    explicit RandomMarkup(quint32 seed) : m_random(seed) {}

    /// A document with elements of that name inside each other.
    QByteArray document(const QByteArray &name = QByteArrayLiteral("svg"))
    {
        QByteArray text = oneIn(3) ? documentType(name) : QByteArray();
        return text + misc() + "<" + name + attributes() + ">" + content(3) + "</" + name + ">"
                + misc();
    }

    /// The same with some bytes changed.
    QByteArray brokenDocument()
    {
        QByteArray text = document();
        for (int changes = m_random.bounded(1, 4); changes > 0; --changes) {
            const int at = m_random.bounded(text.size());
            if (oneIn(4))
                text.insert(at, forbidden());
            else if (oneIn(2))
                text.insert(at, piece());
            else
                text.replace(at, m_random.bounded(4), oneIn(2) ? piece() : QByteArray());
        }
        return text;
    }

    /// Declarations in any order, and what stands between them.
    QByteArray declarations()
    {
        static const QByteArrayList all{"<!ENTITY e \"v\">",
                                        "<!ENTITY f '\">'>",
                                        "<!ENTITY g \"]>'<!--\">",
                                        "<!ENTITY h SYSTEM \"<!ATTLIST\">",
                                        "<!ENTITY i PUBLIC 'a' \"'>\" NDATA n>",
                                        "<!ENTITY % j \"%\">",
                                        "<!ATTLIST h a CDATA \"v\">",
                                        "<!NOTATION n SYSTEM 'n'>",
                                        "%j;",
                                        " ",
                                        "\n"};
        QByteArray text;
        for (int count = m_random.bounded(6); count > 0; --count) {
            switch (m_random.bounded(8)) {
            case 0:
                text += piece();
                break;
            case 1:
            case 2:
                text += comment();
                break;
            case 3:
                text += instruction();
                break;
            default:
                text += all.at(m_random.bounded(all.size()));
            }
        }
        return text;
    }

    /// Markup without elements.
    QByteArray misc()
    {
        QByteArray text;
        for (int count = m_random.bounded(3); count > 0; --count)
            text += oneIn(2) ? comment() : instruction();
        return text;
    }

    /// Of the right kind, so that it is well-formed.
    QByteArray comment()
    {
        const QByteArray text = piecesWithout("--");
        return "<!--" + (text.endsWith('-') ? text.chopped(1) : text) + "-->";
    }

    QByteArray instruction()
    {
        return oneIn(4) ? QByteArray("<?x?>") : "<?x " + piecesWithout("?>") + " ?>";
    }

    QByteArray characterData() { return "<![CDATA[" + piecesWithout("]]>") + "]]>"; }

    QByteArray attributes()
    {
        QByteArray text;
        for (int count = m_random.bounded(3); count > 0; --count) {
            const char quote = oneIn(2) ? '"' : '\'';
            QByteArray value = pieces();
            for (const char forbidden : {'<', '&', quote})
                value.replace(forbidden, "");
            text += (oneIn(4) ? "\n" : " ") + QByteArray(1, char('a' + count))
                    + (oneIn(4) ? " = " : "=") + quote + value + quote;
        }
        return text;
    }

    bool oneIn(int count) { return m_random.bounded(count) == 0; }

private:
    /// Characters that no XML has, or that are not written so.
    QByteArray forbidden()
    {
        static const QByteArrayList all{QByteArray(1, '\0'), "\x01", "\xef\xbf\xbf", "\xc3",
                                        "\xed\xa0\x80",      "\r",   "\xef\xbb\xbf"};
        return all.at(m_random.bounded(all.size()));
    }

    QByteArray piece()
    {
        static const QByteArrayList all{"<",   ">",   "!",    "-",   "?",         "[",   "]",
                                        "'",   "\"",  "/",    "=",   "a",         " ",   "%",
                                        "--",  "-->", "<!--", "]]>", "<![CDATA[", "?>",  "<?",
                                        "]>",  "<!",  "->",   "/>",  "</g>",      "<g>", "<!-->",
                                        "\n",  "<?>", "e;",   "&#",  "&amp;",     "ж",   "<!--->",
                                        "%e;", "\t",  "<g/>", "-!>", "<g a=\"",   "😀<"};
        return all.at(m_random.bounded(all.size()));
    }

    QByteArray pieces()
    {
        QByteArray text;
        for (int count = m_random.bounded(6); count > 0; --count)
            text += piece();
        return text;
    }

    QByteArray piecesWithout(const char *end)
    {
        QByteArray text = pieces();
        while (text.contains(end))
            text.replace(end, "");
        return text;
    }

    QByteArray documentType(const QByteArray &name)
    {
        static const QByteArrayList ids{"", " SYSTEM 'a[b]>\"'", " PUBLIC '-//]>' \"[']>\""};
        const QByteArray subset = oneIn(4) ? QByteArray() : " [" + declarations() + "]";
        return "<!DOCTYPE " + name + ids.at(m_random.bounded(ids.size())) + subset
                + (oneIn(3) ? " >" : ">");
    }

    QByteArray content(int depth)
    {
        QByteArray text;
        for (int count = m_random.bounded(5); count > 0; --count) {
            switch (m_random.bounded(6)) {
            case 0:
                text += comment();
                break;
            case 1:
                text += instruction();
                break;
            case 2:
                text += characterData();
                break;
            case 3:
                text += oneIn(2) ? "ж'\">" : "&lt;";
                break;
            default:
                text += "<g" + attributes();
                text += depth == 0 || oneIn(2) ? "/>" : ">" + content(depth - 1) + "</g\n>";
            }
        }
        return text;
    }

    QRandomGenerator m_random;
};
