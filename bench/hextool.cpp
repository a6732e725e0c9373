// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexcodec.h"
#include "image/wordreader.h"

#include <QFile>
#include <QString>

#include <cstdio>
#include <memory>

/// Reads and checks Intel HEX text with the program's own codec, and prints it again if an output
/// is named. The public format's type 4 records, which the text needs beyond 64 KiB, are checked
/// by the public rule and printed in the public form.
namespace {

bool isRight(const cMyRecordFields& fields)
{
    return fields.type == image::ExtendedLinearAddressRecord
               ? image::standardChecksum(fields) == fields.checksum
               : image::isChecksumRight(fields);
}

class Printer
{
public:
    explicit Printer(QIODevice* device) : m_device(device) {}
    ~Printer() { flush(); }
    Q_DISABLE_COPY_MOVE(Printer)

    void print(const cMyRecordFields& fields)
    {
        if (m_device == nullptr) {
            return;
        }
        if (m_end - m_next <= image::maxRecordText) {
            flush();
        }
        cMyRecordLine line;
        line.count = static_cast<quint8>(fields.size);
        line.offset = fields.offset;
        line.type = fields.type;
        line.payload = fields.data.data();
        line.payloadSize = fields.size;
        line.checksum = image::standardChecksum(fields);
        m_next = image::encodeRecord(line, m_next);
        *m_next++ = '\n';
    }

private:
    void flush()
    {
        if (m_device != nullptr) {
            m_device->write(m_buffer.data(), m_next - m_buffer.data());
        }
        m_next = m_buffer.data();
    }

    std::array<char, 65536> m_buffer{};
    char* m_next = m_buffer.data();
    char* const m_end = m_buffer.data() + m_buffer.size();
    QIODevice* m_device;
};

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2) {
        return 2;
    }
    QFile in(QString::fromLocal8Bit(argv[1]));
    QFile out(QString::fromLocal8Bit(argc >= 3 ? argv[2] : ""));
    if (!in.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        (argc >= 3 && !out.open(QIODevice::WriteOnly | QIODevice::Unbuffered))) {
        return 2;
    }
    const auto words = std::make_unique<cMyWordReader>(in);
    const auto printer = std::make_unique<Printer>(argc >= 3 ? &out : nullptr);
    cMyRecordFields fields;
    long records = 0;
    for (std::string_view word = words->next(); !word.empty(); word = words->next()) {
        if (image::decodeRecord(word, fields) != image::RecordFault::None || !isRight(fields)) {
            std::printf("bad record after %ld\n", records);
            return 1;
        }
        printer->print(fields);
        ++records;
    }
    std::printf("%ld records\n", records);
    return 0;
}
