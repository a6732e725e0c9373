// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sim/simworker.h"

#include "device/protocol.h"
#include "device/serialline.h"
#include "image/hexrecord.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QThread>

#include <algorithm>

namespace {

constexpr unsigned short pressureAddress = 0x0100;
constexpr unsigned short surfacePressureAddress = 0x0110;
constexpr unsigned short valuesAddress = 0x0100;
constexpr int recordCount = 8;
constexpr int recordSize = 16;
constexpr double mostPressure = 32767; ///< in mbar, as many as 16 bits with a sign hold
constexpr double pressurePerMetre = 100;
constexpr double centimetresPerMetre = 100;
constexpr double nanosecondsPerSecond = 1e9;

/// The words after which the device takes or gives bytes of its RAM as those of a dive.
QStringList simulationMode(const char* direction)
{
    return {device::simulationWord, device::memoryWord(RAM), direction};
}

/// What ends one direction, so that the other can be chosen.
QString endRecord()
{
    return cMyHexRecord(0, {}).toString();
}

QVector<QString> valueRequests()
{
    QVector<QString> requests;
    for (int i = 0; i < recordCount; ++i) {
        const auto address = static_cast<unsigned short>(valuesAddress + recordSize * i);
        requests.append(cMyHexRecord(address, QVector<unsigned char>(recordSize, 0)).toString());
    }
    return requests;
}

} // namespace

/// What is kept from cycle to cycle.
struct cMySimWorker::Dive
{
    double surfacePressure = 0; ///< in mbar
    double pressure = 0;        ///< in mbar, with its fraction
    qint64 lastReading = 0;     ///< of the clock, in ns
    QVector<QString> values;
};

cMySimWorker::cMySimWorker(QObject* parent)
    : QObject(parent), m_channel([this] {
          if (mustLeave()) {
              return cMyLineChannel::Haste::Leave;
          }
          return m_stop.load(std::memory_order_relaxed) ? cMyLineChannel::Haste::Stop
                                                        : cMyLineChannel::Haste::None;
      })
{
    qRegisterMetaType<QVector<QString>>("QVector<QString>"); // valuesChanged() is queued
    // Never restarted, or fractions would be lost at each cycle.
    QElapsedTimer uptime;
    uptime.start();
    m_clock = [uptime] {
        return uptime.nsecsElapsed();
    };
}

void cMySimWorker::doWork(QString const& portName, double speed)
{
    m_speed.store(speed, std::memory_order_relaxed);
    bool isLeftInOrder = false;
    {
        QSerialPort port;
        isLeftInOrder = openPort(portName, &port) && simulate(port);
    }
    // Here and not at the start: a stop that came before the work had begun holds.
    m_stop.store(false, std::memory_order_relaxed);
    emit finished(isLeftInOrder);
}

void cMySimWorker::setSpeed(int newSpeed)
{
    m_speed.store(newSpeed / centimetresPerMetre, std::memory_order_relaxed);
}

void cMySimWorker::stopWork()
{
    m_stop.store(true, std::memory_order_relaxed);
}

bool cMySimWorker::mustLeave()
{
    return QThread::currentThread()->isInterruptionRequested();
}

bool cMySimWorker::mustEnd() const
{
    return m_stop.load(std::memory_order_relaxed) || mustLeave();
}

bool cMySimWorker::openPort(QString const& portName, QSerialPort* port)
{
    if (device::openPort(*port, portName)) {
        return true;
    }
    if (!portName.isEmpty()) {
        emit serialPortError(port->errorString());
    }
    return false;
}

bool cMySimWorker::writeSingleLine(QSerialPort& port, QString const& line, QString& reply)
{
    // Who must leave asks nothing more but what takes leave of the device.
    if (mustLeave() && !m_isClosing) {
        return false;
    }
    m_isInStep = m_channel.exchange(port, line + QLatin1String(device::lineEnd), reply);
    return m_isInStep;
}

bool cMySimWorker::writeLines(QSerialPort& port, const QStringList& lines)
{
    QString reply;
    return std::all_of(lines.cbegin(), lines.cend(),
                       [&](const QString& line) { return writeSingleLine(port, line, reply); });
}

bool cMySimWorker::simulate(QSerialPort& port)
{
    m_isClosing = false;
    m_isInStep = true;
    m_channel.settle(port);
    Dive dive;
    bool isGoing = begin(port, dive);
    while (isGoing && !mustEnd()) {
        isGoing = cycle(port, dive);
    }
    // A cycle that was cut short leaves the device listening all the same.
    m_isClosing = isGoing || (m_isInStep && mustLeave());
    return m_isClosing && writeLines(port, {device::rootWord, device::clearWord});
}

bool cMySimWorker::begin(QSerialPort& port, Dive& dive)
{
    QString reply;
    if (!writeLines(port, simulationMode(device::readWord)) ||
        !writeSingleLine(port, cMyHexRecord(surfacePressureAddress, {0, 0}).toString(), reply)) {
        return false;
    }
    cMyHexRecord record;
    record.fromString(reply);
    const QVector<quint8> data = record.data();
    if (data.size() < 2) {
        return false;
    }
    dive.surfacePressure = data.at(0) + 256 * data.at(1);
    dive.pressure = dive.surfacePressure;
    dive.lastReading = m_clock();
    return true;
}

bool cMySimWorker::readSimValues(QSerialPort& port, QVector<QString>& values)
{
    static const QVector<QString> requests = valueRequests();
    values.resize(requests.size());
    for (int i = 0; i < requests.size(); ++i) {
        if (!writeSingleLine(port, requests.at(i), values[i])) {
            return false;
        }
    }
    return true;
}

bool cMySimWorker::cycle(QSerialPort& port, Dive& dive)
{
    static const QStringList toWriting =
        QStringList(endRecord()) + simulationMode(device::writeWord);
    static const QStringList toReading =
        QStringList(endRecord()) + simulationMode(device::readWord);
    if (!readSimValues(port, dive.values)) {
        return false;
    }
    emit valuesChanged(dive.values);
    if (!writeLines(port, toWriting)) {
        return false;
    }
    const qint64 now = m_clock();
    const double seconds = static_cast<double>(now - dive.lastReading) / nanosecondsPerSecond;
    dive.lastReading = now;
    const double change = m_speed.load(std::memory_order_relaxed) * seconds * pressurePerMetre;
    dive.pressure = std::min(mostPressure, std::max(dive.surfacePressure, dive.pressure + change));
    return writePressure(port, dive.pressure) && writeLines(port, toReading);
}

bool cMySimWorker::writePressure(QSerialPort& port, double pressure)
{
    const auto whole = static_cast<quint16>(pressure);
    const QVector<unsigned char> bytes = {static_cast<unsigned char>(whole & 0xFFU),
                                          static_cast<unsigned char>(whole >> 8U)};
    QString reply;
    return writeSingleLine(port, cMyHexRecord(pressureAddress, bytes).toString(), reply);
}
