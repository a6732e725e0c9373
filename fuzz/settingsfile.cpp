// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/settingsfile.h"

#include "fuzz/lines.h"
#include "fuzz/support.h"
#include "image/hexcodec.h"
#include "image/memoryarea.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using fuzz::expect;

namespace {

/// What is in an image before a file is read into it.
const QByteArray& before()
{
    static const QByteArray bytes = [] {
        QByteArray counted(image::settingsImageSize, '\0');
        for (int i = 0; i < counted.size(); ++i) {
            counted[i] = static_cast<char>(7 * i);
        }
        return counted;
    }();
    return bytes;
}

/// The image after all records up to the first that is none, by the words of the file; greatest
/// becomes the address of the last byte that there is.
QByteArray modelOf(const QByteArray& text, int& greatest)
{
    QByteArray bytes = before();
    greatest = bytes.size() - 1;
    for (const QByteArray& word : fuzz::words(text)) {
        cMyRecordFields fields;
        const auto fault =
            image::decodeRecord({word.constData(), static_cast<std::size_t>(word.size())}, fields);
        if (word == ":00000001FF" || fault != image::RecordFault::None ||
            !image::isChecksumRight(fields)) {
            break;
        }
        for (int i = 0; i < fields.size; ++i) {
            const int address = fields.offset + i;
            greatest = std::max(greatest, address);
            if (address < bytes.size()) {
                bytes[address] = static_cast<char>(fields.data.at(static_cast<std::size_t>(i)));
            }
        }
    }
    return bytes;
}

/// Saved and loaded again, it is the same image, in the one form that is written.
void checkSaved(cMyMemoryArea& area, const QByteArray& bytes)
{
    static const QTemporaryDir directory;
    static const QString path = directory.filePath(QStringLiteral("saved.mio"));
    expect(image::writeSettingsFile(path, area), "an image can be saved");
    expect(!area.isModified(), "a saved image is not modified");
    QFile file(path);
    expect(file.open(QIODevice::ReadOnly), "a saved file can be opened");
    const QByteArrayList lines = file.readAll().split('\n');
    expect(lines.size() == 65 && lines.last() == ":00000001FF", "a saved file has 65 lines");
    expect(std::all_of(lines.cbegin(), lines.cend() - 1,
                       [](const QByteArray& line) { return line.size() == 43; }),
           "a saved file has records of 16 bytes");
    cMyMemoryArea loaded;
    expect(image::readSettingsFile(path, loaded), "a saved file can be loaded");
    expect(fuzz::imageOf(loaded) == bytes, "an image that was saved loads as it was");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const fuzz::InputFile file;
    static const QString path = file.path();
    file.fill(bytes, size);
    cMyMemoryArea area;
    area.setData(0, QVector<quint8>(before().cbegin(), before().cend()));
    area.clearModified();
    expect(image::readSettingsFile(path, area), "any file can be read");

    int greatest = 0;
    const QByteArray expected = modelOf(fuzz::bytesOf(bytes, size), greatest);
    expect(fuzz::imageOf(area) == expected,
           "a file's records are applied up to the first that is none");
    quint8 byte = 0;
    expect(area.data(greatest, &byte) && !area.data(greatest + 1, &byte),
           "an image grows as far as records reach");
    expect(area.isModified() || expected == before(), "a changed image is modified");
    if (area.isModified()) { // the rest would be the same image each time
        checkSaved(area, expected);
    }
    return 0;
}
