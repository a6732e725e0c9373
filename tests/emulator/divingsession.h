// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_DIVINGSESSION_H
#define MIOLKA_TESTS_EMULATOR_DIVINGSESSION_H

#include "emulator/spokenform.h"
#include "emulator/virtualdevice.h"
#include "tests/emulator/devicelines.h"
#include "tests/emulator/divetest.h"

namespace support {

/// A device on the planet of the tests, with a clock that goes when it is told to.
class DivingSession
{
public:
    explicit DivingSession(const Changes& changes = {})
    {
        device.setMemory(EEPROM, DiveSettings(changes).image());
        device.setClock([this] { return now; });
        QObject::connect(
            &device, &cMyVirtualDevice::spoke, &device,
            [this](const cMySpokenMessage& message) { said += emulator::spokenLine(message); });
    }

    void simulate() { askAll(device, "#ROOT #RAM #SIMUL #WRITE"); }

    /// The host's line that simulates a depth in cm, which is in mbar here.
    QByteArray write(int depth)
    {
        const int pressure = 1013 + depth;
        QByteArray bytes;
        bytes.append(static_cast<char>(pressure));
        bytes.append(static_cast<char>(pressure >> 8));
        return ask(device, record(emulator::valueAddress(emulator::AbsolutePressure), bytes));
    }

    qint64 now = 5000000; // in ms; the device has been on for a while
    QStringList said;
    cMyVirtualDevice device;
};

} // namespace support

#endif
