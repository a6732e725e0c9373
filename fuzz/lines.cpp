// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/lines.h"

#include "device/lineassembler.h"
#include "fuzz/support.h"
#include "image/hexcodec.h"

#include <cstring>

namespace fuzz {

QByteArrayList words(const QByteArray& text)
{
    QByteArrayList found;
    QByteArray word;
    const auto take = [&found, &word] {
        if (!word.isEmpty()) {
            found.append(word.left(image::maxRecordText));
        }
        word.clear();
    };
    for (const char character : text) {
        if (character != '\0' && std::strchr(" \t\n\v\f\r", character) != nullptr) {
            take();
        } else {
            word.append(character);
        }
    }
    take();
    return found;
}

QByteArrayList deviceLines(const QByteArray& bytes)
{
    QByteArrayList lines = bytes.split('\n');
    lines.removeLast(); // has not come to its end
    for (QByteArray& line : lines) {
        line = line.left(cMyLineAssembler::longestLine) + '\n';
        while (line.startsWith('\0')) {
            line.remove(0, 1);
        }
        const auto end = line.indexOf('\0');
        line = end < 0 ? line : line.left(end);
    }
    return lines;
}

QStringList replies(const QByteArrayList& lines)
{
    QStringList texts;
    for (const QByteArray& line : lines) {
        texts.append(QString::fromUtf8(line));
    }
    return texts;
}

SteppedInput::SteppedInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray input = bytesOf(bytes, size);
    const auto end = input.indexOf('\n');
    m_steps = input.left(end < 0 ? 0 : end);
    m_bytes = input.mid(end + 1);
}

int SteppedInput::nextStep()
{
    if (m_steps.isEmpty()) {
        return 1;
    }
    const char step = m_steps.at(m_step++ % m_steps.size());
    return static_cast<quint8>(step - '0');
}

QByteArray SteppedInput::nextPiece()
{
    QByteArray piece = m_bytes.mid(m_position, nextStep());
    m_position += piece.size();
    return piece;
}

} // namespace fuzz
