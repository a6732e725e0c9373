// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_VIRTUALPORT_H
#define MIOLKA_EMULATOR_VIRTUALPORT_H

#include "device/lineassembler.h"
#include "emulator/faults.h"
#include "emulator/pseudoterminal.h"

#include <QElapsedTimer>
#include <QObject>

#include <deque>

class QSocketNotifier;
class QTimer;
class cMyTrace;
class cMyVirtualDevice;

/// A device on a pseudo-terminal: reads lines, answers through the device and its faults.
///
/// It lives in one thread, which may be moved to while it is unplugged; it and its device are then
/// used in that thread only. A program that does not read never blocks it.
class cMyVirtualPort : public QObject
{
    Q_OBJECT

public:
    /// Bytes kept for a program that does not read; what is answered beyond is lost.
    static constexpr int mostPending = 1024 * 1024;

    /// The device is not owned; with none the port takes everything and answers nothing.
    explicit cMyVirtualPort(cMyVirtualDevice* device, quint32 seed = 0, QObject* parent = nullptr);

    /// Takes effect from the next line on.
    void setDevice(cMyVirtualDevice* device) { m_device = device; }

    /// Whether there is a pseudo-terminal for programs to open.
    [[nodiscard]] bool isPlugged() const { return m_terminal.isOpen(); }

    /// What a program opens; empty while unplugged.
    [[nodiscard]] QString path() const { return m_terminal.path(); }

    /// Time from a line to its answer, in ms. Lines are answered one after another.
    void setLatency(int milliseconds) { m_latency = milliseconds; }
    [[nodiscard]] int latency() const { return m_latency; }

    /// What goes wrong from the next line on.
    void setFaults(const cMyFaults& faults) { m_injector.setFaults(faults); }
    [[nodiscard]] const cMyFaults& faults() const { return m_injector.faults(); }

    /// Not owned; none by default.
    void setTrace(cMyTrace* trace, int number);

public slots:
    /// Opens a new pseudo-terminal; false if the system has none. Nothing if there is one.
    bool plug();

    /// Closes it, so that a program sees a hang-up; what was not sent is lost.
    void unplug();

signals:
    /// The device disappears by itself; it is unplugged when the receivers have returned.
    void vanished();

    /// A line was taken; lines are counted from plugging in on.
    void lineServed(int count);

private:
    void receive();
    void serve(const QByteArray& line);
    void send(const QVector<cMyPacket>& packets);
    void sendDue();
    void put(const QByteArray& bytes);
    void flush();
    void traceSent(const QByteArray& bytes);
    void startTimer();
    [[nodiscard]] static QSocketNotifier* released(QSocketNotifier* notifier);

    struct Waiting
    {
        QByteArray bytes;
        qint64 due; ///< by m_clock
    };

    cMyVirtualDevice* m_device;
    cMyPseudoTerminal m_terminal;
    cMyLineAssembler m_lines;
    cMyFaultInjector m_injector;
    cMyTrace* m_trace = nullptr;
    int m_number = 0;
    int m_latency = 0;
    QElapsedTimer m_clock;
    QTimer* m_timer;
    QSocketNotifier* m_reader = nullptr;
    QSocketNotifier* m_writer = nullptr;
    std::deque<Waiting> m_queue;
    qint64 m_lastDue = 0;
    QByteArray::size_type m_queuedBytes = 0;
    QByteArray m_pending;   ///< due, and not yet taken by the terminal
    QByteArray m_traceLine; ///< sent and without a line end so far
};

#endif
