// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "RendererMessages.h"
#include "SourcePlaces.h"

#include <boost/shared_ptr.hpp>

#include <QDomElement>
#include <QHash>
#include <QSize>
#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <vector>

class AdjustableAttribute;
class AnimatableAttribute;
class SvgDocument;
class SvgElement;

// One animation element, and what the library makes of it. Elements are told by their number in
// document order.
struct Animation
{
    enum class Player {
        Document, // an animation of an attribute
        Renderer, // of a transform, or of a colour by "animateColor"
        Nobody
    };
    enum class Kind { Color, Number, Text, NumberList, Transform, Unknown };

    int element = SourceElement::none;
    int target = SourceElement::none;
    Player player = Player::Nobody;
    Kind kind = Kind::Unknown;
    QString attribute;
    int begin = 0;            // ms
    int end = 0;              // ms, one simple duration later
    double repeatCount = 1.0; // negative: indefinitely
    bool freezes = false;
    bool isDiscrete = false;
    QString trigger;                                     // the begin as the author wrote it
    boost::shared_ptr<const AnimatableAttribute> played; // null unless the document plays it

    bool isPlayed() const { return player != Player::Nobody; }
    bool isPlayedByRenderer() const { return player == Player::Renderer; }
    bool isRepeated() const { return repeatCount < 0.0 || repeatCount > 1.0; }

    // The time at which it stops, repetitions included; none when it never does.
    std::optional<double> activeEnd() const;
};

QString nameOf(Animation::Kind kind);
QString nameOf(Animation::Player player);

// An attribute that takes a user's colour.
struct AdjustableColor
{
    int element = SourceElement::none;
    QString attribute;
    QString value; // the template's own
};

// An element that others refer to by its id, or a child of "defs", which waits for that.
struct Definition
{
    struct User
    {
        int element;
        QString attribute; // that holds the reference
    };

    int element = SourceElement::none;
    QString id;
    std::vector<User> users;
};

// A title as the library understands it, beside its text as the author wrote it.
class Understood
{
public:
    // Throws a Failure for a text that the library does not accept.
    Understood(const QString &name, const QString &text);
    ~Understood();

    QString name() const { return m_name; }
    const SourcePlaces &source() const { return m_source; }
    const SourceElement &element(int number) const;

    QSizeF size() const;
    int duration() const;           // ms
    int conclusionDuration() const; // ms; 0: there is none
    bool hasClipping() const;
    int clippingShapes() const { return m_clippingShapes; }

    const std::vector<Animation> &animations() const { return m_animations; }
    const std::vector<AdjustableColor> &adjustableColors() const { return m_adjustableColors; }
    const std::vector<Definition> &definitions() const { return m_definitions; }

    // The number of the first element with this id, if there is one.
    std::optional<int> elementWithId(const QString &id) const;

    // The element in the library's tree.
    const QDomElement &treeElement(int number) const { return m_tree[std::size_t(number)]; }

    // The texts as they are once the library has saved its tree.
    const std::vector<SourceText> &savedTexts() const { return m_savedTexts; }

    // Whether the title is drawn from a saved tree even when nobody recolours it.
    bool isDrawnAsSaved() const { return m_isDrawnAsSaved; }

    // The numbers of the elements that the renderer could not read and leaves out.
    std::vector<int> leftOut() const;

    // How a person recognises an element: its name, and its id if it has one. Not longer than
    // would be read.
    QString label(int number) const;

private:
    void load(const QString &text);
    void readTree();
    void readAnimations();
    void readRest(Animation &animation) const;
    void readAdjustableColors();
    void readDefinitions();
    std::optional<int> numberOf(const SvgElement &place) const;

    QString m_name;
    SourcePlaces m_source;
    std::vector<RendererMessages::LeftOut> m_leftOut;
    std::unique_ptr<SvgDocument> m_document;
    std::vector<QDomElement> m_tree;           // by number
    std::map<std::vector<int>, int> m_numbers; // by the element's place in the tree
    std::vector<SourceText> m_savedTexts;
    bool m_isDrawnAsSaved = false;
    int m_clippingShapes = 0;
    QHash<QString, int> m_ids;
    std::vector<Animation> m_animations;
    std::vector<AdjustableColor> m_adjustableColors;
    std::vector<Definition> m_definitions;
};

// A text on one line, with "..." in place of what is beyond a length.
QString shortened(const QString &text, int longest);

// The id in "#id"; empty for anything else.
QString idOfReference(const QString &reference);

// The ids in all "url(#id)" of a value.
QStringList idsOfUrls(const QString &value);
