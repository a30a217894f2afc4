// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Understood.h"

#include "Failure.h"

#include <Scene/AnimatableAttributeColor.h>
#include <Scene/AnimatableAttributeFloat.h>
#include <Scene/AnimatableAttributeFloatList.h>
#include <Scene/AnimatableAttributeText.h>
#include <Scene/SvgDocument.h>
#include <Scene/TreeWalk_p.h>
#include <Scene/XmlText_p.h>

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <tuple>

namespace {

constexpr int longestLabel = 40;

QString attributeName()
{
    return QStringLiteral("attributeName");
}

// What the library parses: UTF-8, whatever the declaration says.
QString declaredAsUtf8(const QString &text)
{
    return QString::fromUtf8(withUtf8Declaration(text.toUtf8()));
}

bool isAnimationElement(const QString &name)
{
    return name == QLatin1String("set") || name == QLatin1String("animate")
            || name == QLatin1String("animateColor") || name == QLatin1String("animateMotion")
            || name == QLatin1String("animateTransform");
}

bool isPlayedByRenderer(const QString &name)
{
    return name == QLatin1String("animateTransform") || name == QLatin1String("animateColor");
}

Animation::Kind kindOf(const AnimatableAttribute &attribute)
{
    if (dynamic_cast<const AnimatableAttributeColor *>(&attribute))
        return Animation::Kind::Color;
    if (dynamic_cast<const AnimatableAttributeFloat *>(&attribute))
        return Animation::Kind::Number;
    if (dynamic_cast<const AnimatableAttributeText *>(&attribute))
        return Animation::Kind::Text;
    return Animation::Kind::NumberList;
}

// As the renderer reads it.
double repeatCountOf(const QString &text)
{
    if (text == QLatin1String("indefinite"))
        return -1.0;
    return text.isEmpty() ? 1.0 : text.toDouble();
}

QByteArray textIn(SvgDocument &document)
{
    document.seek(0);
    return document.readAll();
}

} // namespace

std::optional<double> Animation::activeEnd() const
{
    if (repeatCount < 0.0)
        return std::nullopt;
    return begin + repeatCount * (double(end) - double(begin));
}

