// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_SIM_SIMWORKER_H
#define MIOLKA_SIM_SIMWORKER_H

#include "device/linechannel.h"

#include <QObject>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>

class QSerialPort;

/// Drives one simulated dive on the device: reads what the device makes of the pressure, and gives
/// it a new one that follows from the time passed and the vertical speed, again and again.
///
/// Lives in a thread of its own, which doWork() occupies until the simulation ends. setSpeed() and
/// stopWork() may be called from any thread meanwhile. When the thread is asked for its
/// interruption the simulation ends within half a second, with the device in its root mode if it
/// still answers. While it runs the device's port is the worker's alone.
class cMySimWorker : public QObject
{
    Q_OBJECT

public:
    explicit cMySimWorker(QObject* parent = nullptr);

    /// What gives the time in ns, from any start on and never going back; not to be set during a
    /// simulation, whose thread asks it once at the beginning and once in each cycle, before the
    /// speed is looked at. Without it, time passes as it does.
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

public slots:
    /// The whole simulation, from opening the port to finished(). The speed is in m/s, positive
    /// downwards.
    void doWork(QString const& portName, double speed);

    /// In cm/s, positive downwards.
    void setSpeed(int newSpeed);

    /// Ends the simulation after the present cycle; before doWork() after its start.
    void stopWork();

signals:
    /// The port could not be opened; the text is the port's own.
    void serialPortError(QString const& error);

    /// Once at the end of every doWork(), the port closed again; true only if the simulation was
    /// stopped and the device took leave of it.
    void finished(bool status);

    /// Never emitted.
    void detpthValues(QString const& depths);

    /// Once in a cycle: the eight lines with which the device answered for its measured values,
    /// records of 16 bytes from 0x0100 on.
    void valuesChanged(QVector<QString> const&);

private:
    struct Dive;

    bool openPort(QString const& portName, QSerialPort* port);
    bool writeSingleLine(QSerialPort& port, QString const& line, QString& reply);
    bool readSimValues(QSerialPort& port, QVector<QString>& values);
    bool writeLines(QSerialPort& port, const QStringList& lines);
    bool simulate(QSerialPort& port);
    bool begin(QSerialPort& port, Dive& dive);
    bool cycle(QSerialPort& port, Dive& dive);
    bool writePressure(QSerialPort& port, double pressure);
    [[nodiscard]] bool mustEnd() const;
    [[nodiscard]] static bool mustLeave();

    std::atomic<double> m_speed{0};
    std::atomic<bool> m_stop{false};
    bool m_isInStep = false; ///< every line sent was answered
    bool m_isClosing = false;
    cMyLineChannel m_channel;
    std::function<qint64()> m_clock;
};

#endif
