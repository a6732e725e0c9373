// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_MODELSESSION_H
#define MIOLKA_TESTS_EMULATOR_MODELSESSION_H

#include "emulator/divemodel.h"
#include "tests/emulator/divetest.h"

namespace support {

using Numbers = QVector<int>;
using Expected = QVector<QPair<int, int>>; ///< number of a value, and what it is to be

constexpr int surfacePressure = 1000;

/// Samples one after another, at the times that the settings ask for.
class ModelSession
{
public:
    explicit ModelSession(const DiveSettings& settings, const cMyDiveValues& start = {})
        : m_model(settings.area(), start), m_readings(start)
    {
        set(emulator::AtmosphericPressure, surfacePressure);
        set(emulator::Temperature, 200);
    }

    void set(int number, int value)
    {
        m_readings.at(static_cast<std::size_t>(number)) = static_cast<qint16>(value);
    }

    /// The sample of that number; more is the absolute pressure in mbar above 1000.
    const cMyDiveMoment& diveAt(qint64 index, int more)
    {
        set(emulator::AbsolutePressure, surfacePressure + more);
        last = m_model.sample(index, m_readings);
        return last;
    }

    /// The next sample.
    const cMyDiveMoment& dive(int more) { return diveAt(m_index++, more); }

    void dive(const Numbers& profile)
    {
        for (const int more : profile) {
            dive(more);
        }
    }

    [[nodiscard]] int value(int number) const
    {
        return last.values.at(static_cast<std::size_t>(number));
    }

    [[nodiscard]] cMyDiveModel& model() { return m_model; }

    cMyDiveMoment last;

private:
    cMyDiveModel m_model;
    cMyDiveValues m_readings;
    qint64 m_index = 0;
};

/// Every value that differs from what is expected.
inline QString differences(const ModelSession& session, const Expected& expected)
{
    QString text;
    for (const auto& [number, value] : expected) {
        if (session.value(number) != value) {
            text += QStringLiteral("value %1 is %2 instead of %3; ")
                        .arg(number)
                        .arg(session.value(number))
                        .arg(value);
        }
    }
    return text;
}

inline cMyDiveValues startingWith(const Expected& values)
{
    cMyDiveValues start{};
    for (const auto& [number, value] : values) {
        start.at(static_cast<std::size_t>(number)) = static_cast<qint16>(value);
    }
    return start;
}

} // namespace support

#endif
