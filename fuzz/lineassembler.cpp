// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/lineassembler.h"

#include "fuzz/lines.h"
#include "fuzz/support.h"

#include <algorithm>

using fuzz::expect;

namespace {

void takeAll(cMyLineAssembler& assembler, QByteArrayList& lines)
{
    while (assembler.hasLine()) {
        const auto line = assembler.takeLine();
        expect(line.has_value(), "a line that is there can be taken");
        lines.append(*line);
    }
    expect(!assembler.takeLine(), "a line that is not there cannot be taken");
}

void append(cMyLineAssembler& assembler, const QByteArray& bytes)
{
    // In memory of its own that ends where the bytes do.
    const std::vector<char> piece(bytes.cbegin(), bytes.cend());
    assembler.append(piece.data(), bytes.size());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    fuzz::SteppedInput input(bytes, size);
    const QByteArrayList expected = fuzz::deviceLines(input.bytes());

    cMyLineAssembler assembler;
    QByteArrayList lines;
    append(assembler, input.bytes());
    takeAll(assembler, lines);
    expect(lines == expected, "lines are cut at line feeds and NULs, and not too long");

    assembler.clear();
    lines.clear();
    for (int pieces = 0; !input.atEnd(); ++pieces) {
        append(assembler, input.nextPiece());
        if (pieces % 3 != 0) { // what was not taken must wait
            takeAll(assembler, lines);
        }
        if (pieces > 2 * input.bytes().size()) { // numbers that are all 0
            return 0;
        }
    }
    takeAll(assembler, lines);
    expect(lines == expected, "it does not matter how bytes are cut into packets");
    expect(std::all_of(lines.cbegin(), lines.cend(),
                       [](const QByteArray& line) {
                           return line.size() <= cMyLineAssembler::longestLine + 1;
                       }),
           "no line is too long");
    return 0;
}
