// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QHash>
#include <QImage>
#include <QTextDocument>
#include <QUrl>

/// The document that a text title makes for itself. Its text may come from strangers, and Qt would
/// read every file that a text names as a picture. It shows the pictures that stand in the text
/// itself, within the limits of those in an SVG title.
class TitleDocument : public QTextDocument
{
public:
    explicit TitleDocument(QObject *parent);

protected:
    /// Asked for what the application has not given to the document, each time that it is laid out
    /// or drawn.
    QVariant loadResource(int type, const QUrl &name) override;

private:
    QImage unpacked(const QUrl &name);
    void forgetPicturesOfNoText();

    QHash<QUrl, QImage> m_pictures; // by their references, with those that may not be shown
    qint64 m_pixels = 0;
};
