// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleFactory.h"

#include <Scene/GraphicsEffectClip.h>
#include <Scene/SvgDocument.h>
#include <Scene/TitleItem.h>
#include <Scene/TitleSvgItem.h>
#include <Scene/TransformUtils.h>

#include <QTextCursor>
#include <QTextDocument>

namespace {

constexpr double textWidthOfCanvas = 0.5;
constexpr double textSize = 72.0; // points

std::unique_ptr<QGraphicsObject> madeSvgItem(const Title &title, int clipLength)
{
    auto item = std::make_unique<TitleSvgItem>(title.svg);
    item->setPaintOnImage(true);
    // The effect is the item's from here on.
    item->setGraphicsEffect(new GraphicsEffectClip(item->boundingRect()));
    item->setDuration(clipLength);
    item->setAnimationSpeed(title.speed);
    if (title.lineColor.isValid())
        setLineColor(item.get(), title.lineColor);
    return item;
}

std::unique_ptr<QGraphicsObject> madeTextItem(const Title &title)
{
    const QSizeF size(title.placement.textWidth, title.placement.textWidth);
    auto item = std::make_unique<TitleItem>(size, nullptr);
    item->setHtml(title.html);
    item->setTextWidth(title.placement.textWidth);
    return item;
}

} // namespace

std::unique_ptr<Title> madeSvgTitle(const QString &name, const QString &svg, const QSize &canvas,
                                    QString *error)
{
    const SvgDocument document(svg);
    const QSizeF size = document.bounds().size();
    if (!document.isLoaded() || size.isEmpty()) {
        *error = document.isLoaded() ? QStringLiteral("The picture has no size.")
                                     : document.errorString();
        return nullptr;
    }
    const QTransform fit = RescaleTransform(size, canvas);
    auto title = std::make_unique<Title>();
    title->name = name;
    title->svg = svg;
    title->placement.pos = fit.map(QPointF(0.0, 0.0));
    title->placement.scaleX = fit.m11();
    title->placement.scaleY = fit.m22();
    return title;
}

Title madeTextTitle(const QString &text, const QSize &canvas)
{
    QTextDocument document;
    QTextCharFormat format;
    format.setFontPointSize(textSize);
    format.setFontWeight(QFont::Bold);
    format.setForeground(Qt::white);
    QTextBlockFormat block;
    block.setAlignment(Qt::AlignHCenter);
    QTextCursor cursor(&document);
    cursor.setBlockFormat(block);
    cursor.insertText(text, format);

    Title title;
    title.kind = Title::Text;
    title.name = text;
    title.html = document.toHtml();
    title.placement.textWidth = canvas.width() * textWidthOfCanvas;
    const QSizeF size = ownSize(madeTextItem(title).get());
    title.placement.pos =
            QPointF((canvas.width() - size.width()) / 2.0, (canvas.height() - size.height()) / 2.0);
    return title;
}

std::unique_ptr<QGraphicsObject> madeItem(const Title &title, int clipLength)
{
    return title.kind == Title::Svg ? madeSvgItem(title, clipLength) : madeTextItem(title);
}

void setLineColor(QGraphicsItem *item, const QColor &color)
{
    auto *title = dynamic_cast<TitleSvgItem *>(item);
    if (!title)
        return;
    QPen pen = title->lineParams();
    pen.setColor(color);
    title->setLineParams(pen);
    title->update();
}

void setClipTime(QGraphicsItem *item, int ms)
{
    if (auto *title = dynamic_cast<TitleSvgItem *>(item)) {
        title->setCurrentTime(ms);
        title->update();
    }
}

void setClipLength(QGraphicsItem *item, int ms)
{
    if (auto *title = dynamic_cast<TitleSvgItem *>(item)) {
        title->setDuration(ms);
        title->update();
    }
}

void setSpeed(QGraphicsItem *item, double speed)
{
    if (auto *title = dynamic_cast<TitleSvgItem *>(item)) {
        title->setAnimationSpeed(speed);
        title->update();
    }
}

QSizeF ownSize(const QGraphicsItem *item)
{
    return item->boundingRect().size();
}
