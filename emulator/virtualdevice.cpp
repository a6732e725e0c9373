// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualdevice.h"

#include "device/protocol.h"
#include "emulator/dive.h"
#include "image/memoryarea.h"
#include "image/wholerecord.h"

#include <QTimer>

#include <algorithm>

namespace {

const QByteArray notUnderstood = QByteArrayLiteral("?");

QByteArray withoutLineEnd(const QByteArray& line)
{
    auto size = line.size();
    if (size > 0 && line.at(size - 1) == '\n') {
        --size;
    }
    if (size > 0 && line.at(size - 1) == '\r') {
        --size;
    }
    return line.left(size);
}

QByteArray payload(const cMyRecordFields& fields)
{
    QByteArray bytes(fields.size, '\0');
    std::copy_n(fields.data.cbegin(), fields.size, bytes.begin());
    return bytes;
}

/// What is measured once nobody simulates another pressure any more.
void surface(cMyDeviceMemories& memories)
{
    memories.setValue(emulator::AbsolutePressure, memories.value(emulator::AtmosphericPressure));
}

} // namespace

cMyVirtualDevice::cMyVirtualDevice(QObject* parent) : QObject(parent), m_timer(new QTimer(this))
{
    m_uptime.start();
    m_clock = [this] {
        return m_uptime.elapsed();
    };
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &cMyVirtualDevice::advanceByTimer);
}

cMyVirtualDevice::~cMyVirtualDevice() = default;

QByteArray cMyVirtualDevice::answer(const QByteArray& line)
{
    m_timeOfLines += m_lineTime;
    advance(); // with what was simulated until now; the line is about what comes
    const QByteArray text = withoutLineEnd(line);
    QByteArray reply = notUnderstood;
    if (text.startsWith(':')) {
        reply = record(text);
    } else if (command(text)) {
        reply = text;
    }
    return reply + device::lineEnd;
}

void cMyVirtualDevice::setLineTime(int milliseconds)
{
    m_lineTime = milliseconds;
    m_clock = [this] {
        return m_timeOfLines;
    };
}

bool cMyVirtualDevice::setMemory(MemoryType area, const QByteArray& bytes)
{
    return m_memories.setBytes(area, bytes);
}

cMyDeviceMemories cMyVirtualDevice::memories() const
{
    cMyDeviceMemories memories = m_memories;
    if (isSimulating()) {
        surface(memories);
    }
    return memories;
}

bool cMyVirtualDevice::loadSettings(const QString& path)
{
    const auto settings = emulator::settingsOver(memory(EEPROM), path);
    return settings && setMemory(EEPROM, *settings);
}

void cMyVirtualDevice::unplugged()
{
    if (!m_offWhenUnplugged) {
        return;
    }
    m_offWhenUnplugged = false;
    endSimulation();
    m_memories.powerOn();
}

void cMyVirtualDevice::plugged()
{
    leaveModes();
}

bool cMyVirtualDevice::command(const QByteArray& word)
{
    for (int number = 0; number < emulator::memoryCount; ++number) {
        const auto area = static_cast<MemoryType>(number);
        if (word == device::memoryWord(area).toLatin1()) {
            select(area);
            return true;
        }
    }
    if (word == device::rootWord) {
        leaveModes();
    } else if (word == device::hexWord) {
        m_hex = true;
    } else if (word == device::readWord) {
        m_direction = Direction::Read;
    } else if (word == device::writeWord) {
        m_direction = Direction::Write;
    } else if (word == device::simulationWord) {
        startSimulation();
    } else if (word == device::clearWord) {
        clearStatistics();
    } else if (word == device::offWord) {
        m_offWhenUnplugged = true;
    } else if (word == device::bootWord || word == device::resetWord) {
        leaveModes();
        word == device::bootWord ? emit bootRequested() : emit resetRequested();
    } else {
        return false;
    }
    return true;
}

void cMyVirtualDevice::leaveModes()
{
    m_hex = false;
    m_direction = Direction::None;
    m_area.reset();
    m_upperAddress = 0;
    endSimulation(); // whose last message may let a receiver begin another, in modes of its own
}

void cMyVirtualDevice::select(MemoryType area)
{
    m_area = area;
    m_upperAddress = 0;
}

