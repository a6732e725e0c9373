// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/statefile.h"

#include "image/filename.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace emulator {

namespace {

const QByteArray magic = QByteArrayLiteral("MIOLKAVD");
constexpr quint32 version = 1;
constexpr int pageSize = 256; ///< what runs are made of
constexpr QDataStream::Version streamVersion = QDataStream::Qt_5_15;

/// More than this cannot be a state: raw bytes of every memory, and what stands between them.
constexpr qint64 longestFile = mostDevices * qint64(9) * 1024 * 1024;

enum RunKind : quint8 { Mixed = 0, Equal = 1 };

bool isUniform(const QByteArray& bytes, int start)
{
    const auto first = std::next(bytes.cbegin(), start);
    const auto last =
        std::next(bytes.cbegin(), std::min(start + pageSize, static_cast<int>(bytes.size())));
    return std::all_of(first, last, [first](char byte) { return byte == *first; });
}

void writeMemory(QDataStream& out, const QByteArray& bytes)
{
    int start = 0;
    while (start < bytes.size()) {
        const bool equal = isUniform(bytes, start);
        int end = start + pageSize;
        while (end < bytes.size() && isUniform(bytes, end) == equal &&
               (!equal || bytes.at(end) == bytes.at(start))) {
            end += pageSize;
        }
        const int size = std::min(end, static_cast<int>(bytes.size())) - start;
        const int stored = equal ? 1 : size;
        out << static_cast<quint8>(equal ? Equal : Mixed) << static_cast<quint32>(size);
        out.writeRawData(bytes.mid(start, stored).constData(), stored);
        start += size;
    }
}

std::optional<QByteArray> readMemory(QDataStream& in, int size)
{
    QByteArray bytes;
    bytes.reserve(size);
    while (bytes.size() < size) {
        quint8 kind = 0;
        quint32 length = 0;
        in >> kind >> length;
        if (in.status() != QDataStream::Ok || kind > Equal || length == 0 ||
            length > static_cast<quint32>(size - bytes.size())) {
            return std::nullopt;
        }
        const int stored = kind == Equal ? 1 : static_cast<int>(length);
        QByteArray run(stored, '\0');
        if (in.readRawData(run.data(), stored) != stored) {
            return std::nullopt;
        }
        bytes += kind == Equal ? QByteArray(static_cast<int>(length), run.at(0)) : run;
    }
    return bytes;
}

std::optional<cMyDeviceMemories> readDevice(QDataStream& in)
{
    cMyDeviceMemories device;
    for (int number = 0; number < memoryCount; ++number) {
        const auto area = static_cast<MemoryType>(number);
        const auto bytes = readMemory(in, memorySize(area));
        if (!bytes || !device.setBytes(area, *bytes)) {
            return std::nullopt;
        }
    }
    return device;
}

QByteArray digest(const QByteArray& body)
{
    return QCryptographicHash::hash(body, QCryptographicHash::Sha256);
}

/// The file without its digest; nothing if it does not match.
std::optional<QByteArray> readBody(const QString& path)
{
    QFile file(path);
    if (!image::isEncodable(path) || !QFileInfo(path).isFile() || file.size() > longestFile ||
        !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray contents = file.read(longestFile);
    const auto size = contents.size() - QCryptographicHash::hashLength(QCryptographicHash::Sha256);
    if (size < 0) {
        return std::nullopt;
    }
    const QByteArray body = contents.left(size);
    return digest(body) == contents.mid(size) ? std::make_optional(body) : std::nullopt;
}

} // namespace

bool writeState(const QString& path, const QVector<cMyDeviceMemories>& devices)
{
    QByteArray body;
    QDataStream out(&body, QIODevice::WriteOnly);
    out.setVersion(streamVersion);
    out.writeRawData(magic.constData(), static_cast<int>(magic.size()));
    out << version << static_cast<quint32>(devices.size());
    for (const cMyDeviceMemories& device : devices) {
        for (int number = 0; number < memoryCount; ++number) {
            writeMemory(out, device.bytes(static_cast<MemoryType>(number)));
        }
    }
    body += digest(body);
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(body) == body.size() && file.flush() &&
           file.commit();
}

bool canWriteState(const QString& path)
{
    QSaveFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    file.cancelWriting();
    return isOpen;
}

std::optional<QVector<cMyDeviceMemories>> readState(const QString& path)
{
    const auto body = readBody(path);
    if (!body || !body->startsWith(magic)) {
        return std::nullopt;
    }
    QDataStream in(body->mid(magic.size()));
    in.setVersion(streamVersion);
    quint32 found = 0;
    quint32 count = 0;
    in >> found >> count;
    if (in.status() != QDataStream::Ok || found != version || count > mostDevices) {
        return std::nullopt;
    }
    QVector<cMyDeviceMemories> devices;
    devices.reserve(static_cast<int>(count));
    while (static_cast<quint32>(devices.size()) < count) {
        const auto device = readDevice(in);
        if (!device) {
            return std::nullopt;
        }
        devices.append(*device);
    }
    return in.atEnd() ? std::make_optional(devices) : std::nullopt;
}

} // namespace emulator
