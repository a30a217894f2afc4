// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MissingFonts.h"

#include "StyleSheets.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>

namespace {

QString familyProperty()
{
    return QStringLiteral("font-family");
}

// The properties that make up a font for the renderer.
bool isFontProperty(const QString &name)
{
    static const QSet<QString> names{familyProperty(),
                                     QStringLiteral("font-size"),
                                     QStringLiteral("font-style"),
                                     QStringLiteral("font-weight"),
                                     QStringLiteral("font-variant"),
                                     QStringLiteral("text-anchor")};
    return names.contains(name);
}

// Names that any font is right for.
bool isGeneric(const QString &name)
{
    static const QSet<QString> names{
            QStringLiteral("serif"),        QStringLiteral("sans-serif"),
            QStringLiteral("sans serif"),   QStringLiteral("sans"),
            QStringLiteral("monospace"),    QStringLiteral("cursive"),
            QStringLiteral("fantasy"),      QStringLiteral("system-ui"),
            QStringLiteral("ui-serif"),     QStringLiteral("ui-sans-serif"),
            QStringLiteral("ui-monospace"), QStringLiteral("ui-rounded")};
    return names.contains(name.toLower());
}

// The value of a "font-family".
struct Family
{
    QString value;
    Place place;
    bool isOfSheet = false;
    int element = SourceElement::none; // that has it, if it is one

    QString text() const { return value.trimmed(); }
};

bool isQuoted(const QString &name)
{
    return name.startsWith(QLatin1Char('\'')) || name.startsWith(QLatin1Char('"'));
}

// As the renderer takes them off.
QString withoutQuotes(const QString &name)
{
    return isQuoted(name) ? name.mid(1, name.size() - 2) : name;
}

// In a style sheet, what is not in quotes is a list of words.
MissingFont::Cause causeFor(const Family &family)
{
    if (family.value.contains(QLatin1Char(',')))
        return MissingFont::Cause::List;
    const bool isListOfWords = family.isOfSheet && !isQuoted(family.text())
            && family.value.simplified().contains(QLatin1Char(' '));
    return isListOfWords ? MissingFont::Cause::NoQuotes : MissingFont::Cause::NotInstalled;
}

// The name by which the renderer asks for a font.
QString askedName(const Family &family, MissingFont::Cause cause)
{
    if (cause == MissingFont::Cause::NoQuotes)
        return family.value.simplified().replace(QLatin1Char(' '), QLatin1Char(','));
    return withoutQuotes(family.text());
}

QFont fontOf(const QString &name)
{
    QFont font;
#if QT_VERSION >= QT_VERSION_CHECK(5, 13, 0)
    font.setFamilies({name});
#else
    font.setFamily(name);
#endif
    return font;
}

// Finds the families of elements, as the renderer does.
class Families
{
public:
    explicit Families(const SourcePlaces &source) : m_source(source)
    {
        for (const SourcePlaces::StyleSheet &sheet : source.styleSheets()) {
            for (const StyleRules::Rule &rule : sheet.rules.rules())
                readRule(rule, sheet);
        }
    }

    // That of the element or of the nearest one around it that has one.
    std::optional<Family> of(int number)
    {
        std::vector<int> asked;
        std::optional<Family> family;
        for (; number != SourceElement::none && !family; number = element(number).parent) {
            const auto known = m_known.find(number);
            if (known != m_known.end()) {
                family = *known;
                break;
            }
            asked.push_back(number);
            family = own(number);
        }
        for (const int each : asked)
            m_known.insert(each, family);
        return family;
    }

private:
    struct Rule
    {
        int order;
        SimpleSelector selector;
        Family family;
    };

    const SourceElement &element(int number) const
    {
        return m_source.elements()[std::size_t(number)];
    }

