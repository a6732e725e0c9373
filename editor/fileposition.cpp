// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fileposition.h"

#include "image/memoryarea.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The nearest integer; a number that 32 bits cannot hold becomes the nearest one that they can.
qint32 rounded(double value)
{
    using Limits = std::numeric_limits<qint32>;
    if (std::isnan(value)) {
        return 0;
    }
    const double shifted = value + (value < 0 ? -0.5 : 0.5);
    return static_cast<qint32>(std::clamp(shifted, double{Limits::min()}, double{Limits::max()}));
}

} // namespace

void cMyFilePosition::setFilePosition(cMyMemoryArea* area, unsigned int position, DataLength length,
                                      DataType type)
{
    m_area = area;
    m_position = position;
    m_length = length;
    m_type = type;
}

QVector<unsigned char> cMyFilePosition::dataToFile(double value) const
{
    const auto number = static_cast<quint32>(rounded(value));
    const auto low = static_cast<unsigned char>(number);
    const auto high = static_cast<unsigned char>(number >> 8);
    switch (m_length) {
    case Length8:
        return {low};
    case Length16:
        return {low, high};
    }
    return {};
}

bool cMyFilePosition::differsFrom(const QVector<unsigned char>& bytes) const
{
    return m_area != nullptr && m_area->data(static_cast<int>(m_position),
                                             static_cast<unsigned short>(bytes.size())) != bytes;
}
