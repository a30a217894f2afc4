// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "AdmissionLimits_p.h"
#include "MarkupRoles_p.h"
#include "References_p.h"
#include "SelectorScan_p.h"
#include "XmlAttribute_p.h"

#include <QString>

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Holds the elements, attributes and characters of a title, in the order in which they are read,
/// against the limits. All text is UTF-8.
class Inspection
{
public:
    explicit Inspection(Origin origin = Origin::Template) : m_origin(origin) {}

    /// Where the reading is, for what a refusal says.
    void setLine(qint64 line) { m_line = line; }

    void startElement(std::string_view name, const std::vector<XmlAttribute> &attributes);
    void endElement();
    /// \a isData tells those of a CDATA section, in which white space stands as it is.
    void characters(std::string_view text, bool isData = false);
    void processingInstruction(std::string_view target);

    /// To be called after the root.
    void finish();

    /// Whether the root has ended.
    bool isAfterRoot() const { return m_elements > 0 && m_open.empty(); }

    /// Only the first refusal counts.
    void refuse(const QString &refusal);
    void refuseHere(const QString &reason);
    void exceed(const AdmissionLimit &limit);
    void hold(qint64 amount, const AdmissionLimit &limit);
    /// The same for what no save can have more of but by saving.
    void holdTemplate(qint64 amount, const AdmissionLimit &limit);

    Origin origin() const { return m_origin; }

    /// One line, or empty.
    const QString &refusal() const { return m_refusal; }

    /// Whether something has to be taken out of the text: "xml-stylesheet" instructions, and what
    /// the image elements of these numbers, in document order, refer to.
    bool mustTakeOut() const { return m_hasStyleInstruction || !m_foreignPictures.empty(); }
    const std::vector<int> &foreignPictures() const { return m_foreignPictures; }

    /// What is to be taken out first, and why; one line, or empty.
    const QString &leftOut() const { return m_leftOut; }

private:
    struct Open
    {
        int element;
        ElementKind kind;
        int stops;
        std::set<std::string> animatedNames; // of its attributes
    };

    void addCharacters(qint64 count);
    void inspectStyleSheet(std::string_view text);
    void addStyledName(std::string_view name);
    void addStyledClasses(std::string_view classes);
    void addStyled(const std::string &key);
    void inspectStyle(std::string_view text);
    void inspectAttributes(const std::vector<XmlAttribute> &attributes, const Open &owner);
    void inspectValue(AttributeRole role, std::string_view value, const Open &owner,
                      std::string_view animated);
    int inspectNumbers(std::string_view value, const AdmissionLimit &count);
    void inspectPath(std::string_view value, const Open &owner);
    qint64 styleComparisons() const;
    void inspectLooseNumbers(std::string_view value);
    void noteLargeNumber();
    void refuseLargeNumber();
    void inspectAnimatedName(std::string_view value, const Open &owner);
    void inspectAnimatedValue(std::string_view animated, std::string_view value);
    void addReference(const Open &owner, std::string_view reference);
    void inspectPicture(std::string_view reference, int element);
    void leaveOut(const QString &what);
    QString here(const QString &text) const;

    const Origin m_origin;
    qint64 m_line = 1;
    QString m_refusal;

    std::vector<Open> m_open; // from the root to the current element
    int m_elements = 0;
    qint64 m_attributes = 0;
    std::size_t m_deepest = 0;
    int m_texts = 0;     // open ones
    int m_textAreas = 0; // open ones
    qint64 m_characters = 0;
    qint64 m_styleSheet = 0;
    int m_styles = 0; // open ones
    SelectorScan m_selectors;
    std::unordered_map<std::string, qint64> m_stylings; // weights of selectors by key
    qint64 m_styled = 0;
    qint64 m_escapes = 0; // each times the size of the style that it stands in
    bool m_hasDashes = false;
    qint64 m_lineOfLargeNumber = 0;
    bool m_hasCanvas = false;
    bool m_isCanvasAnimated = false;
    References m_references;

    bool m_hasStyleInstruction = false;
    std::vector<int> m_foreignPictures; // by number of the element
    qint64 m_pixels = 0;
    QString m_leftOut;
};
