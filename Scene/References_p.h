// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "AdmissionLimits_p.h"

#include <QtGlobal>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The elements of a title by number, in document order, and what refers to what among them: enough
/// to tell how far the renderer would follow "use" elements and gradients, and how much it would
/// draw on the way.
class References
{
public:
    /// A limit that is exceeded, and the line where.
    struct Excess
    {
        AdmissionLimit limit;
        qint64 line;
    };

    enum class Kind { Use, Gradient };

    /// What it takes to draw something.
    struct Amount
    {
        qint64 elements = 0;
        qint64 characters = 0;
        qint64 coordinates = 0;
    };

    void begin(int element)
    {
        m_ends.resize(std::size_t(element) + 1);
        m_before.push_back(m_total);
        ++m_total.elements;
    }
    void end(int element, int next) { m_ends[std::size_t(element)] = next; }

    /// Of the element that is open.
    void addCharacters(qint64 count) { m_total.characters += count; }
    void addCoordinates(qint64 count) { m_total.coordinates += count; }

    /// Every character of a text may be drawn as the longest glyph.
    void addGlyph(qint64 coordinates) { m_longestGlyph = std::max(m_longestGlyph, coordinates); }

    /// What all that has been added takes, before anything is repeated.
    const Amount &total() const { return m_total; }

    void addId(std::string_view id, int element) { m_owners[numberOf(id)].push_back(element); }
    void addReference(Kind kind, int element, std::string_view id, qint64 line)
    {
        (kind == Kind::Use ? m_uses : m_gradients).push_back({element, numberOf(id), line});
    }

    /// The same without references.
    std::optional<AdmissionLimit> excessOfTotal() const { return exceededBy(m_total); }

    /// To be asked once everything has been added. Whether the renderer knows the size of the
    /// canvas decides how often it goes round a ring.
    std::optional<Excess> excess(bool hasCanvas) const;

private:
    struct Link
    {
        int element;
        int id;
        qint64 line;
    };
    using Links = std::vector<Link>; // in the order of their elements

    class Walk;

    int numberOf(std::string_view id)
    {
        const auto known = m_ids.try_emplace(std::string(id), int(m_owners.size()));
        if (known.second)
            m_owners.emplace_back();
        return known.first->second;
    }

    Amount contentOf(int element) const;
    std::optional<AdmissionLimit> exceededBy(const Amount &drawn) const;

    Amount m_total;
    std::vector<Amount> m_before; // each element
    qint64 m_longestGlyph = 0;
    std::vector<int> m_ends; // of each element, the number of the first one after its content
    std::unordered_map<std::string, int> m_ids;
    std::vector<std::vector<int>> m_owners; // by number of the id
    Links m_uses;
    Links m_gradients;
};