QString nameOf(Animation::Kind kind)
{
    switch (kind) {
    case Animation::Kind::Color:
        return QStringLiteral("colour");
    case Animation::Kind::Number:
        return QStringLiteral("number");
    case Animation::Kind::Text:
        return QStringLiteral("words");
    case Animation::Kind::NumberList:
        return QStringLiteral("numbers");
    case Animation::Kind::Transform:
        return QStringLiteral("transform");
    case Animation::Kind::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

QString nameOf(Animation::Player player)
{
    switch (player) {
    case Animation::Player::Document:
        return QStringLiteral("document");
    case Animation::Player::Renderer:
        return QStringLiteral("renderer");
    case Animation::Player::Nobody:
        break;
    }
    return QStringLiteral("nobody");
}

QString shortened(const QString &text, int longest)
{
    QString line = text.size() > longest ? text.left(longest - 3) + QStringLiteral("...") : text;
    std::replace_if(
            line.begin(), line.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
            QLatin1Char(' '));
    return line;
}

QString idOfReference(const QString &reference)
{
    return reference.startsWith(QLatin1Char('#')) ? reference.mid(1) : QString();
}

QStringList idsOfUrls(const QString &value)
{
    static const QRegularExpression url(
            QStringLiteral("url\\(\\s*[\"']?\\s*#([^\"')]*?)\\s*[\"']?\\s*\\)"));
    QStringList ids;
    if (!value.contains(QLatin1String("url")))
        return ids;
    auto matches = url.globalMatch(value);
    while (matches.hasNext())
        ids += matches.next().captured(1);
    return ids;
}

Understood::Understood(const QString &name, const QString &text) : m_name(name), m_source(QString())
{
    load(text);
    m_source = SourcePlaces(declaredAsUtf8(text));
    m_document->prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke")});
    readTree();
    readAnimations();
    readAdjustableColors();
    readDefinitions();
}

Understood::~Understood() = default;

const SourceElement &Understood::element(int number) const
{
    return m_source.elements()[std::size_t(number)];
}

QSizeF Understood::size() const
{
    return m_document->bounds().size();
}

int Understood::duration() const
{
    return m_document->animationDurationTotal();
}

int Understood::conclusionDuration() const
{
    return m_document->animationConclusionDuration();
}

bool Understood::hasClipping() const
{
    return m_document->hasClipping();
}

std::optional<int> Understood::elementWithId(const QString &id) const
{
    const auto found = m_ids.find(id);
    return found == m_ids.end() ? std::nullopt : std::optional<int>(*found);
}

QString Understood::label(int number) const
{
    const SourceElement &source = element(number);
    const QString id = source.value(QStringLiteral("id"));
    return shortened(id.isEmpty() ? source.name : source.name + QLatin1Char('#') + id,
                     longestLabel);
}

void Understood::load(const QString &text)
{
    const RendererMessages messages;
    m_document = std::make_unique<SvgDocument>(text);
    m_leftOut = messages.leftOut();
    if (!m_document->isLoaded())
        throw Failure(m_name, m_document->errorString());
}

// Of each message, the last element of its name that begins in front of it.
std::vector<int> Understood::leftOut() const
{
    const auto isBefore = [](const Place &a, const Place &b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    };
    const std::vector<SourceElement> &elements = m_source.elements();
    std::vector<int> numbers;
    for (const RendererMessages::LeftOut &message : m_leftOut) {
        auto element = std::lower_bound(elements.begin(), elements.end(), message.end,
                                        [&](const SourceElement &candidate, const Place &end) {
                                            return isBefore(candidate.place, end);
                                        });
        if (element != elements.begin() && (--element)->name == message.name)
            numbers.push_back(int(element - elements.begin()));
    }
    return numbers;
}

// The tree has the elements of the text in the same order.
void Understood::readTree()
{
    for (TreeWalk walk(m_document->documentRoot()); !walk.atEnd(); walk.next()) {
        if (!walk.node().isElement())
            continue;
        m_numbers.emplace(walk.element().location(), int(m_tree.size()));
        m_tree.push_back(walk.node().toElement());
    }
    if (m_tree.size() != m_source.elements().size())
        throw Failure(m_name, QStringLiteral("the tree does not have the elements of the text"));

    const std::vector<SourceElement> &elements = m_source.elements();
    for (std::size_t number = elements.size(); number-- > 0;) {
        if (const SourceAttribute *const id = elements[number].attribute(QStringLiteral("id")))
            m_ids.insert(id->value, int(number));
        const int parent = elements[number].parent;
        if (parent >= 0 && elements[std::size_t(parent)].name == QLatin1String("clipPath"))
            ++m_clippingShapes;
    }

    const QByteArray loaded = textIn(*m_document);
    m_document->saveToBuffer();
    const QByteArray saved = textIn(*m_document);
    m_isDrawnAsSaved = loaded == saved || !m_document->animations().empty();
    m_savedTexts = SourcePlaces(QString::fromUtf8(saved)).texts();
}

void Understood::readAnimations()
{
    const auto played = m_document->animations();
    auto next = played.begin();
    for (int number = 1; number < int(m_tree.size()); ++number) {
        const QDomElement &element = m_tree[std::size_t(number)];
        if (!isAnimationElement(element.tagName()))
            continue;
        Animation animation;
        animation.element = number;
        animation.target = this->element(number).parent;
        animation.attribute = element.attribute(attributeName());
        animation.trigger = this->element(number).value(QStringLiteral("begin")).trimmed();
        if (element.tagName() == QLatin1String("animate") && element.hasAttribute(attributeName())
            && next != played.end())
            animation.played = *next++;
        readRest(animation);
        m_animations.push_back(animation);
    }
}

void Understood::readRest(Animation &animation) const
{
    if (animation.played) {
        animation.player = Animation::Player::Document;
        animation.kind = kindOf(*animation.played);
        animation.begin = animation.played->beginTime();
        animation.end = animation.played->endTime();
        animation.repeatCount = animation.played->repeatCount();
        animation.freezes = animation.played->isFrozen();
        animation.isDiscrete = animation.played->calcMode() == AnimatableAttribute::Discrete;
        return;
    }
    const QDomElement &element = treeElement(animation.element);
    m_document->getBeginEndParams(element.attribute(QStringLiteral("begin")),
                                  element.attribute(QStringLiteral("dur")), animation.begin,
                                  animation.end);
    animation.repeatCount = repeatCountOf(element.attribute(QStringLiteral("repeatCount")));
    animation.freezes = element.attribute(QStringLiteral("fill")) == QLatin1String("freeze");
    if (!isPlayedByRenderer(element.tagName()))
        return;
    animation.player = Animation::Player::Renderer;
    animation.kind = element.tagName() == QLatin1String("animateColor")
            ? Animation::Kind::Color
            : Animation::Kind::Transform;
}

void Understood::readAdjustableColors()
{
    for (const char *name : {"fill", "stroke"}) {
        for (const auto &color : m_document->adjustableAttributes(QLatin1String(name))) {
            if (const std::optional<int> number = numberOf(*color))
                m_adjustableColors.push_back(
                        {*number, color->attributeName(), color->defaultValue()});
        }
    }
    std::stable_sort(m_adjustableColors.begin(), m_adjustableColors.end(),
                     [](const AdjustableColor &a, const AdjustableColor &b) {
                         return a.element < b.element;
                     });
}

// None for a place of an earlier tree of another shape.
std::optional<int> Understood::numberOf(const SvgElement &place) const
{
    const auto found = m_numbers.find(place.location());
    return found == m_numbers.end() ? std::nullopt : std::optional<int>(found->second);
}

void Understood::readDefinitions()
{
    const std::vector<SourceElement> &elements = m_source.elements();
    QHash<QString, std::vector<Definition::User>> users;
    for (int number = 0; number < int(elements.size()); ++number) {
        const SourceElement &element = elements[std::size_t(number)];
        for (const SourceAttribute &attribute : element.attributes) {
            for (const QString &id : idsOfUrls(attribute.value))
                users[id].push_back({number, attribute.name});
            const QString id = attribute.name == QLatin1String("xlink:href")
                    ? idOfReference(attribute.value)
                    : QString();
            if (!id.isEmpty() && element.name != QLatin1String("use"))
                users[id].push_back({number, attribute.name});
        }
    }

    for (int number = 1; number < int(elements.size()); ++number) {
        const SourceElement &element = elements[std::size_t(number)];
        const QString id = element.value(QStringLiteral("id"));
        if (id.isEmpty() || elementWithId(id) != number || isAnimationElement(element.name))
            continue;
        Definition definition{number, id, users.value(id)};
        for (const auto &use : m_document->usesOf(id)) {
            if (const std::optional<int> user = numberOf(*use))
                definition.users.push_back({*user, QStringLiteral("xlink:href")});
        }
        const bool isMeantForUse =
                elements[std::size_t(element.parent)].name == QLatin1String("defs")
                && !element.name.contains(QLatin1Char(':'));
        if (isMeantForUse || !definition.users.empty())
            m_definitions.push_back(definition);
    }
}
