// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "AdmissionLimits_p.h"

#include <QHash>
#include <QString>

#include <optional>
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

    void begin(int element) { m_ends.resize(std::size_t(element) + 1); }
    void end(int element, int next) { m_ends[std::size_t(element)] = next; }

    void addId(const QString &id, int element) { m_owners[numberOf(id)].push_back(element); }
    void addReference(Kind kind, int element, const QString &id, qint64 line)
    {
        (kind == Kind::Use ? m_uses : m_gradients).push_back({element, numberOf(id), line});
    }

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

    int numberOf(const QString &id)
    {
        const auto known = m_ids.find(id);
        if (known != m_ids.end())
            return *known;
        m_owners.emplace_back();
        return *m_ids.insert(id, int(m_owners.size()) - 1);
    }

    std::vector<int> m_ends; // of each element, the number of the first one behind its content
    QHash<QString, int> m_ids;
    std::vector<std::vector<int>> m_owners; // by number of the id
    Links m_uses;
    Links m_gradients;
};
