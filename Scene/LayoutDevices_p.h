// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QObject>
#include <QVector>

class QPaintDevice;
class QTextDocument;

/// The paint devices of all items that show one document. A layout has room for a single one: that
/// of the item which came last, of those that still show the document. Belongs to the document.
class LayoutDevices : public QObject
{
public:
    /// Lays the document out by this device from now on.
    static void add(QTextDocument &document, QPaintDevice *device);

    /// Goes on with the device before it. Without another one the document is measured on the
    /// screen again, as soon as something lays it out.
    static void remove(QTextDocument &document, QPaintDevice *device);

private:
    explicit LayoutDevices(QTextDocument &document);

    static LayoutDevices *of(const QTextDocument &document);
    void install();

    QTextDocument &m_document;
    QVector<QPaintDevice *> m_devices;
};
