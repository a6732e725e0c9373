// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/divelog.h"

#include "tests/endtoend/session.h"

namespace support {

namespace {

constexpr int valuesAddress = 0x0100;
constexpr int recordSize = 16;
constexpr int recordCount = 8;
constexpr int dataPosition = 9; // behind the colon, the count, the offset and the type

int hex(const QString& text, int position, int digits)
{
    constexpr int base = 16;
    bool isNumber = false;
    const int number = text.mid(position, digits).toInt(&isNumber, base);
    return isNumber ? number : -1;
}

/// Two bytes, low one first, in two's complement.
int signedWord(const QString& record, int byte)
{
    const int position = dataPosition + 2 * byte;
    const int number = hex(record, position, 2) + 256 * hex(record, position + 2, 2);
    return number < 32768 ? number : number - 65536;
}

} // namespace

DiveLog::DiveLog(const Session& session, int device)
    : m_trace(session.tracePath()),
      // Devices are numbered only where there are several.
      m_line(QStringLiteral("^[0-9.]+ ([<>*]) (?:([0-9]+) (?=[#:!?]|[0-9.]+ s ))?(.*)$")),
      m_device(device)
{
    if (m_trace.open(QIODevice::ReadOnly)) {
        m_trace.seek(m_trace.size());
    }
}

void DiveLog::update()
{
    m_begun += m_trace.readAll();
    const auto end = m_begun.lastIndexOf('\n') + 1;
    const QStringList lines = QString::fromLatin1(m_begun.left(end)).split(QLatin1Char('\n'));
    m_begun.remove(0, end);
    for (const QString& line : lines) {
        takeLine(line);
    }
}

void DiveLog::takeLine(const QString& line)
{
    const QRegularExpressionMatch match = m_line.match(line);
    const QString device = match.captured(2);
    if (!match.hasMatch() || (!device.isEmpty() && device.toInt() != m_device)) {
        return;
    }
    QString text = match.captured(3);
    text.remove(QStringLiteral("\\r\\n"));
    if (match.captured(1) == QLatin1String(">")) {
        m_sent += text;
        m_isAnswered = false;
    } else if (match.captured(1) == QLatin1String("<")) {
        m_isAnswered = true;
        m_answers += text;
        takeAnswer(text);
    } else {
        takeSpoken(text);
    }
}

void DiveLog::takeAnswer(const QString& answer)
{
    const int address = valuesAddress + recordSize * m_nextRecord;
    const QString start = QStringLiteral(":10") +
                          QStringLiteral("%1").arg(address, 4, 16, QLatin1Char('0')) +
                          QStringLiteral("00");
    if (!answer.startsWith(start, Qt::CaseInsensitive)) {
        m_nextRecord = 0;
        return;
    }
    std::size_t number = static_cast<std::size_t>(m_nextRecord) * recordSize / 2;
    for (int byte = 0; byte < recordSize; byte += 2) {
        m_values.at(number++) = signedWord(answer, byte);
    }
    if (++m_nextRecord == recordCount) {
        m_cycles += m_values;
        m_nextRecord = 0;
    }
}

void DiveLog::takeSpoken(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^([0-9.]+) s  ([0-9.]+) m  rule ([0-9]+): (.*)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (match.hasMatch()) {
        m_spoken.append({match.captured(1).toDouble(), match.captured(2).toDouble(),
                         match.captured(3).toInt(), match.captured(4)});
    }
}

QStringList DiveLog::words(int rule) const
{
    QStringList words;
    for (const SpokenMessage& message : m_spoken) {
        if (rule == 0 || message.rule == rule) {
            words += message.words;
        }
    }
    return words;
}

bool DiveLog::hasTakenLeave() const
{
    return m_isAnswered && m_sent.size() >= 2 && m_sent.last() == QLatin1String("#CLEAR") &&
           m_sent.at(m_sent.size() - 2) == QLatin1String("#ROOT");
}

} // namespace support
