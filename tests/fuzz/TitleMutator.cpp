// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleMutator.h"

#include <Scene/MarkupScanner_p.h>

#include <array>

namespace {

using Words = std::initializer_list<const char *>;

const Words elements = {
        "<animate attributeName=\"%a\" begin=\"%t\" dur=\"%t\" values=\"%v;%v\" fill=\"freeze\"/>",
        "<animate id=\"%i\" attributeName=\"%a\" begin=\"%t\" dur=\"%t\" from=\"%v\" to=\"%v\"/>",
        "<animateTransform attributeName=\"transform\" type=\"rotate\" begin=\"%t\" dur=\"%t\" "
        "from=\"%n\" to=\"%n\" repeatCount=\"%n\"/>",
        "<animateTransform id=\"%i\" attributeName=\"transform\" type=\"scale\" begin=\"%t\" "
        "dur=\"%t\" values=\"%n %n;%n\" fill=\"freeze\"/>",
        "<animateColor attributeName=\"fill\" begin=\"%t\" dur=\"%t\" from=\"red\" to=\"#00f\"/>",
        "<animateMotion id=\"CONCLUSION\" begin=\"%t\" dur=\"%t\"/>",
        "<set attributeName=\"%a\" to=\"%v\"/>",
        "<use id=\"%i\" xlink:href=\"#%i\" x=\"%n\"/>",
        "<defs><g id=\"%i\" visibility=\"hidden\"><rect width=\"9\" height=\"9\"/></g></defs>",
        "<defs><linearGradient id=\"%i\" xlink:href=\"#%i\"><stop offset=\"%n\" "
        "stop-color=\"red\"/></linearGradient></defs>",
        "<radialGradient id=\"%i\" r=\"%n\" fx=\"%n\"><stop offset=\"0\"/></radialGradient>",
        "<clipPath id=\"%i\"><rect width=\"%n\" height=\"%n\"/></clipPath>",
        "<g clip-path=\"url(#%i)\" opacity=\"%n\"><circle r=\"%n\"/></g>",
        "<rect id=\"%i\" x=\"%n\" width=\"%n\" height=\"%n\" rx=\"%n\" fill=\"url(#%i)\"/>",
        "<path d=\"M0 0L%n %nC%n %n 3 4 5 6A%n %n 0 0 1 %n 9z\" stroke=\"red\" "
        "stroke-dasharray=\"%n,%n\"/>",
        "<polygon points=\"%n,%n 9,9 %n,20\" stroke=\"#123\" stroke-width=\"%n\"/>",
        "<text x=\"%n\" y=\"20\" font-size=\"%n\">a<tspan fill=\"red\">b</tspan>c</text>",
        "<textArea width=\"%n\" height=\"%n\">a b<tbreak/>c</textArea>",
        "<image width=\"%n\" height=\"%n\" xlink:href=\"%v\"/>",
        "<svg viewBox=\"0 0 %n %n\"><rect width=\"9\" height=\"9\"/></svg>",
        "<switch><g systemLanguage=\"en\"/><g/></switch>",
        "<style type=\"text/css\">rect { fill: %v; stroke-width: %n } #%i { opacity: %n }</style>",
        "<solidColor id=\"%i\" solid-color=\"%v\"/>",
        "<font><font-face font-family=\"f\" units-per-em=\"%n\"/><glyph unicode=\"a\" d=\"M0 0h9\" "
        "horiz-adv-x=\"%n\"/></font>",
        "<!-- a --><?b c?><![CDATA[ d ]]>",
        "&lt;&amp;&#65;",
};

const Words elementNames = {"g",
                            "defs",
                            "clipPath",
                            "use",
                            "rect",
                            "circle",
                            "ellipse",
                            "line",
                            "polyline",
                            "polygon",
                            "path",
                            "text",
                            "tspan",
                            "image",
                            "animate",
                            "set",
                            "svg",
                            "style",
                            "stop",
                            "switch",
                            "video",
                            "desc",
                            "textArea",
                            "linearGradient",
                            "animateTransform",
                            "animateColor",
                            "animateMotion"};

const Words wrappers = {"g", "defs", "clipPath", "a", "switch", "svg", "text", "linearGradient"};

const Words attributeNames = {"id",
                              "x",
                              "y",
                              "width",
                              "height",
                              "r",
                              "cx",
                              "rx",
                              "fill",
                              "stroke",
                              "stroke-width",
                              "opacity",
                              "transform",
                              "visibility",
                              "display",
                              "xlink:href",
                              "d",
                              "points",
                              "font-size",
                              "font-family",
                              "class",
                              "style",
                              "clip-path",
                              "viewBox",
                              "stop-color",
                              "offset",
                              "gradientTransform",
                              "gradientUnits",
                              "stroke-dasharray",
                              "stroke-dashoffset",
                              "stroke-linejoin",
                              "attributeName",
                              "begin",
                              "dur",
                              "end",
                              "from",
                              "to",
                              "values",
                              "by",
                              "calcMode",
                              "repeatCount",
                              "additive",
                              "type",
                              "fill-opacity",
                              "fill-rule",
                              "xml:space",
                              "text-anchor",
                              "comp-op",
                              "x y"};

const Words values = {"",
                      "none",
                      "inherit",
                      "currentColor",
                      "red",
                      "#00ff00",
                      "#123",
                      "transparent",
                      "rgba(255, 0, 10, 1)",
                      "rgb(1%,2%,3%)",
                      "visible",
                      "hidden",
                      "inline",
                      "freeze",
                      "remove",
                      "discrete",
                      "linear",
                      "paced",
                      "indefinite",
                      "replace",
                      "sum",
                      "rotate",
                      "scale",
                      "skewX",
                      "translate(%n, %n)",
                      "rotate(%n %n %n)",
                      "matrix(%n %n %n %n %n %n)",
                      "scale(%n)",
                      "%n,%n %n,%n",
                      "%n;%n;%n",
                      "%v;%v",
                      "#%i",
                      "url(#%i)",
                      "0 0 %n %n",
                      "M%n %nL%n %nz",
                      "M0 0a%n %n %n 1 0 %n %n",
                      "%npx",
                      "%n%",
                      "%nem",
                      "%nmm",
                      "1e3",
                      "10-5",
                      "--5",
                      "1.2.3",
                      "a b",
                      "&lt;&amp;&quot;",
                      "&#x1F600;Жизнь",
                      "evenodd",
                      "objectBoundingBox",
                      "preserve",
                      "clear",
                      "xor",
                      "dst-out",
                      "CONCLUSION",
                      "data:image/png;base64,iVBORw0KGgo=",
                      "file:///dev/zero",
                      "fill:%v;stroke:%v;stroke-width:%n",
                      "font-size:%n;font-family:Sans"};

const Words numbers = {"0",          "1",
                       "-1",         "2",
                       "0.5",        "-0.001",
                       "10",         "100",
                       "1000",       "65536",
                       "1e7",        "10000001",
                       "2147483647", "-2147483648",
                       "2147483648", "1e20",
                       "-1e38",      "1e308",
                       "4e-324",     "nan",
                       "inf",        "",
                       "1.",         ".5",
                       "0000000001", "99999999999999999999"};

const Words timeValues = {
        "0",          "1s",           "0.5s",         "250ms",         "-1ms",
        "-2s",        "2147483647ms", "2147483.648s", "-2147483648ms", "86400000ms",
        "indefinite", "1e300s",       "nan",          "00:05",         "5min",
        "1ms",        "0.0004s",      "click",        "2147483647"};

QByteArray oneOf(const Words &words, QRandomGenerator &random)
{
    return *(words.begin() + random.bounded(int(words.size())));
}

QVector<QByteArray> idsOf(const QByteArray &text)
{
    static const QRegularExpression id(QStringLiteral("\\sid\\s*=\\s*[\"']([^\"'<>&]{1,40})[\"']"));
    QVector<QByteArray> ids;
    QRegularExpressionMatchIterator matches = id.globalMatch(QString::fromUtf8(text));
    while (matches.hasNext() && ids.size() < 200)
        ids.append(matches.next().captured(1).toUtf8());
    return ids;
}

const QRegularExpression &attributePattern()
{
    static const QRegularExpression pattern(
            QStringLiteral("\\s+[^\\s=\"'<>/]+\\s*=\\s*(?:\"[^\"]*\"|'[^']*')"));
    return pattern;
}

QByteArray attributeName(const QByteArray &attribute)
{
    return attribute.left(attribute.indexOf('=')).trimmed();
}

int nameEnd(const QByteArray &tag)
{
    static const QByteArray ends(" \t\r\n/>");
    int end = 1;
    while (end < tag.size() && !ends.contains(tag.at(end)))
        ++end;
    return end;
}

} // namespace

