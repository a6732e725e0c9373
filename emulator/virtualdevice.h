// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_VIRTUALDEVICE_H
#define MIOLKA_EMULATOR_VIRTUALDEVICE_H

#include "emulator/devicememories.h"

#include <QObject>

#include <optional>

struct cMyRecordFields;

/// The device without its port: lines in, lines out. Everything runs in the caller's thread.
///
/// It shows what the real device does as seen from outside; it is not derived from its firmware.
class cMyVirtualDevice : public QObject
{
    Q_OBJECT

public:
    explicit cMyVirtualDevice(QObject* parent = nullptr);

    /// Takes one line, with or without its line end, and returns the one line that answers it,
    /// ended by CR LF. What is not understood changes nothing and is answered by "?".
    QByteArray answer(const QByteArray& line);

    [[nodiscard]] QByteArray memory(MemoryType area) const { return m_memories.bytes(area); }

    /// Replaces a whole memory, OTP and ROM too; false, with nothing changed, if bytes is not of
    /// the memory's size.
    bool setMemory(MemoryType area, const QByteArray& bytes);

    /// All memories at once, as kept in a state file.
    [[nodiscard]] cMyDeviceMemories memories() const { return m_memories; }
    void setMemories(const cMyDeviceMemories& memories) { m_memories = memories; }

    /// A measured value in RAM by its number, in the value's own unit.
    [[nodiscard]] qint16 value(int number) const { return m_memories.value(number); }
    void setValue(int number, qint16 value) { m_memories.setValue(number, value); }

    void setSerialNumber(quint16 number) { m_memories.setSerialNumber(number); }

    /// Stores a settings file in EEPROM; bytes that it does not give keep their values. False if
    /// it cannot be read.
    bool loadSettings(const QString& path);

    /// From "#SIMUL" until "#ROOT", or until the device starts anew.
    [[nodiscard]] bool isSimulating() const { return m_simulating; }

public slots:
    /// The cable was pulled. A device told "#OFF" before goes off now and loses its RAM.
    void unplugged();

    /// The cable was put in: the device is on, and in no mode.
    void plugged();

signals:
    void resetRequested(); ///< emitted before the answer is returned, as is the next one
    void bootRequested();
    void simulationStarted(); ///< not again while isSimulating()

private:
    enum class Direction { None, Read, Write };

    /// False if there is no such word.
    bool command(const QByteArray& word);
    void leaveModes();
    void select(MemoryType area);
    void startSimulation();
    [[nodiscard]] QByteArray record(const QByteArray& text);
    [[nodiscard]] QByteArray dataRecord(const cMyRecordFields& fields, const QByteArray& text);
    [[nodiscard]] static QByteArray printed(quint16 offset, const QByteArray& bytes);

    cMyDeviceMemories m_memories;
    std::optional<MemoryType> m_area;
    Direction m_direction = Direction::None;
    quint16 m_upperAddress = 0;
    bool m_hex = false;
    bool m_simulating = false;
    bool m_offWhenUnplugged = false;
};

#endif
