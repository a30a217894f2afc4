// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleDocument_p.h"

#include "AdmissionLimits_p.h"
#include "Picture_p.h"

#include <QVariant>

namespace {

/// Takes no room and shows nothing. Without a picture, Qt would look for a file.
QImage transparentPixel()
{
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(Qt::transparent);
    return pixel;
}

} // namespace

TitleDocument::TitleDocument(QObject *parent) : QTextDocument(parent)
{
    connect(this, &QTextDocument::contentsChange, this, &TitleDocument::forgetPicturesOfNoText);
}

QVariant TitleDocument::loadResource(int type, const QUrl &name)
{
    if (type != ImageResource)
        return QVariant();
    if (name.scheme() != QLatin1String("data"))
        return transparentPixel();
    auto picture = m_pictures.find(name);
    if (picture == m_pictures.end())
        picture = m_pictures.insert(name, unpacked(name));
    return *picture;
}

QImage TitleDocument::unpacked(const QUrl &name)
{
    const EmbeddedPicture picture =
            embeddedPicture(QLatin1String("data:") + name.path(QUrl::FullyDecoded));
    if (picture.pixels == 0 || m_pixels + picture.pixels > AdmissionLimits::picturePixels.most)
        return transparentPixel();
    const QImage image = QImage::fromData(picture.file, picture.format.constData());
    if (image.isNull())
        return transparentPixel();
    m_pixels += picture.pixels;
    // As it is drawn, or it would be converted each time.
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

/// Of the text before, when another is set.
void TitleDocument::forgetPicturesOfNoText()
{
    if (!isEmpty())
        return;
    m_pictures.clear();
    m_pixels = 0;
}
