// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_FUZZ_SUPPORT_H
#define MIOLKA_FUZZ_SUPPORT_H

#include <QByteArray>
#include <QString>
#include <QVector>

#include <cstddef>
#include <cstdint>

class cMyMemoryArea;

extern "C" {
/// What libFuzzer calls once at the start: lets Qt work, and keeps it silent.
int LLVMFuzzerInitialize(int* argumentCount, char*** arguments);

/// What libFuzzer calls for each input; every target defines it.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
}

/// What the fuzz targets share.
namespace fuzz {

/// Says what does not hold and ends the process, which libFuzzer takes for a find.
[[noreturn]] void fail(const char* what);

inline void expect(bool holds, const char* what)
{
    if (!holds) {
        fail(what);
    }
}

/// A copy of the input.
[[nodiscard]] QByteArray bytesOf(const std::uint8_t* bytes, std::size_t size);

/// Bytes as characters, NULs among them, which Qt's own way with byte arrays ends at.
[[nodiscard]] QString latin1(const QByteArray& bytes);

/// The settings image in an area, as far as it is there.
[[nodiscard]] QByteArray imageOf(const cMyMemoryArea& area);

/// A file that is nowhere on a disk, for what can only be read by its path.
class InputFile
{
public:
    InputFile();
    ~InputFile();
    Q_DISABLE_COPY_MOVE(InputFile)

    [[nodiscard]] QString path() const;

    /// Makes these bytes all that the file holds.
    void fill(const std::uint8_t* bytes, std::size_t size) const;

private:
    int m_descriptor;
};

} // namespace fuzz

#endif