TitleMutator::Tokens TitleMutator::tokens(const QByteArray &text)
{
    Tokens result;
    int at = 0;
    const auto appendOther = [&](int end) {
        if (end > at)
            result.append({Token::Other, text.mid(at, end - at)});
    };
    MarkupScanner markup(view(text));
    while (markup.next()) {
        appendOther(markup.begin());
        at = markup.end();
        const QByteArray piece = text.mid(markup.begin(), at - markup.begin());
        Token::Kind kind = Token::Other;
        if (markup.kind() == MarkupScanner::Kind::EndTag)
            kind = Token::Close;
        else if (markup.kind() == MarkupScanner::Kind::StartTag)
            kind = piece.endsWith("/>") ? Token::Empty : Token::Open;
        result.append({kind, piece});
    }
    appendOther(text.size());
    return result;
}

QByteArray TitleMutator::joined(const Tokens &tokens)
{
    QByteArray text;
    for (const Token &token : tokens)
        text += token.text;
    return text;
}

/// From a start tag to its end tag, or to the end of the text.
TitleMutator::Range TitleMutator::element(const Tokens &tokens, int start)
{
    int depth = 0;
    for (int i = start; i < tokens.size(); ++i) {
        if (tokens.at(i).kind == Token::Open)
            ++depth;
        else if (tokens.at(i).kind == Token::Close)
            --depth;
        if (depth <= 0)
            return {start, i};
    }
    return {start, tokens.size() - 1};
}

