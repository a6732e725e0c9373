// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_FAULTS_H
#define MIOLKA_EMULATOR_FAULTS_H

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>
#include <QVector>

#include <optional>

/// What goes wrong between a device and its program. A value; nothing goes wrong by default.
struct cMyFaults
{
    bool split = false;             ///< answers leave in pieces
    bool join = false;              ///< answers leave in one packet with a notice before them
    bool nul = false;               ///< NUL bytes before the answer
    double garbage = 0;             ///< probability of a line of random bytes for an answer
    double notice = 0;              ///< probability of a notice in a packet before the answer
    double badChecksum = 0;         ///< probability of a wrong last digit in a record
    double longLine = 0;            ///< probability of an endless line for an answer
    std::optional<int> silentAfter; ///< lines answered from plugging in on, then none
    std::optional<int> vanishAt;    ///< the line on which the device disappears, counted from 1

    /// Adds what a text like "split,garbage=0.1" says; "none" takes away all that stands before
    /// it. False, with nothing changed, if a part of it is not understood.
    bool add(const QString& specs);
};

/// Bytes that leave the device at once.
struct cMyPacket
{
    QByteArray bytes;
    int delay = 0; ///< ms after the packet before it
};

/// Turns answers into what the program gets of them. The same seed gives the same faults.
class cMyFaultInjector
{
public:
    /// What becomes of a line that the device receives.
    enum class Fate { Answer, Silence, Vanish };

    /// Characters of a line that the fault "long" sends, without its line end.
    static constexpr int longLineSize = 100000;

    /// Without faults; the seed is that of everything that happens by chance.
    explicit cMyFaultInjector(quint32 seed = 0);

    /// They take effect from the next line on.
    void setFaults(const cMyFaults& faults) { m_faults = faults; }
    [[nodiscard]] const cMyFaults& faults() const { return m_faults; }

    /// Lines are counted anew.
    void plugged() { m_lines = 0; }

    /// Counts a line that came. Vanish is used up by being returned.
    Fate nextLine();

    /// Lines since the device was plugged in.
    [[nodiscard]] int lines() const { return m_lines; }

    /// What is sent for an answer, which is a line with its line end; never empty.
    [[nodiscard]] QVector<cMyPacket> packets(const QByteArray& answer);

private:
    [[nodiscard]] bool happens(double probability);
    [[nodiscard]] QByteArray garbageLine();
    [[nodiscard]] QByteArray spoiled(const QByteArray& answer);
    void appendPieces(QVector<cMyPacket>& packets, const QByteArray& bytes, int gap);

    QRandomGenerator m_random;
    cMyFaults m_faults;
    int m_lines = 0;
};

#endif
