// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QTextDocument>

/// The document that a text title makes for itself. Its text may come from strangers, and Qt would
/// read every file that a text names as a picture.
class TitleDocument : public QTextDocument
{
public:
    using QTextDocument::QTextDocument;

protected:
    /// Asked for what the application has not given to the document.
    QVariant loadResource(int type, const QUrl &name) override;
};
