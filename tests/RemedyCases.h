// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "TitleTest.h"

#include <vector>

/// What a still title looks like that an animated one should look like at a time.
struct StillTwin
{
    int ms;
    QString title;
};

/// A problem of a title, what titlescene-inspect says against it, and the title with that done.
///
/// They stand one after the other in the text files in tests/data/remedies/:
///
///     === a name, unique in its file
///     code the code of every problem that is found in the broken title, or several codes
///     remedy a part of what is said against it
///     --- broken
///     what is wrong
///     --- remedied
///     the same with the remedy applied
///     --- at 500
///     what a browser shows of the remedied title 500 ms after its begin, without animations
///
/// A browser shows the same of the broken title, which looks different here. Where it shows
/// something else for the whole time, as it does of an animation that it does not play, that stands
/// below "--- browser". Lines after "remedy" that a case may have, too:
///
///     length 2000
///     warning what the renderer says each time when it reads the broken title
///     warning-when-loaded what it says when the broken title is loaded, but not when it is drawn
///
/// A case of what is no problem has neither code nor remedy, and "--- clean" in place of the broken
/// and the remedied title.
///
/// In the broken title a "^" may mark where the problem is.
///
/// The length in ms is that of the remedied title, and not that of the broken one, which may look
/// right then. All titles are the content of a root of 100 x 50, unless they bring their own.
struct RemedyCase
{
    QString name;
    QString code;
    QString remedy;
    QString length;
    QString warning;
    QString warningWhenLoaded;
    QString broken;
    int line = 0; // of the problem in it; 0: that is not said
    int column = 0;
    QString remedied;
    QString browser; // shows this of the broken title; empty: the same as of the remedied one
    std::vector<StillTwin> twins;

    bool isAboutProblem() const { return !code.isEmpty(); }
    bool isAboutLength() const { return !length.isEmpty(); }

    /// What a browser shows of the broken title at the time of a twin.
    QString shownOfBroken(const StillTwin &twin) const
    {
        return browser.isEmpty() ? twin.title : browser;
    }
};

/// Reads the cases of a file.
class RemedyReader
{
public:
    static std::vector<RemedyCase> cases(const QString &path)
    {
        RemedyReader reader;
        for (const QString &line : readText(path).split(QLatin1Char('\n')))
            reader.read(line);
        reader.endSection();
        return reader.m_cases;
    }

private:
    void read(const QString &line)
    {
        if (line.startsWith(QLatin1String("=== "))) {
            endSection();
            m_cases.emplace_back();
            m_cases.back().name = line.mid(4);
        } else if (line.startsWith(QLatin1String("--- "))) {
            endSection();
            m_section = line.mid(4);
        } else if (!m_section.isEmpty()) {
            m_text += line + QLatin1Char('\n');
        } else if (!m_cases.empty() && !line.isEmpty()) {
            readFact(line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1));
        }
    }

    void readFact(const QString &name, const QString &value)
    {
        RemedyCase &last = m_cases.back();
        if (name == QLatin1String("code"))
            last.code = value;
        else if (name == QLatin1String("remedy"))
            last.remedy = value;
        else if (name == QLatin1String("length"))
            last.length = value;
        else if (name == QLatin1String("warning"))
            last.warning = value;
        else if (name == QLatin1String("warning-when-loaded"))
            last.warningWhenLoaded = value;
        else
            QTest::qFail(qPrintable(QStringLiteral("no such fact: ") + name), __FILE__, __LINE__);
    }

    void endSection()
    {
        if (m_section.isEmpty())
            return;
        const QString content = m_text.trimmed();
        const bool isWhole = content.startsWith(QLatin1String("<svg"))
                || content.startsWith(QLatin1String("<?xml"));
        const QString title = isWhole ? content : svgTitle(content);
        RemedyCase &last = m_cases.back();
        if (m_section == QLatin1String("broken"))
            readBroken(title);
        else if (m_section == QLatin1String("remedied") || m_section == QLatin1String("clean"))
            last.remedied = title;
        else if (m_section == QLatin1String("browser"))
            last.browser = title;
        else if (m_section.startsWith(QLatin1String("at ")))
            last.twins.push_back({m_section.mid(3).toInt(), title});
        else
            QTest::qFail(qPrintable(QStringLiteral("no such section: ") + m_section), __FILE__,
                         __LINE__);
        m_section.clear();
        m_text.clear();
    }

    void readBroken(const QString &marked)
    {
        RemedyCase &last = m_cases.back();
        const int at = marked.indexOf(QLatin1Char('^'));
        last.broken = QString(marked).remove(QLatin1Char('^'));
        if (at < 0)
            return;
        const QString before = marked.left(at);
        last.line = before.count(QLatin1Char('\n')) + 1;
        last.column = at - before.lastIndexOf(QLatin1Char('\n'));
    }

    std::vector<RemedyCase> m_cases;
    QString m_section;
    QString m_text;
};