/// All start tags, the root's first.
QVector<int> TitleMutator::tags(const Tokens &tokens)
{
    QVector<int> found;
    for (int i = 0; i < tokens.size(); ++i) {
        if (tokens.at(i).kind == Token::Open || tokens.at(i).kind == Token::Empty)
            found.append(i);
    }
    return found;
}

/// -1 when there is none.
int TitleMutator::anyTag(const Tokens &tokens)
{
    const QVector<int> all = tags(tokens);
    return all.isEmpty() ? -1 : all.at(below(all.size()));
}

/// As anyTag(), but never the root.
int TitleMutator::anyElement(const Tokens &tokens)
{
    const QVector<int> all = tags(tokens);
    return all.size() < 2 ? -1 : all.at(1 + below(all.size() - 1));
}

QByteArray TitleMutator::number()
{
    return below(3) == 0 ? oneOf(numbers, m_random)
                         : QByteArray::number(m_random.bounded(200.0) - 50.0, 'f', below(3));
}

QByteArray TitleMutator::time()
{
    switch (below(3)) {
    case 0:
        return oneOf(timeValues, m_random);
    case 1:
        return QByteArray::number(below(3000)) + "ms";
    default:
        return filled("%i") + (below(2) ? ".begin" : ".end")
                + (below(2) ? QByteArray() : (below(2) ? "+" : "-") + oneOf(timeValues, m_random));
    }
}

