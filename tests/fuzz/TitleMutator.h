// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QVector>

/// Changes the texts of titles so that most of them stay well-formed, and say something new of
/// what titles are about: animations, their times and references, definitions and their uses.
/// Works on the tags of any text, also of one that is broken already.
class TitleMutator
{
public:
    explicit TitleMutator(quint32 seed) : m_random(seed) {}

    /// The text with one change.
    QByteArray mutated(const QByteArray &text);

    /// The first text with an element of the second in it.
    QByteArray crossed(const QByteArray &first, const QByteArray &second);

    /// A few times to look at a title, with blanks between them.
    QByteArray times();

private:
    struct Token
    {
        enum Kind { Open, Close, Empty, Other };
        Kind kind;
        QByteArray text;
    };
    using Tokens = QVector<Token>;

    struct Range
    {
        int first = 0;
        int last = 0;
    };

    struct Match
    {
        int tag = -1; ///< of no match
        int start = 0;
        int length = 0;
    };

    static Tokens tokens(const QByteArray &text);
    static QByteArray joined(const Tokens &tokens);
    static Range element(const Tokens &tokens, int start);
    static QVector<int> tags(const Tokens &tokens);

    int below(int count) { return int(m_random.bounded(quint32(count))); }
    QByteArray number();
    QByteArray time();
    QByteArray filled(const QByteArray &text);
    QByteArray value(const QByteArray &attribute);
    QByteArray newElement();
    int anyTag(const Tokens &tokens);
    int anyElement(const Tokens &tokens);
    Match anyMatch(const Tokens &tokens, const QRegularExpression &pattern);

    void removeElement(Tokens &tokens);
    void moveElement(Tokens &tokens);
    void duplicateElement(Tokens &tokens);
    void wrapElement(Tokens &tokens);
    void insertElement(Tokens &tokens);
    void renameElement(Tokens &tokens);
    void changeValue(Tokens &tokens);
    void changeNumber(Tokens &tokens);
    void addAttribute(Tokens &tokens);
    void removeAttribute(Tokens &tokens);
    void insertInto(Tokens &tokens, const Tokens &piece);

    QRandomGenerator m_random;
    QVector<QByteArray> m_ids; ///< of the text that is being changed
};
