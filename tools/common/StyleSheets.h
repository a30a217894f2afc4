// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct SourceElement;

// A declaration such as "fill: red".
struct StyleDeclaration
{
    QString name;
    QString value;
    bool isImportant = false;
};

// The declarations of a "style" attribute, or between the braces of a rule.
std::vector<StyleDeclaration> declarationsIn(const QString &text);

// What a style sheet holds, without its comments.
class StyleRules
{
public:
    explicit StyleRules(const QString &text);

    struct Rule
    {
        QStringList selectors;
        std::vector<StyleDeclaration> declarations;
    };
    const std::vector<Rule> &rules() const { return m_rules; }

    // The names of rules such as "@media", with the "@".
    const QStringList &atRules() const { return m_atRules; }

private:
    std::vector<Rule> m_rules;
    QStringList m_atRules;
};

// A selector of a type, ids and classes of one element, such as "rect.wide#bar".
struct SimpleSelector
{
    QString type; // empty: any
    QString id;
    QStringList classes;

    // `classesOfElement`: those that classesOf() gives.
    bool fits(const SourceElement &element, const QStringList &classesOfElement) const;
};

// None for a selector of another form.
std::optional<SimpleSelector> simpleSelector(const QString &text);

// The classes of an element, each once.
QStringList classesOf(const SourceElement &element);
