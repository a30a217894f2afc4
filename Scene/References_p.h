// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "AdmissionLimits_p.h"

#include <QHash>
#include <QString>
#include <QVector>

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

    void addId(const QString &id, int element) { m_owners[id].append(element); }
    void addReference(Kind kind, int element, const QString &id, qint64 line)
    {
        links(kind).push_back({element, id, line});
    }

    /// To be asked once everything has been added.
    std::optional<Excess> excess() const;

private:
    struct Link
    {
        int element;
        QString id;
        qint64 line;
    };
    using Links = std::vector<Link>; // in the order of their elements

    class Walk;

    Links &links(Kind kind) { return kind == Kind::Use ? m_uses : m_gradients; }

    std::vector<int> m_ends; // of each element, the number of the first one behind its content
    QHash<QString, QVector<int>> m_owners;
    Links m_uses;
    Links m_gradients;
};
