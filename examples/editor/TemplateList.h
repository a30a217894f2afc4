// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QListWidget>

/// The SVG files of a folder, with pictures of what they show. They can be dragged to the canvas.
class TemplateList : public QListWidget
{
    Q_OBJECT

public:
    explicit TemplateList(QWidget *parent = nullptr);
    ~TemplateList() override;

public Q_SLOTS:
    void setFolder(const QString &path);

Q_SIGNALS:
    /// By a double click or Return.
    void chosen(const QString &path);
    /// Every file has its picture.
    void loaded();

protected:
    QMimeData *mimeData(const QList<QListWidgetItem *> items) const override;

private:
    void loadNextThumbnail();

    int m_withThumbnail = 0;
};