    // Of a selector with several parts, the last one is enough: a font may be missing.
    void readRule(const StyleRules::Rule &rule, const SourcePlaces::StyleSheet &sheet)
    {
        const std::optional<Family> family =
                familyIn(rule.declarations, {QString(), sheet.place, true});
        if (!family)
            return;
        for (const QString &text : rule.selectors) {
            const QString last = text.section(QLatin1Char(' '), -1);
            if (const std::optional<SimpleSelector> selector = simpleSelector(last))
                m_rules[keyOf(*selector)].push_back({m_ruleCount++, *selector, *family});
        }
    }

    static QString keyOf(const SimpleSelector &selector)
    {
        if (!selector.id.isEmpty())
            return QLatin1Char('#') + selector.id;
        return selector.classes.isEmpty() ? selector.type
                                          : QLatin1Char('.') + selector.classes.constFirst();
    }

    // The last one, which is like `family` otherwise.
    static std::optional<Family> familyIn(const std::vector<StyleDeclaration> &declarations,
                                          Family family)
    {
        for (const StyleDeclaration &declaration : declarations) {
            if (declaration.name == familyProperty())
                family.value = declaration.value;
        }
        return used(family);
    }

    // Those that say nothing count as none.
    static std::optional<Family> used(const Family &family)
    {
        return family.text().isEmpty() || family.text() == QLatin1String("inherit")
                ? std::nullopt
                : std::optional<Family>(family);
    }

    // Any font property of the element's own makes the renderer forget those of rules.
    std::optional<Family> own(int number) const
    {
        const SourceElement &owner = element(number);
        if (const SourceAttribute *const attribute = owner.attribute(familyProperty()))
            return used({attribute->value, attribute->place, false, number});
        const QString styleName = QStringLiteral("style");
        const std::vector<StyleDeclaration> style = declarationsIn(owner.value(styleName));
        if (const auto family =
                    familyIn(style, {QString(), owner.placeOf(styleName), false, number}))
            return family;
        for (const StyleDeclaration &declaration : style) {
            if (isFontProperty(declaration.name))
                return std::nullopt;
        }
        for (const SourceAttribute &attribute : owner.attributes) {
            if (isFontProperty(attribute.name))
                return std::nullopt;
        }
        return ofRules(number);
    }

    // The last one that fits.
    std::optional<Family> ofRules(int number) const
    {
        if (m_rules.isEmpty())
            return std::nullopt;
        const SourceElement &owner = element(number);
        const QStringList classes = classesOf(owner);
        QStringList keys{QString(), owner.name,
                         QLatin1Char('#') + owner.value(QStringLiteral("id"))};
        for (const QString &name : classes)
            keys += QLatin1Char('.') + name;
        const Rule *last = nullptr;
        for (const QString &key : keys) {
            const auto found = m_rules.find(key);
            if (found == m_rules.end())
                continue;
            for (const Rule &rule : *found) {
                if ((!last || rule.order > last->order) && rule.selector.fits(owner, classes))
                    last = &rule;
            }
        }
        if (!last)
            return std::nullopt;
        Family family = last->family;
        family.element = number;
        return family;
    }

