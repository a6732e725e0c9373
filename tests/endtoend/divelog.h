// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_DIVELOG_H
#define MIOLKA_ENDTOEND_DIVELOG_H

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <array>

namespace support {

class Session;

/// The measured values that the device told in one cycle of a simulation, by their numbers and as
/// they lie in its RAM.
using RamValues = std::array<int, 64>;

/// A message of the device, as the trace tells it.
struct SpokenMessage
{
    double time = 0;  ///< in s since the simulation began
    double depth = 0; ///< in m
    int rule = 0;     ///< that called for it, counted from 1
    QString words;
};

/// What the device told from the time on when this is made: follows the trace, which is read once.
/// Takes the bytes apart by itself, so that it stands for nothing that the program made of them.
class DiveLog
{
public:
    /// The device's number is needed where there are several.
    explicit DiveLog(const Session& session, int device = 0);

    /// Takes in what has come since.
    void update();

    /// One entry for each cycle in which all values were told.
    [[nodiscard]] const QVector<RamValues>& cycles() const { return m_cycles; }
    [[nodiscard]] const QVector<SpokenMessage>& spoken() const { return m_spoken; }

    /// The words of all messages, or of those that one rule called for.
    [[nodiscard]] QStringList words(int rule = 0) const;

    /// Lines to the device, without line ends.
    [[nodiscard]] const QStringList& sent() const { return m_sent; }

    /// What came from the device, without line ends: one line for each that was sent, if all is
    /// well.
    [[nodiscard]] const QStringList& answers() const { return m_answers; }

    /// Whether the last line to the device was answered.
    [[nodiscard]] bool isAnswered() const { return m_isAnswered; }

    /// Whether all ended with what takes leave of a simulation, and was answered.
    [[nodiscard]] bool hasTakenLeave() const;

private:
    void takeLine(const QString& line);
    void takeAnswer(const QString& answer);
    void takeSpoken(const QString& text);

    QFile m_trace;
    QRegularExpression m_line;
    int m_device;
    QByteArray m_begun; ///< a line that has not ended yet
    RamValues m_values{};
    int m_nextRecord = 0;
    bool m_isAnswered = true;
    QStringList m_sent;
    QStringList m_answers;
    QVector<RamValues> m_cycles;
    QVector<SpokenMessage> m_spoken;
};

} // namespace support

#endif
