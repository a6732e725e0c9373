// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_VIRTUALDEVICE_H
#define MIOLKA_EMULATOR_VIRTUALDEVICE_H

#include "emulator/devicememories.h"
#include "emulator/divemoment.h"

#include <QElapsedTimer>
#include <QObject>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

class QTimer;
class cMyDive;
struct cMyRecordFields;

/// The device without its port: lines in, lines out, and a dive between them while it simulates.
///
/// Everything runs in the caller's thread, which must be the one that it lives in. A dive goes on
/// with each line; with an event loop also between lines.
///
/// It shows what the real device does as seen from outside; it is not derived from its firmware.
class cMyVirtualDevice : public QObject
{
    Q_OBJECT

public:
    explicit cMyVirtualDevice(QObject* parent = nullptr);
    ~cMyVirtualDevice() override;
    Q_DISABLE_COPY_MOVE(cMyVirtualDevice)

    /// Takes one line, with or without its line end, and returns the one line that answers it,
    /// ended by CR LF. What is not understood changes nothing and is answered by "?".
    QByteArray answer(const QByteArray& line);

    /// The whole memory as it is now, in a simulation with what is simulated.
    [[nodiscard]] QByteArray memory(MemoryType area) const { return m_memories.bytes(area); }

    /// Replaces a whole memory, OTP and ROM too; false, with nothing changed, if bytes is not of
    /// the memory's size.
    bool setMemory(MemoryType area, const QByteArray& bytes);

    /// All memories at once, as kept in a state file: those that a simulation would leave if it
    /// ended now.
    [[nodiscard]] cMyDeviceMemories memories() const;
    void setMemories(const cMyDeviceMemories& memories) { m_memories = memories; }

    /// A measured value in RAM by its number, in the value's own unit.
    [[nodiscard]] qint16 value(int number) const { return m_memories.value(number); }
    void setValue(int number, qint16 value) { m_memories.setValue(number, value); }

    /// Stores it in OTP.
    void setSerialNumber(quint16 number) { m_memories.setSerialNumber(number); }

    /// Stores a settings file in EEPROM; bytes that it does not give keep their values. False if
    /// it cannot be read.
    bool loadSettings(const QString& path);

    /// From "#SIMUL" until "#ROOT", or until the device starts anew.
    [[nodiscard]] bool isSimulating() const { return m_dive != nullptr; }

    /// What gives the time in ms, from any start on and never going back; not to be set during a
    /// simulation. Without it, time passes as it does.
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

    /// Time passes with the lines instead, that many ms before each, and not between them: a dive
    /// is the same then however fast the host is. Not to be set during a simulation.
    void setLineTime(int milliseconds);

    /// A charger is there or not; not at first. A simulation notices with its next sample.
    void setCharging(bool isCharging);

public slots:
    /// The cable was pulled. A device told "#OFF" before goes off now and loses its RAM.
    void unplugged();

    /// The cable was put in: the device is on, and in no mode.
    void plugged();

signals:
    void resetRequested();    ///< emitted before the answer is returned, as is the next one
    void bootRequested();     ///< the boot loader is to take over
    void simulationStarted(); ///< not again while isSimulating()

    /// The device says something; emitted before the answer to the line that came next.
    void spoke(const cMySpokenMessage& message);

private:
    enum class Direction { None, Read, Write };

    /// False if there is no such word.
    bool command(const QByteArray& word);
    void leaveModes();
    void select(MemoryType area);
    void startSimulation();
    void endSimulation();
    void clearStatistics();

    /// Takes what samples are due.
    void advance();
    void advanceByTimer();
    void startTimer();
    void speak(const QVector<cMySpokenMessage>& messages);
    [[nodiscard]] QByteArray record(const QByteArray& text);
    [[nodiscard]] QByteArray dataRecord(const cMyRecordFields& fields, const QByteArray& text);
    [[nodiscard]] static QByteArray printed(quint16 offset, const QByteArray& bytes);

    cMyDeviceMemories m_memories;
    std::optional<MemoryType> m_area;
    Direction m_direction = Direction::None;
    quint16 m_upperAddress = 0;
    bool m_hex = false;
    bool m_offWhenUnplugged = false;
    bool m_charging = false;
    QElapsedTimer m_uptime; ///< the clock, if no other is set
    std::function<qint64()> m_clock;
    int m_lineTime = 0;       ///< in ms; 0 unless time passes with the lines
    qint64 m_timeOfLines = 0; ///< of all so far, in ms
    qint64 m_diveStart = 0;   ///< by m_clock
    std::unique_ptr<cMyDive> m_dive;
    QTimer* m_timer; ///< for the next sample
};

#endif