/// The text with everything filled in: %i an id, %n a number, %t a time, %a the name of an
/// attribute, %v any value.
QByteArray TitleMutator::filled(const QByteArray &text)
{
    QByteArray result;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != '%' || i + 1 == text.size()) {
            result += text.at(i);
            continue;
        }
        switch (text.at(++i)) {
        case 'i':
            result += m_ids.isEmpty() || below(8) == 0 ? QByteArray(1, char('a' + below(4)))
                                                       : m_ids.at(below(m_ids.size()));
            break;
        case 'n':
            result += number();
            break;
        case 't':
            result += time();
            break;
        case 'a':
            result += oneOf(attributeNames, m_random);
            break;
        case 'v':
            result += value(QByteArray());
            break;
        default:
            result += text.mid(i - 1, 2);
        }
    }
    return result;
}

/// A value for an attribute: one of its kind, mostly.
QByteArray TitleMutator::value(const QByteArray &attribute)
{
    if (below(4) != 0) {
        if (attribute == "begin" || attribute == "dur" || attribute == "end")
            return time();
        if (attribute == "id")
            return filled("%i");
        if (attribute.endsWith("href"))
            return filled("#%i");
        if (attribute == "attributeName")
            return oneOf(attributeNames, m_random);
    }
    return below(3) == 0 ? number() : filled(oneOf(values, m_random));
}

QByteArray TitleMutator::newElement()
{
    return filled(oneOf(elements, m_random));
}

QByteArray TitleMutator::times()
{
    static const Words extremes = {"-2147483648", "2147483647", "-1",
                                   "0",           "86400000",   "2147483000"};
    QByteArray text;
    for (int count = 1 + below(4); count > 0; --count)
        text += (below(3) == 0 ? oneOf(extremes, m_random) : QByteArray::number(below(8000))) + ' ';
    return text;
}

/// After a start tag or an element, so that elements stay nested.
void TitleMutator::insertInto(Tokens &tokens, const Tokens &piece)
{
    const int tag = anyTag(tokens);
    if (tag < 0)
        return;
    int at = tag;
    if (tokens.at(tag).kind == Token::Empty) {
        QByteArray &text = tokens[tag].text;
        const QByteArray name = text.mid(1, nameEnd(text) - 1);
        text.replace(text.size() - 2, 2, ">");
        tokens[tag].kind = Token::Open;
        tokens.insert(tag + 1, {Token::Close, "</" + name + '>'});
    }
    for (const Token &token : piece)
        tokens.insert(++at, token);
}

void TitleMutator::removeElement(Tokens &tokens)
{
    const int start = anyElement(tokens);
    if (start < 0)
        return;
    const Range range = element(tokens, start);
    tokens.remove(range.first, range.last - range.first + 1);
}

void TitleMutator::moveElement(Tokens &tokens)
{
    const int start = anyElement(tokens);
    if (start < 0)
        return;
    const Range range = element(tokens, start);
    const Tokens piece = tokens.mid(range.first, range.last - range.first + 1);
    tokens.remove(range.first, piece.size());
    insertInto(tokens, piece);
}

void TitleMutator::duplicateElement(Tokens &tokens)
{
    const int start = anyElement(tokens);
    if (start < 0)
        return;
    const Range range = element(tokens, start);
    insertInto(tokens, tokens.mid(range.first, range.last - range.first + 1));
}

void TitleMutator::wrapElement(Tokens &tokens)
{
    const int start = anyElement(tokens);
    if (start < 0)
        return;
    const Range range = element(tokens, start);
    const QByteArray name = oneOf(wrappers, m_random);
    tokens.insert(range.last + 1, {Token::Close, "</" + name + '>'});
    tokens.insert(range.first, {Token::Open, '<' + name + filled(" id=\"%i\">")});
}

void TitleMutator::insertElement(Tokens &tokens)
{
    insertInto(tokens, {{Token::Other, newElement()}});
}

