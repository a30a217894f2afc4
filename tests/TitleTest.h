// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include "WarningFreeTest.h"

#include <Scene/SvgDocument.h>

#include <QCoreApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>

/// The text of a UTF-8 file; fails the test when it cannot be read.
inline QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        const QString failure = path + QStringLiteral(": ") + file.errorString();
        QTest::qFail(qPrintable(failure), __FILE__, __LINE__);
        return QString();
    }
    return QString::fromUtf8(file.readAll());
}

/// The text of tests/data/<name>.
inline QString readTestData(const QString &name)
{
    return readText(QDir(QStringLiteral(TITLESCENE_TEST_DATA)).filePath(name));
}

/// The text of templates/<name>.
inline QString readTemplate(const QString &name)
{
    return readText(QDir(QStringLiteral(TITLESCENE_TEMPLATES)).filePath(name));
}

/// An SVG document with the given content.
inline QString svgTitle(const QString &content)
{
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\""
                          " xmlns:xlink=\"http://www.w3.org/1999/xlink\""
                          " viewBox=\"0 0 100 50\">%1</svg>")
            .arg(content);
}

/// The document's text, without what is left over after it.
inline QByteArray savedText(const SvgDocument &document)
{
    return document.data().left(int(document.size()));
}

/// The tree of the document's text; null when the text is broken.
inline QDomDocument savedTree(const SvgDocument &document)
{
    QDomDocument tree;
    if (!tree.setContent(savedText(document)))
        tree.clear();
    return tree;
}

/// The first element below a node with an id; null when there is none.
inline QDomElement elementById(const QDomNode &root, const QString &id)
{
    for (QDomElement child = root.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.attribute(QStringLiteral("id")) == id)
            return child;
        const QDomElement below = elementById(child, id);
        if (!below.isNull())
            return below;
    }
    return QDomElement();
}

/// The document's bounds as they look at a time in milliseconds, one pixel for each unit.
inline QImage renderAt(SvgDocument &document, int ms, const QColor &background = Qt::transparent)
{
    const QRect area = document.bounds().toAlignedRect();
    QImage picture(area.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(background);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    document.paint(&painter, ms);
    return picture;
}

inline QString sizeText(const QImage &picture)
{
    return QStringLiteral("%1x%2 pixels").arg(picture.width()).arg(picture.height());
}

/// Whether the picture shows nothing: no pixels, or all of one colour.
inline bool isBlank(const QImage &picture)
{
    if (picture.isNull())
        return true;
    const QRgb first = picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != first)
                return false;
        }
    }
    return true;
}

/// The largest difference of any of the four channels, 0 to 255.
inline int channelDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

/// Saves what was expected, what came and where they differ (red) side by side; returns the path.
inline QString saveDifference(const QImage &actual, const QImage &expected,
                              const QImage &difference)
{
    QString name = QCoreApplication::applicationName() + QLatin1Char('-')
            + QString::fromLatin1(QTest::currentTestFunction());
    if (const char *tag = QTest::currentDataTag())
        name += QLatin1Char('-') + QString::fromUtf8(tag);
    name.replace(QRegularExpression(QStringLiteral("[^\\w-]+")), QStringLiteral("_"));

    QImage sheet(expected.width() + actual.width() + difference.width(),
                 std::max(expected.height(), actual.height()), QImage::Format_ARGB32);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    painter.drawImage(0, 0, expected);
    painter.drawImage(expected.width(), 0, actual);
    painter.drawImage(expected.width() + actual.width(), 0, difference);
    painter.end();

    const QString path = QDir::current().absoluteFilePath(name + QStringLiteral("-difference.png"));
    sheet.save(path);
    return path;
}

/// Says in what the pictures differ, or nothing when no channel of any pixel is more than the
/// tolerance apart. An expected picture that is blank is a difference too, since two documents that
/// draw nothing prove nothing: where nothing is to be drawn, test with isBlank().
inline QString pictureDifference(const QImage &actual, const QImage &expected, int tolerance)
{
    if (isBlank(expected))
        return QStringLiteral("The expected picture is blank");
    if (actual.size() != expected.size())
        return QStringLiteral("%1 instead of %2").arg(sizeText(actual), sizeText(expected));

    QImage difference(expected.size(), QImage::Format_ARGB32);
    difference.fill(Qt::black);
    int count = 0;
    int largest = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const int apart = channelDifference(actual.pixel(x, y), expected.pixel(x, y));
            largest = std::max(largest, apart);
            if (apart > tolerance) {
                ++count;
                difference.setPixel(x, y, qRgb(255, 0, 0));
            }
        }
    }
    if (count == 0)
        return QString();
    return QStringLiteral("%1 pixels are more than %2 apart, at most %3: %4")
            .arg(count)
            .arg(tolerance)
            .arg(largest)
            .arg(saveDifference(actual, expected, difference));
}

/// Fails the test function when the pictures differ; see pictureDifference().
#define COMPARE_PICTURES(actual, expected, tolerance) \
    do { \
        const QString difference_ = pictureDifference(actual, expected, tolerance); \
        QVERIFY2(difference_.isEmpty(), qPrintable(difference_)); \
    } while (false)
