// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "FuzzApplication.h"
#include "FuzzCheck.h"
#include "TitleInput.h"
#include "TitleMutator.h"

#include <Scene/SvgDocument.h>

#include <QImage>
#include <QPainter>

#include <algorithm>
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

void play(SvgDocument &document, const TitleInput &input)
{
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

void clip(SvgDocument &document, int ms)
{
    const std::unique_ptr<SvgDocument> clipping(document.makeClippingDocument());
    FUZZ_CHECK(bool(clipping) == document.hasClipping());
    if (clipping)
        frame(*clipping, ms);
}

void adjust(SvgDocument &document, int ms)
{
    const QString fill = QStringLiteral("fill");
    const QString reference = QStringLiteral("xlink:href");
    document.prepareAdjustedAttibutes({fill, reference, QStringLiteral("no such name")});
    document.adjustAttribute(fill, QStringLiteral("#0a64c8"));
    document.adjustAttribute(reference, QStringLiteral("#a"));
    frame(document, ms);
}

/// What is saved of a title that can't be shown can't be shown either.
void saveAndLoad(SvgDocument &document, int ms)
{
    document.saveToBuffer();
    SvgDocument again(QString::fromUtf8(document.data().left(int(document.size()))));
    FUZZ_CHECK(!again.isLoaded() || document.isLoaded());
    frame(again, ms);
}

QByteArray bytesOf(const quint8 *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

/// Where the times of an input begin: at its NUL, or after it when it has none.
int timesStart(const QByteArray &input)
{
    const int end = input.indexOf('\0');
    return end < 0 ? input.size() : end;
}

/// Keeps an input that does not fit as it is.
size_t handBack(const QByteArray &input, quint8 *data, size_t size, size_t most)
{
    if (size_t(input.size()) > most)
        return size;
    std::copy(input.begin(), input.end(), data);
    return size_t(input.size());
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
    const TitleInput input(bytesOf(data, size));
    SvgDocument document(input.text);
    play(document, input);
    clip(document, input.times.front());
    adjust(document, input.times.back());
    saveAndLoad(document, input.times.front());
    return 0;
}

extern "C" size_t LLVMFuzzerMutate(quint8 *data, size_t size, size_t most);

// One change in twelve is of any bytes.
extern "C" size_t LLVMFuzzerCustomMutator(quint8 *data, size_t size, size_t most, unsigned int seed)
{
    TitleMutator mutator(seed);
    QByteArray input = bytesOf(data, size);
    const int end = timesStart(input);
    switch (seed % 12) {
    case 0:
        return LLVMFuzzerMutate(data, size, most);
    case 1:
        input = input.left(end) + '\0' + mutator.times();
        break;
    default:
        input = mutator.mutated(input.left(end)) + input.mid(end);
    }
    return handBack(input, data, size, most);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const quint8 *first, size_t firstSize,
                                            const quint8 *second, size_t secondSize, quint8 *out,
                                            size_t most, unsigned int seed)
{
    TitleMutator mutator(seed);
    const QByteArray target = bytesOf(first, firstSize);
    const QByteArray source = bytesOf(second, secondSize);
    const int end = timesStart(target);
    const QByteArray crossed = mutator.crossed(target.left(end), source.left(timesStart(source)));
    return handBack(crossed + target.mid(end), out, 0, most);
}
