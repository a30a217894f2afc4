// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "Picture_p.h"

#include "AdmissionLimits_p.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

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

/// How many chunks of a PNG file hold packed texts or profiles.
int countPackedTexts(const QByteArray &file)
{
    constexpr int signatureSize = 8;
    constexpr int headSize = 8; // of a chunk: length and type
    constexpr int checkSize = 4;
    static const QByteArrayList packed{QByteArrayLiteral("zTXt"), QByteArrayLiteral("iTXt"),
                                       QByteArrayLiteral("iCCP")};
    int count = 0;
    for (qint64 at = signatureSize; at + headSize <= file.size();) {
        count += packed.contains(file.mid(int(at) + 4, 4)) ? 1 : 0;
        at += headSize + qint64(qFromBigEndian<quint32>(file.constData() + at)) + checkSize;
    }
    return count;
}

/// Whether unpacking takes time and memory in proportion to the pixels only.
bool isPlainlyPacked(const QByteArray &file, const QByteArray &format)
{
    if (format == "png")
        return countPackedTexts(file) <= AdmissionLimits::packedTexts.most;
    return file.count("\xFF\xDA") <= AdmissionLimits::pictureScans.most;
}

} // namespace

EmbeddedPicture embeddedPicture(const QString &reference)
{
    if (reference.size() > AdmissionLimits::pictureLength.most)
        return {};
    QByteArray file = embeddedFile(reference);
    const QByteArray format = formatOf(file);
    if (format.isEmpty() || !isPlainlyPacked(file, format))
        return {};
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    const QSize size = QImageReader(&buffer, format).size();
    if (size.isEmpty())
        return {};
    return {file, format, qint64(size.width()) * size.height()};
}

qint64 pixelsOfPicture(const QString &reference)
{
    return embeddedPicture(reference).pixels;
}
