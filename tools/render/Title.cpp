// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Title.h"

#include "Failure.h"

#include <Scene/SvgDocument.h>

#include <QPainter>
#include <QtDebug>

Title::Title(const QString &name, const QString &text, const QColor &color)
    : m_name(name), m_document(std::make_unique<SvgDocument>(text))
{
    if (!m_document->isLoaded())
        throw Failure(m_name, m_document->errorString());
    if (size().isEmpty())
        throw Failure(m_name, QStringLiteral("no usable view box"));

    const QString fill = QStringLiteral("fill");
    const QString stroke = QStringLiteral("stroke");
    m_document->prepareAdjustedAttibutes({fill, stroke});
    m_clipping.reset(m_document->makeClippingDocument());
    if (m_clipping && !m_clipping->isLoaded())
        qWarning("The clip paths erase nothing: %s", qPrintable(m_clipping->errorString()));
    if (color.isValid()) {
        m_document->adjustAttribute(fill, color.name());
        m_document->adjustAttribute(stroke, color.name());
    }
}

Title::~Title() = default;

QSize Title::size() const
{
    return m_document->bounds().size().toSize();
}

int Title::duration() const
{
    return m_document->animationDurationTotal();
}

void Title::paint(QPainter *painter, int ms)
{
    painter->save();
    m_document->paint(painter, ms);
    painter->restore();
    if (!m_clipping)
        return;
    painter->save();
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    m_clipping->paint(painter, ms);
    painter->restore();
}
