// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/faults.h"

#include <QStringList>

#include <algorithm>

namespace {

/// In ms; long enough for a reader to see the packets one by one.
constexpr int betweenPackets = 2;

const QByteArray noticeLine = QByteArrayLiteral("!BATTERY 87\r\n");

std::optional<double> probabilityOf(const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && value >= 0 && value <= 1 ? std::make_optional(value) : std::nullopt;
}

std::optional<int> countOf(const QString& text, int least)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= least ? std::make_optional(value) : std::nullopt;
}

bool setProbability(double& place, const QString& text)
{
    const auto value = probabilityOf(text);
    place = value.value_or(place);
    return value.has_value();
}

bool setCount(std::optional<int>& place, const QString& text, int least)
{
    place = countOf(text, least);
    return place.has_value();
}

/// A fault that has no number.
bool addPlain(cMyFaults& faults, const QString& name)
{
    static const cMyFaults none; // GCC 12 with -O3 takes a temporary one for uninitialised
    if (name == QLatin1String("none")) {
        faults = none;
    } else if (name == QLatin1String("split")) {
        faults.split = true;
    } else if (name == QLatin1String("join")) {
        faults.join = true;
    } else if (name == QLatin1String("nul")) {
        faults.nul = true;
    } else {
        return false;
    }
    return true;
}

bool addNumbered(cMyFaults& faults, const QString& name, const QString& number)
{
    if (name == QLatin1String("silent-after")) {
        return setCount(faults.silentAfter, number, 0);
    }
    if (name == QLatin1String("vanish-at")) {
        return setCount(faults.vanishAt, number, 1);
    }
    if (name == QLatin1String("garbage")) {
        return setProbability(faults.garbage, number);
    }
    if (name == QLatin1String("notice")) {
        return setProbability(faults.notice, number);
    }
    if (name == QLatin1String("bad-checksum")) {
        return setProbability(faults.badChecksum, number);
    }
    if (name == QLatin1String("long")) {
        return setProbability(faults.longLine, number);
    }
    return false;
}

/// Another last hex digit, so that the line still is one of hex digits.
QByteArray withWrongChecksum(const QByteArray& answer)
{
    QByteArray line = answer.trimmed();
    const char last = line.at(line.size() - 1);
    line[line.size() - 1] = last == '0' ? '1' : '0';
    return line + "\r\n";
}

} // namespace

bool cMyFaults::add(const QString& specs)
{
    cMyFaults sum = *this;
    for (const QString& spec : specs.split(QLatin1Char(','))) {
        const QString text = spec.trimmed();
        const auto sign = text.indexOf(QLatin1Char('='));
        const bool isKnown =
            sign < 0 ? addPlain(sum, text) : addNumbered(sum, text.left(sign), text.mid(sign + 1));
        if (!isKnown) {
            return false;
        }
    }
    *this = sum;
    return true;
}

cMyFaultInjector::cMyFaultInjector(quint32 seed) : m_random(seed) {}

cMyFaultInjector::Fate cMyFaultInjector::nextLine()
{
    ++m_lines;
    if (m_faults.vanishAt == m_lines) {
        m_faults.vanishAt.reset();
        return Fate::Vanish;
    }
    const bool isSilent = m_faults.silentAfter && m_lines > *m_faults.silentAfter;
    return isSilent ? Fate::Silence : Fate::Answer;
}

QVector<cMyPacket> cMyFaultInjector::packets(const QByteArray& answer)
{
    constexpr int mostNuls = 4;
    QVector<cMyPacket> packets;
    int gap = 0;
    if (happens(m_faults.notice)) {
        packets.append({noticeLine, 0});
        gap = betweenPackets;
    }
    QByteArray body = spoiled(answer);
    if (m_faults.nul) {
        body.prepend(1 + m_random.bounded(mostNuls), '\0');
    }
    if (m_faults.join) {
        body.prepend(noticeLine);
    }
    if (m_faults.split) {
        appendPieces(packets, body, gap);
    } else {
        packets.append({body, gap});
    }
    return packets;
}

bool cMyFaultInjector::happens(double probability)
{
    return probability > 0 && m_random.generateDouble() < probability;
}

QByteArray cMyFaultInjector::garbageLine()
{
    constexpr int longest = 64;
    constexpr int byteValues = 256;
    QByteArray line(1 + m_random.bounded(longest), '\0');
    for (char& byte : line) {
        do {
            byte = static_cast<char>(m_random.bounded(byteValues));
        } while (byte == '\n');
    }
    // A reader skips NULs at the start, so that one of these would bring forth a notice.
    while (line.at(0) == '!' || line.at(0) == '\0' || line.at(0) == '\n') {
        line[0] = static_cast<char>(m_random.bounded(byteValues));
    }
    return line + '\n';
}

QByteArray cMyFaultInjector::spoiled(const QByteArray& answer)
{
    if (happens(m_faults.longLine)) {
        return QByteArray(longLineSize, 'x') + "\r\n";
    }
    if (happens(m_faults.garbage)) {
        return garbageLine();
    }
    if (answer.startsWith(':') && happens(m_faults.badChecksum)) {
        return withWrongChecksum(answer);
    }
    return answer;
}

void cMyFaultInjector::appendPieces(QVector<cMyPacket>& packets, const QByteArray& bytes, int gap)
{
    constexpr int mostPieces = 4;
    int start = 0;
    for (int left = 2 + m_random.bounded(mostPieces - 1); left > 0 && start < bytes.size();
         --left) {
        // Each piece after this one needs a byte.
        const int rest = static_cast<int>(bytes.size()) - start;
        const int most = std::max(1, rest - (left - 1));
        const int size = left == 1 ? rest : 1 + m_random.bounded(most);
        packets.append({bytes.mid(start, size), start == 0 ? gap : betweenPackets});
        start += size;
    }
}
