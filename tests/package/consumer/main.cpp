// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <Scene/SvgDocument.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

// Paints one frame of a title: half way through its move, the square covers the
// right half of the picture, and the left half stays transparent.
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);

    SvgDocument document(QStringLiteral(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 40 20\">"
            "<rect width=\"20\" height=\"20\" fill=\"#ff0000\">"
            "<animateTransform attributeName=\"transform\" type=\"translate\" begin=\"0s\""
            " dur=\"2s\" from=\"0\" to=\"40\" fill=\"freeze\"/>"
            "</rect></svg>"));
    QImage picture(40, 20, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    document.applyAnimation(1000);
    document.paint(&painter, 1000);
    painter.end();

    const QRgb left = picture.pixel(10, 10);
    const QRgb right = picture.pixel(30, 10);
    if (left != 0 || right != qRgb(255, 0, 0)) {
        std::fprintf(stderr, "left pixel %08x, right pixel %08x\n", left, right);
        return 1;
    }
    return 0;
}