void cMyVirtualDevice::startSimulation()
{
    if (isSimulating()) {
        return;
    }
    const QByteArray bytes = memory(EEPROM);
    cMyMemoryArea settings;
    settings.setData(0, QVector<quint8>(bytes.cbegin(), bytes.cend()));
    m_dive = std::make_unique<cMyDive>(settings, m_memories, m_charging);
    m_diveStart = m_clock();
    emit simulationStarted();
    advance();
    startTimer();
}

void cMyVirtualDevice::endSimulation()
{
    advance();
    if (!isSimulating()) { // any more, if a receiver of what was said has ended it
        return;
    }
    m_timer->stop();
    const QVector<cMySpokenMessage> last = m_dive->finish();
    m_dive.reset();
    surface(m_memories);
    speak(last);
}

void cMyVirtualDevice::clearStatistics()
{
    m_memories.clearStatistics();
    if (isSimulating()) {
        m_dive->clearStatistics();
    }
}

void cMyVirtualDevice::setCharging(bool isCharging)
{
    advance();
    m_charging = isCharging;
    if (isSimulating()) {
        m_dive->setCharging(isCharging);
    }
}

void cMyVirtualDevice::advance()
{
    if (isSimulating()) {
        speak(m_dive->advanceTo(m_clock() - m_diveStart, m_memories));
    }
}

void cMyVirtualDevice::advanceByTimer()
{
    advance();
    startTimer();
}

void cMyVirtualDevice::startTimer()
{
    if (isSimulating() && m_lineTime == 0) {
        const qint64 wait = m_diveStart + m_dive->nextSample() - m_clock();
        m_timer->start(static_cast<int>(std::max<qint64>(wait, 1)));
    }
}

void cMyVirtualDevice::speak(const QVector<cMySpokenMessage>& messages)
{
    for (const cMySpokenMessage& message : messages) {
        emit spoke(message);
    }
}

QByteArray cMyVirtualDevice::record(const QByteArray& text)
{
    // A simulation exchanges records from its first line on, without asking for them.
    if ((!m_hex && !isSimulating()) || !m_area || m_direction == Direction::None) {
        return notUnderstood;
    }
    // In every memory, so that bytes behind 64 KiB are refused and not stored at the start of one
    // that is shorter.
    if (const auto upper = image::upperAddress(text)) {
        m_upperAddress = *upper;
        return text;
    }
    const auto fields = image::wholeRecord(text);
    if (!fields || !image::isChecksumRight(*fields)) {
        return notUnderstood;
    }
    if (fields->type == image::DataRecord) {
        return dataRecord(*fields, text);
    }
    const bool isEnd =
        fields->type == image::EndOfFileRecord && fields->offset == 0 && fields->size == 0;
    return isEnd ? text : notUnderstood;
}

QByteArray cMyVirtualDevice::dataRecord(const cMyRecordFields& fields, const QByteArray& text)
{
    const qint64 address = (static_cast<qint64>(m_upperAddress) << 16) + fields.offset;
    if (m_direction == Direction::Read) {
        const QByteArray bytes = m_memories.read(*m_area, address, fields.size);
        const bool isInside = address + fields.size <= emulator::memorySize(*m_area);
        return isInside ? printed(fields.offset, bytes) : notUnderstood;
    }
    if (*m_area == OTP || *m_area == ROM || !m_memories.write(*m_area, address, payload(fields))) {
        return notUnderstood;
    }
    return text;
}

QByteArray cMyVirtualDevice::printed(quint16 offset, const QByteArray& bytes)
{
    std::array<quint8, 255> data{};
    std::copy(bytes.cbegin(), bytes.cend(), data.begin());
    cMyRecordLine line;
    line.count = static_cast<quint8>(bytes.size());
    line.offset = offset;
    line.type = image::DataRecord;
    line.payload = data.data();
    line.payloadSize = static_cast<int>(bytes.size());
    line.checksum =
        image::recordChecksum(offset, image::DataRecord, 0, data.data(), line.payloadSize);
    QByteArray text(image::recordTextSize(line.payloadSize), Qt::Uninitialized);
    image::encodeRecord(line, text.data());
    return text;
}
