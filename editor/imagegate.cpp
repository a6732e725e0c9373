// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/imagegate.h"

#include "image/memoryarea.h"

cMyImageGate::cMyImageGate(cMyMemoryArea& image, QObject* parent) : QObject(parent), m_image(image)
{
}

void cMyImageGate::correct(quint32 address, const QVector<quint8>& bytes)
{
    const auto count = static_cast<unsigned short>(bytes.size());
    if (m_image.data(static_cast<int>(address), count) != bytes) {
        m_image.setData(address, bytes);
    }
}

void cMyImageGate::setData(quint32 address, const QVector<quint8>& bytes)
{
    if (m_shut == 0) {
        m_image.setData(address, bytes);
    }
}
