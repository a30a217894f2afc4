// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TemplateList.h"

#include "Compositor.h"

#include <Failure.h>
#include <TitleText.h>

#include <QDir>
#include <QMimeData>
#include <QPainter>
#include <QTimer>
#include <QUrl>

namespace {

constexpr int pathRole = Qt::UserRole;
const QSize iconSizeOfTemplates(160, 90);

/// On a dark ground, since most titles are light.
QPixmap picture(const QString &path)
{
    QPixmap pixmap(iconSizeOfTemplates);
    pixmap.fill(QColor(0x3a, 0x3e, 0x42));
    try {
        const QImage image = thumbnail(readTitleText(path), pixmap.size());
        QPainter(&pixmap).drawImage(0, 0, image);
    } catch (const Failure &) {
        // The ground alone: why it can't be read is told who wants to add it.
    }
    return pixmap;
}

QString templateName(const QFileInfo &file)
{
    QString name = file.completeBaseName();
    name.replace(QLatin1Char('-'), QLatin1Char(' '));
    name[0] = name.at(0).toUpper();
    return name;
}

} // namespace

TemplateList::TemplateList(QWidget *parent) : QListWidget(parent)
{
    setViewMode(IconMode);
    setIconSize(iconSizeOfTemplates);
    setGridSize(iconSizeOfTemplates + QSize(20, 32));
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setToolTip(tr("Double-click a template or drag it to the canvas"));
    connect(this, &QListWidget::itemActivated, this, [this](const QListWidgetItem *item) {
        Q_EMIT chosen(item->data(pathRole).toString());
    });
}

TemplateList::~TemplateList() = default;

void TemplateList::setFolder(const QString &path)
{
    clear();
    m_withThumbnail = 0;
    const QFileInfoList files =
            QDir(path).entryInfoList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    QPixmap emptyThumbnail(iconSizeOfTemplates);
    emptyThumbnail.fill(QColor(0x3a, 0x3e, 0x42));
    for (const QFileInfo &file : files) {
        auto *item = new QListWidgetItem(emptyThumbnail, templateName(file), this);
        item->setData(pathRole, file.absoluteFilePath());
        item->setToolTip(QDir::toNativeSeparators(file.absoluteFilePath()));
    }
    QTimer::singleShot(0, this, &TemplateList::loadNextThumbnail);
}

/// One for each turn of the event loop: the window is there before its pictures are.
void TemplateList::loadNextThumbnail()
{
    QListWidgetItem *next = item(m_withThumbnail);
    if (!next) {
        Q_EMIT loaded();
        return;
    }
    next->setIcon(picture(next->data(pathRole).toString()));
    ++m_withThumbnail;
    QTimer::singleShot(0, this, &TemplateList::loadNextThumbnail);
}

QMimeData *TemplateList::mimeData(const QList<QListWidgetItem *> items) const
{
    QList<QUrl> urls;
    for (const QListWidgetItem *item : items)
        urls.append(QUrl::fromLocalFile(item->data(pathRole).toString()));
    auto *mime = new QMimeData; // the caller's
    mime->setUrls(urls);
    return mime;
}
