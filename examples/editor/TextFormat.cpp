// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TextFormat.h"

#include <QTextCursor>
#include <QTextDocument>

QString withFormat(const QString &html, const QTextCharFormat &format)
{
    QTextDocument document;
    document.setHtml(html);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(format);
    return document.toHtml();
}

QTextCharFormat firstFormat(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    QTextCursor first(&document);
    first.movePosition(QTextCursor::NextCharacter);
    return first.charFormat();
}
