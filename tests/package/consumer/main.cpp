// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <Scene/AnimatableAttribute.h>
#include <Scene/SvgDocument.h>

#include <boost/make_shared.hpp>

#include <QDomDocument>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>

#include <cmath>
#include <cstdio>

namespace {

/// A kind of animated value that the library does not have: the key values 1, 10 and 100, with
/// equal ratios between them.
class Decades final : public AnimatableAttribute
{
public:
    Decades(const QDomNode &element, const QDomNode &root)
        : AnimatableAttribute(element, root, QStringLiteral("r"))
    {
        setValueCount(3);
        setParams(0, 2000, 1, true, Linear);
    }

    QString valueForTime(int time) const override
    {
        const KeyValuePosition position = keyValuesAt(time);
        return QString::number(qRound(std::pow(
                10.0, position.index + (position.nextIndex - position.index) * position.fraction)));
    }
};

/// What the attribute is at a time.
QString radiusAt(int time)
{
    QDomDocument tree;
    QDomElement root = tree.createElement(QStringLiteral("svg"));
    QDomElement circle = tree.createElement(QStringLiteral("circle"));
    tree.appendChild(root);
    root.appendChild(circle);
    const boost::shared_ptr<AnimatableAttribute> decades =
            boost::make_shared<Decades>(circle, root);
    decades->apply(root, time);
    return circle.attribute(QStringLiteral("r"));
}

} // namespace

// Writes values of a kind of its own, then paints one frame of a title: half way through its move,
// the square covers the right half of the picture, and the left half stays transparent.
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);

    const QString radii =
            QStringList{radiusAt(500), radiusAt(1000), radiusAt(2000)}.join(QLatin1Char(' '));
    if (radii != QLatin1String("3 10 100")) {
        std::fprintf(stderr, "radii %s\n", qPrintable(radii));
        return 1;
    }

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
