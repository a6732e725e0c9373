// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/devicememory.h"

#include "cli/devicesession.h"
#include "device/replies.h"
#include "device/requests.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

namespace {

constexpr int identitySize = 7;
constexpr int memorySizePosition = 6;

/// Reads size bytes from the start of a memory.
cMyOutcome readMemory(cMyDeviceSession& session, const QString& title, MemoryType area, int size,
                      unsigned short recordLength, cMyMemoryArea& bytes)
{
    cMyMemoryArea zeros;
    zeros.setData(static_cast<quint32>(size - 1), 0);
    QStringList replies;
    cMyOutcome outcome =
        session.exchange(title, device::readRequest(area, zeros.toHex(0, size, recordLength)),
                         cMyDeviceSession::Answers::Records, &replies);
    if (!outcome.isDone()) {
        return outcome;
    }
    for (const cMyReadRecord& record : device::readRecords(replies)) {
        bytes.setData(record.address, record.data);
    }
    bytes.clearModified();
    return {};
}

} // namespace

namespace cli {

cMyOutcome identify(cMyDeviceSession& session, cMyDeviceIdentity& identity)
{
    cMyMemoryArea memory;
    cMyOutcome outcome = readMemory(session, QStringLiteral("Asking who it is"), OTP, identitySize,
                                    identitySize, memory);
    const QVector<quint8> bytes = memory.data(0, identitySize);
    if (outcome.isDone()) {
        identity.serialNumber = bytes.value(0) | bytes.value(1) << 8;
        identity.memorySize = bytes.value(memorySizePosition);
    }
    return outcome;
}

cMyOutcome readSettings(cMyDeviceSession& session, cMyMemoryArea& image)
{
    return readMemory(session, QStringLiteral("Reading settings"), EEPROM, image::settingsImageSize,
                      image::settingsRecordLength, image);
}

cMyOutcome writeSettings(cMyDeviceSession& session, const cMyMemoryArea& image)
{
    const QStringList records =
        image.toHex(0, image::settingsImageSize, image::settingsRecordLength);
    return session.exchange(QStringLiteral("Writing settings"),
                            device::writeRequest(EEPROM, records), cMyDeviceSession::Answers::Any);
}

} // namespace cli