    const SourcePlaces &m_source;
    QHash<QString, std::vector<Rule>> m_rules; // by a class, an id or a type
    int m_ruleCount = 0;
    QHash<int, std::optional<Family>> m_known;
};

// The fonts that a title has itself, by name, and the elements after which they can be asked for.
QHash<QString, int> ownFonts(const SourcePlaces &source)
{
    QHash<QString, int> fonts;
    const auto add = [&fonts](const QString &name, int number) {
        if (!name.isEmpty() && !fonts.contains(name))
            fonts.insert(name, number);
    };
    for (int number = 0; number < int(source.elements().size()); ++number) {
        const SourceElement &element = source.elements()[std::size_t(number)];
        if (element.name == QLatin1String("font"))
            add(element.value(QStringLiteral("id")), number);
        else if (element.name == QLatin1String("font-face"))
            add(element.value(familyProperty()), number);
        else if (element.name == QLatin1String("font-face-name"))
            add(element.value(QStringLiteral("name")), number);
    }
    return fonts;
}

// All that an animation of the family shows.
std::vector<Family> animatedFamilies(const SourcePlaces &source)
{
    std::vector<Family> families;
    const auto add = [&families](const SourceAttribute &attribute, const QString &value) {
        if (!value.trimmed().isEmpty())
            families.push_back({value, attribute.place});
    };
    for (const SourceElement &element : source.elements()) {
        if (element.value(QStringLiteral("attributeName")).trimmed() != familyProperty())
            continue;
        for (const SourceAttribute &attribute : element.attributes) {
            if (attribute.name == QLatin1String("from") || attribute.name == QLatin1String("to"))
                add(attribute, attribute.value);
            if (attribute.name != QLatin1String("values"))
                continue;
            for (const QString &value : attribute.value.split(QLatin1Char(';')))
                add(attribute, value);
        }
    }
    return families;
}

// The elements that have letters themselves.
std::set<int> elementsWithLetters(const SourcePlaces &source)
{
    std::set<int> elements;
    for (const SourceText &text : source.texts()) {
        for (const SourceText::Piece &piece : text.pieces) {
            if (!piece.letters.trimmed().isEmpty())
                elements.insert(piece.element);
        }
    }
    return elements;
}

std::vector<Family> askedFamilies(const SourcePlaces &source)
{
    std::vector<Family> asked = animatedFamilies(source);
    Families families(source);
    for (const int number : elementsWithLetters(source)) {
        if (const std::optional<Family> family = families.of(number))
            asked.push_back(*family);
    }
    return asked;
}

// What is drawn instead of fonts. Each is looked up once, since that takes as long as drawing in
// it.
class StandIns
{
public:
    // Empty for a font that is there; and for the last ones of a title that lacks far too many.
    QString of(const QString &name)
    {
        const auto known = m_known.find(name);
        if (known != m_known.end())
            return *known;
        const QString standIn = m_missing < mostMissingFonts ? lookUp(name) : QString();
        if (!standIn.isEmpty())
            ++m_missing;
        m_known.insert(name, standIn);
        return standIn;
    }

private:
    QString lookUp(const QString &name) const
    {
        if (isGeneric(name) || m_database.hasFamily(name))
            return QString();
        const QString family = QFontInfo(fontOf(name)).family();
        return family.compare(name.simplified(), Qt::CaseInsensitive) == 0 ? QString() : family;
    }

    const QFontDatabase m_database;
    QHash<QString, QString> m_known;
    int m_missing = 0;
};

} // namespace

QString MissingFont::reason() const
{
    const QString what = cause == Cause::List
            ? QStringLiteral("the list of fonts %1 counts as one font that is not installed")
            : cause == Cause::NoQuotes
            ? QStringLiteral("the font %1 is not in quotes, as it has to be in a style sheet")
            : QStringLiteral("the font \"%1\" is not installed");
    return what.arg(name) + QStringLiteral(": \"%1\" is drawn instead").arg(standIn);
}

std::vector<MissingFont> missingFonts(const SourcePlaces &source)
{
    const QHash<QString, int> fontsOfTitle = ownFonts(source);
    StandIns standIns;
    std::vector<MissingFont> missing;
    std::set<std::tuple<int, int, QString>> seen; // lines, columns and values
    for (const Family &family : askedFamilies(source)) {
        if (!seen.emplace(family.place.line, family.place.column, family.value).second)
            continue;
        const auto ofTitle = fontsOfTitle.find(family.value);
        const bool isOfTitle = ofTitle != fontsOfTitle.end() && *ofTitle < family.element;
        const MissingFont::Cause cause = causeFor(family);
        const QString name = askedName(family, cause);
        const QString standIn = isOfTitle ? QString() : standIns.of(name);
        if (standIn.isEmpty())
            continue;
        const bool isName = cause == MissingFont::Cause::NotInstalled;
        missing.push_back({isName ? name : family.text(), standIn, cause, family.place});
    }
    std::sort(missing.begin(), missing.end(), [](const MissingFont &a, const MissingFont &b) {
        return std::tie(a.place.line, a.place.column, a.name)
                < std::tie(b.place.line, b.place.column, b.name);
    });
    return missing;
}
