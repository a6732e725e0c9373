// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_DIVETEST_H
#define MIOLKA_TESTS_EMULATOR_DIVETEST_H

#include "tests/emulator/setfield.h"
#include "tests/support/template.h"

#include <QMetaType>
#include <QPair>
#include <QVector>

namespace support {

/// Fields of the settings by their names, and what they are to hold, in stored units.
using Changes = QVector<QPair<const char*, int>>;

/// The default settings, but for a planet and a water in which one mbar is one cm, as near as makes
/// no difference down to 150 m: 10 m/s^2 and fresh water of 5 degrees, 999.96675 kg/m^3, make
/// 1.0000333 cm of each.
class DiveSettings
{
public:
    explicit DiveSettings(const Changes& changes = {})
    {
        const QByteArray image = templateImage();
        m_area.setData(0, QVector<quint8>(image.cbegin(), image.cend()));
        setField(m_area, QStringLiteral("gravity"), 32768);
        setField(m_area, QStringLiteral("temperatureSource"), 0);
        setField(m_area, QStringLiteral("fixedTemperature"), 50);
        for (const auto& [name, number] : changes) {
            setField(m_area, QString::fromLatin1(name), number);
        }
    }

    [[nodiscard]] const cMyMemoryArea& area() const { return m_area; }
    [[nodiscard]] QByteArray image() const { return bytesOf(m_area); }

private:
    cMyMemoryArea m_area;
};

} // namespace support

Q_DECLARE_METATYPE(support::Changes)

#endif
