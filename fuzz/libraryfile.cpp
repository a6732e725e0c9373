// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryfile.h"

#include "fuzz/lines.h"
#include "fuzz/support.h"

using fuzz::expect;

namespace {

const QByteArray endRecord = QByteArrayLiteral(":00000001FF");

QStringList modelOf(const QByteArray& text)
{
    QStringList lines;
    for (const QByteArray& word : fuzz::words(text)) {
        lines.append(fuzz::latin1(word));
        if (word == endRecord) {
            break;
        }
    }
    return lines;
}

cMyLibrary read(const fuzz::InputFile& file, const std::uint8_t* bytes, std::size_t size)
{
    file.fill(bytes, size);
    return maintenance::readLibraryFile(file.path());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const fuzz::InputFile file;
    const cMyLibrary library = read(file, bytes, size);
    expect(library.fault == LibraryFault::None, "any file can be read");
    expect(library.lines == modelOf(fuzz::bytesOf(bytes, size)),
           "lines are the words up to the end record");

    const QByteArray joined = library.lines.join(QLatin1Char('\n')).toLatin1();
    const cMyLibrary again = read(file, reinterpret_cast<const std::uint8_t*>(joined.constData()),
                                  static_cast<std::size_t>(joined.size()));
    expect(again.lines == library.lines, "lines that were read are read again");
    return 0;
}
