// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Picture_p.h"

#include "AdmissionLimits_p.h"

#include <QBuffer>
#include <QImageReader>

namespace {

/// The file in a reference as the renderer finds it, whatever the reference says before.
QByteArray embeddedFile(const QString &reference)
{
    static const QLatin1String opening("base64,");
    const int start = reference.lastIndexOf(opening);
    if (start < 0 || !reference.trimmed().startsWith(QLatin1String("data")))
        return QByteArray();
    return QByteArray::fromBase64(reference.mid(start + opening.size()).toLatin1());
}

QByteArray formatOf(const QByteArray &file)
{
    if (file.startsWith("\x89PNG\r\n\x1a\n"))
        return QByteArrayLiteral("png");
    if (file.startsWith("\xFF\xD8\xFF"))
        return QByteArrayLiteral("jpeg");
    return QByteArray();
}

} // namespace

qint64 pixelsOfPicture(const QString &reference)
{
    if (reference.size() > AdmissionLimits::pictureLength.most)
        return 0;
    QByteArray file = embeddedFile(reference);
    const QByteArray format = formatOf(file);
    if (format.isEmpty())
        return 0;
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    const QSize size = QImageReader(&buffer, format).size();
    return size.isEmpty() ? 0 : qint64(size.width()) * size.height();
}
