// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "LayoutDevices_p.h"

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>

LayoutDevices::LayoutDevices(QTextDocument &document) : QObject(&document), m_document(document)
{
    // Told before the new layout lays anything out.
    connect(&document, &QTextDocument::documentLayoutChanged, this, &LayoutDevices::install);
}

LayoutDevices *LayoutDevices::of(const QTextDocument &document)
{
    for (QObject *child : document.children()) {
        if (auto *devices = dynamic_cast<LayoutDevices *>(child))
            return devices;
    }
    return nullptr;
}

void LayoutDevices::add(QTextDocument &document, QPaintDevice *device)
{
    LayoutDevices *devices = of(document);
    if (!devices)
        devices = new LayoutDevices(document);
    devices->m_devices.append(device);
    devices->install();
    // A layout takes no notice of its device until the text changes.
    document.markContentsDirty(0, document.characterCount());
}

void LayoutDevices::remove(QTextDocument &document, QPaintDevice *device)
{
    LayoutDevices *devices = of(document);
    if (!devices)
        return;
    devices->m_devices.removeOne(device);
    const QPaintDevice *used = document.documentLayout()->paintDevice();
    if (!used || used == device) // and not one that somebody else has put there
        devices->install();
}

void LayoutDevices::install()
{
    m_document.documentLayout()->setPaintDevice(m_devices.isEmpty() ? nullptr : m_devices.last());
}
