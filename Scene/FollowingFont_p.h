// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QFont>
#include <QObject>

class QTextCharFormat;
class QTextDocument;

/// Lets the default font of a document follow the font at a text cursor, without a trace in what is
/// shown, now and after any undo and redo.
///
/// A format that leaves a part of its font to the document takes that from the default font of the
/// moment, also the formats that the undo stack keeps. So whenever the text has such formats, the
/// default font is the document's own, the one that the application gave it; it follows only while
/// nothing in the text shows the difference.
class FollowingFont : public QObject
{
    Q_OBJECT

public:
    /// The one of a document, whoever shows that.
    static FollowingFont &of(QTextDocument &document);

    /// Makes the font the default font if that can't be seen. As long as nothing can be undone, the
    /// text gets its whole fonts for itself first.
    void follow(const QFont &font);

    /// Takes the font back where a format that text is about to get would look different with it.
    void keepLookOf(const QTextCharFormat &format);

private:
    explicit FollowingFont(QTextDocument &document);

    bool isFollowing() const;
    void keepLookOfText();

    QTextDocument &m_document;
    QFont m_own;
    QFont m_followed;
};
