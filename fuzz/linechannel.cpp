// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/linechannel.h"

#include "emulator/pseudoterminal.h"
#include "fuzz/lines.h"
#include "fuzz/support.h"

#include <QSerialPort>

#include <algorithm>
#include <array>

#include <unistd.h>

using fuzz::expect;

namespace {

/// The line behind every input, so that no exchange waits in vain.
const QByteArray lastLine = QByteArrayLiteral("\nthe last\r\n");

/// A serial line, kept from input to input, and the far end of it.
class Line
{
public:
    Line()
    {
        expect(m_terminal.open(), "there is a pseudo-terminal");
        m_port.setPortName(m_terminal.path());
        expect(m_port.open(QIODevice::ReadWrite), "a pseudo-terminal can be opened");
    }

    [[nodiscard]] QSerialPort& port() { return m_port; }

    /// Sends what there is room for, and returns what is left.
    [[nodiscard]] QByteArray send(const QByteArray& bytes) const
    {
        const auto size = static_cast<std::size_t>(bytes.size());
        const ssize_t sent = write(m_terminal.descriptor(), bytes.constData(), size);
        return bytes.mid(static_cast<int>(std::max<ssize_t>(sent, 0)));
    }

    /// Lets pass what the program has sent.
    void drain() const
    {
        std::array<char, 4096> bytes{};
        while (read(m_terminal.descriptor(), bytes.data(), bytes.size()) > 0) {
        }
    }

private:
    cMyPseudoTerminal m_terminal;
    QSerialPort m_port;
};

/// The far end: sends the next piece whenever the channel is about to wait.
class Sender
{
public:
    Sender(fuzz::SteppedInput& input, const Line& line) : m_input(input), m_line(line) {}

    void sendNext()
    {
        m_line.drain();
        while (m_pending.isEmpty() && !m_input.atEnd() && m_pieces < mostPieces) {
            m_pending = m_input.nextPiece();
            ++m_pieces;
        }
        if (m_pending.isEmpty() && !m_isEnded) {
            m_pending = lastLine;
            m_isEnded = true;
        }
        m_sent += m_pending;
        m_pending = m_line.send(m_pending);
        m_sent.chop(m_pending.size());
    }

    /// All that was sent until now.
    [[nodiscard]] const QByteArray& sent() const { return m_sent; }

    [[nodiscard]] bool isEnded() const { return m_isEnded && m_pending.isEmpty(); }

private:
    static constexpr int mostPieces = 64; ///< each takes a moment
    fuzz::SteppedInput& m_input;
    const Line& m_line;
    QByteArray m_pending;
    QByteArray m_sent;
    int m_pieces = 0;
    bool m_isEnded = false;
};

bool isNotice(const QByteArray& line)
{
    return line.startsWith('!');
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static Line line;
    fuzz::SteppedInput input(bytes, size);
    Sender sender(input, line);
    cMyLineChannel channel([&sender] {
        sender.sendNext();
        return cMyLineChannel::Haste::None;
    });
    QStringList replies;
    do {
        QString reply;
        expect(channel.exchange(line.port(), QStringLiteral("#ROOT\r\n"), reply),
               "an answer that came is taken");
        replies.append(reply);
    } while (!sender.isEnded() || replies.last() != QStringLiteral("the last\r\n"));

    QByteArrayList expected = fuzz::deviceLines(sender.sent());
    expected.erase(std::remove_if(expected.begin(), expected.end(), isNotice), expected.end());
    expect(replies == fuzz::replies(expected), "answers are the lines that came, but for notices");
    return 0;
}
