// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/strictsettings.h"

#include "image/filename.h"
#include "image/wordreader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr int digitsOfAByte = 2;
constexpr int segmentSize = 2;         ///< of the data of an extended address
constexpr int segmentShift = 4;        ///< of an extended segment address
constexpr int linearAddressShift = 16; ///< of an extended linear address

/// Record types beyond those that settings files have.
enum OtherType : quint8 { ExtendedSegmentAddressRecord = 2 };

QString hexadecimal(quint64 number, int digits)
{
    constexpr int base = 16;
    return QStringLiteral("%1").arg(number, digits, base, QLatin1Char('0')).toUpper();
}

QString byteText(quint8 byte)
{
    return hexadecimal(byte, digitsOfAByte);
}

bool isHexDigit(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

/// The beginning of a word, for a person to find it by.
QString excerpt(std::string_view word)
{
    constexpr int length = 20;
    const QString text = QString::fromLatin1(word.data(), static_cast<int>(word.size()));
    return text.size() > length ? text.left(length) + QStringLiteral("...") : text;
}

/// What is wrong with a word as the spelling of a record; empty if nothing is.
QString spellingFault(std::string_view word)
{
    constexpr std::size_t shortest = image::recordTextSize(0);
    if (word.substr(0, byteOrderMark.size()) == byteOrderMark) {
        return QStringLiteral("begins with a byte-order mark; save the file without one");
    }
    if (word.front() != ':') {
        return QStringLiteral("\"%1\" is no record, which begins with a colon").arg(excerpt(word));
    }
    const auto wrong = std::find_if_not(word.begin() + 1, word.end(), isHexDigit);
    if (wrong != word.end()) {
        return QStringLiteral("character %1 of the record, \"%2\", is no hex digit")
            .arg(wrong - word.begin() + 1)
            .arg(QLatin1Char(*wrong));
    }
    if (word.size() < shortest) {
        return QStringLiteral("\"%1\" is too short for a record").arg(excerpt(word));
    }
    return word.size() % 2 == 0 ? QStringLiteral("the record has an odd number of hex digits")
                                : QString();
}

/// Reads words and keeps what they give and what is wrong with them.
class StrictReader
{
public:
    void read(QFile& file)
    {
        cMyWordReader words(file);
        for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
            m_line = words.line();
            if (m_hasEnded) {
                fault(QStringLiteral("there is more behind the end-of-file record"));
                break;
            }
            m_hasWords = true;
            takeWord(word, words.isCut());
        }
        m_line = 0;
        if (file.error() != QFileDevice::NoError) {
            fault(QStringLiteral("cannot be read to its end: %1").arg(file.errorString()));
        } else if (!m_hasWords) {
            fault(QStringLiteral("is empty"));
        } else if (!m_hasEnded) {
            fault(
                QStringLiteral("has no end-of-file record (:00000001FF); is it all of the file?"));
        }
    }

    void fault(const QString& reason)
    {
        if (m_settings.faultCount++ < image::mostNamedFaults) {
            m_settings.faults.append({m_line, reason});
        }
    }

    [[nodiscard]] const cMyStrictSettings& settings() const { return m_settings; }

private:
    void takeWord(std::string_view word, bool isCut)
    {
        if (isCut) {
            fault(QStringLiteral("a word longer than any record is"));
            return;
        }
        const QString spelling = spellingFault(word);
        if (!spelling.isEmpty()) {
            fault(spelling);
            return;
        }
        cMyRecordFields fields;
        const bool isRead = image::decodeRecord(word, fields) == image::RecordFault::None;
        const int there = static_cast<int>(word.size() - image::recordTextSize(0)) / digitsOfAByte;
        if (!isRead || fields.size != there) {
            fault(QStringLiteral("the count says %1 bytes of data, but there are %2")
                      .arg(QString::fromLatin1(word.data() + 1, digitsOfAByte).toInt(nullptr, 16))
                      .arg(there));
            return;
        }
        const quint8 expected = image::standardChecksum(fields);
        if (fields.checksum != expected) {
            fault(QStringLiteral("checksum %1, expected %2")
                      .arg(byteText(fields.checksum), byteText(expected)));
            return;
        }
        takeRecord(fields);
    }

    void takeRecord(const cMyRecordFields& fields)
    {
        switch (fields.type) {
        case image::DataRecord:
            takeData(fields);
            return;
        case image::EndOfFileRecord:
            m_hasEnded = true;
            if (fields.size > 0) {
                fault(QStringLiteral("an end-of-file record with data"));
            }
            return;
        case image::ExtendedLinearAddressRecord:
            moveBase(fields, linearAddressShift);
            return;
        case ExtendedSegmentAddressRecord:
            moveBase(fields, segmentShift);
            return;
        default:
            fault(QStringLiteral("record type %1, which settings files do not have")
                      .arg(byteText(fields.type)));
        }
    }

    /// The program that reads settings in its window does not know such a record, so that even one
    /// that leaves all addresses as they are ends its reading.
    void moveBase(const cMyRecordFields& fields, int shift)
    {
        if (fields.size == segmentSize) {
            m_base = ((quint32{fields.data[0]} << 8U) | fields.data[1]) << shift;
        }
        fault(QStringLiteral("an extended address record (type %1), which settings files do not "
                             "have")
                  .arg(byteText(fields.type)));
    }

    void takeData(const cMyRecordFields& fields)
    {
        const quint64 first = m_base + quint64{fields.offset};
        const quint64 end = first + static_cast<quint64>(fields.size);
        if (fields.size > 0 && end > image::settingsImageSize) {
            fault(QStringLiteral("address %1 is beyond the settings, which end at 03FF")
                      .arg(hexadecimal(end - 1, 4)));
            return;
        }
        bool isTold = false;
        for (int i = 0; i < fields.size; ++i) {
            const std::size_t address = first + static_cast<std::size_t>(i);
            const quint8 value = fields.data.at(static_cast<std::size_t>(i));
            const quint8 before = m_settings.bytes.at(address);
            if (m_settings.isGiven[address] && before != value && !isTold) {
                fault(QStringLiteral("byte %1 is given once more, as %2 and not as %3")
                          .arg(address)
                          .arg(byteText(value), byteText(before)));
                isTold = true;
            }
            m_settings.bytes.at(address) = value;
            m_settings.isGiven.set(address);
        }
    }

    cMyStrictSettings m_settings;
    qint64 m_line = 0;
    quint32 m_base = 0; ///< that offsets count from
    bool m_hasWords = false;
    bool m_hasEnded = false;
};

} // namespace

namespace image {

cMyStrictSettings readStrictSettings(const QString& path)
{
    StrictReader reader;
    QFile file(path);
    if (!isEncodable(path) || !QFileInfo::exists(path)) {
        reader.fault(QStringLiteral("there is no such file"));
    } else if (!isRegularFile(path)) {
        reader.fault(QStringLiteral("is no regular file"));
    } else if (!file.open(QIODevice::ReadOnly)) {
        reader.fault(QStringLiteral("cannot be opened: %1").arg(file.errorString()));
    } else {
        reader.read(file);
    }
    return reader.settings();
}

QStringList faultLines(const QString& path, const cMyStrictSettings& settings)
{
    QStringList lines;
    for (const cMySettingsFault& fault : settings.faults) {
        const QString place =
            fault.line == 0 ? path : QStringLiteral("%1:%2").arg(path).arg(fault.line);
        lines += QStringLiteral("%1: %2").arg(place, fault.reason);
    }
    if (settings.faultCount > settings.faults.size()) {
        lines += QStringLiteral("%1: and %2 more faults")
                     .arg(path)
                     .arg(settings.faultCount - settings.faults.size());
    }
    return lines;
}

} // namespace image
