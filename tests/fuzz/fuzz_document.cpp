// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FuzzApplication.h"
#include "FuzzCheck.h"
#include "TitleInput.h"

#include <Scene/SvgDocument.h>

#include <QImage>
#include <QPainter>

#include <memory>

// Everything that an editor does with a title, with any text and at any times. The pictures of two
// documents of one text, of which one saves its whole tree for each frame, have to be the same.

namespace {

constexpr int longestTitle = 64 * 1024;

QImage blank()
{
    QImage picture(64, 36, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

QImage frame(SvgDocument &document, int ms)
{
    QImage picture = blank();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    document.paint(&painter, ms);
    return picture;
}

QString savedText(const SvgDocument &document)
{
    return QString::fromUtf8(document.data().left(int(document.size())));
}

void play(const TitleInput &input)
{
    SvgDocument document(input.text);
    SvgDocument plain(input.text);
    document.setBounds(QRectF(0.0, 0.0, 64.0, 36.0));
    plain.setBounds(document.bounds());
    for (const int ms : input.times) {
        const QImage picture = frame(document, ms);
        plain.documentRoot();
        FUZZ_CHECK(frame(plain, ms) == picture);
        FUZZ_CHECK(document.isLoaded() || picture == blank());
    }
}

void adjust(const TitleInput &input)
{
    SvgDocument document(input.text);
    frame(document, input.times.front());
    document.prepareAdjustedAttibutes({QStringLiteral("fill"), QStringLiteral("stroke"),
                                       QStringLiteral("xlink:href"), QStringLiteral("id")});
    for (const int ms : input.times) {
        document.adjustAttribute(QStringLiteral("fill"), QStringLiteral("#0a64c8"));
        document.adjustAttribute(QStringLiteral("xlink:href"), QStringLiteral("#a"));
        frame(document, ms);
    }
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    FUZZ_CHECK(bool(clipping) == document.hasClipping());
    if (clipping)
        frame(*clipping, input.times.back());
}

/// What was saved of a title is a title, too, unless a value that was written exceeds a limit.
void saveAndLoad(const TitleInput &input)
{
    SvgDocument document(input.text);
    document.applyAnimation(input.times.back());
    document.saveToBuffer();
    SvgDocument again(savedText(document));
    FUZZ_CHECK(!again.isLoaded() || document.isLoaded());
    frame(again, input.times.front());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    makeFuzzApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, size_t size)
{
    if (size > longestTitle)
        return -1;
    const TitleInput input(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    play(input);
    adjust(input);
    saveAndLoad(input);
    return 0;
}