void TitleMutator::renameElement(Tokens &tokens)
{
    const int start = anyElement(tokens);
    if (start < 0)
        return;
    const QByteArray name = oneOf(elementNames, m_random);
    const Range range = element(tokens, start);
    QByteArray &open = tokens[range.first].text;
    open.replace(1, nameEnd(open) - 1, name);
    if (tokens.at(range.last).kind == Token::Close)
        tokens[range.last].text = "</" + name + '>';
}

/// A match of the pattern's last group in any tag. Latin-1 keeps the bytes of the tag apart.
TitleMutator::Match TitleMutator::anyMatch(const Tokens &tokens, const QRegularExpression &pattern)
{
    const int tag = anyTag(tokens);
    if (tag < 0)
        return {};
    QVector<Match> found;
    auto matches = pattern.globalMatch(QString::fromLatin1(tokens.at(tag).text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const int group = match.lastCapturedIndex();
        found.append({tag, match.capturedStart(group), match.capturedLength(group)});
    }
    return found.isEmpty() ? Match() : found.at(below(found.size()));
}

void TitleMutator::changeValue(Tokens &tokens)
{
    const Match match = anyMatch(tokens, attributePattern());
    if (match.tag < 0)
        return;
    QByteArray &text = tokens[match.tag].text;
    const QByteArray name = attributeName(text.mid(match.start, match.length));
    text.replace(match.start, match.length, ' ' + name + "=\"" + value(name) + '"');
}

void TitleMutator::changeNumber(Tokens &tokens)
{
    static const QRegularExpression numberInValue(
            QStringLiteral("[\"' ,;(]([-+]?[0-9]*\\.?[0-9]+)(?=[^0-9.])"));
    const Match match = anyMatch(tokens, numberInValue);
    if (match.tag >= 0)
        tokens[match.tag].text.replace(match.start, match.length, number());
}

void TitleMutator::removeAttribute(Tokens &tokens)
{
    const Match match = anyMatch(tokens, attributePattern());
    if (match.tag >= 0)
        tokens[match.tag].text.remove(match.start, match.length);
}

void TitleMutator::addAttribute(Tokens &tokens)
{
    const int tag = anyTag(tokens);
    if (tag < 0)
        return;
    QByteArray &text = tokens[tag].text;
    const QByteArray name = oneOf(attributeNames, m_random);
    if (name.contains(' ') || text.contains(name + '='))
        return;
    text.insert(nameEnd(text), ' ' + name + "=\"" + value(name) + '"');
}

QByteArray TitleMutator::mutated(const QByteArray &text)
{
    using Change = void (TitleMutator::*)(Tokens &);
    static const std::array<Change, 13> changes = {
            &TitleMutator::removeElement,    &TitleMutator::moveElement,
            &TitleMutator::duplicateElement, &TitleMutator::wrapElement,
            &TitleMutator::insertElement,    &TitleMutator::insertElement,
            &TitleMutator::insertElement,    &TitleMutator::renameElement,
            &TitleMutator::changeValue,      &TitleMutator::changeValue,
            &TitleMutator::changeNumber,     &TitleMutator::addAttribute,
            &TitleMutator::removeAttribute};
    m_ids = idsOf(text);
    Tokens parts = tokens(text);
    if (tags(parts).isEmpty())
        return QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" "
                          "xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 64 36\">")
                + newElement() + "</svg>";
    (this->*changes[std::size_t(below(int(changes.size())))])(parts);
    return joined(parts);
}

QByteArray TitleMutator::crossed(const QByteArray &first, const QByteArray &second)
{
    Tokens parts = tokens(first);
    const Tokens others = tokens(second);
    const int start = anyElement(others);
    if (start < 0)
        return first;
    const Range range = element(others, start);
    insertInto(parts, others.mid(range.first, range.last - range.first + 1));
    return joined(parts);
}
