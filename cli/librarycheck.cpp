// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/librarycheck.h"

#include "image/wholerecord.h"
#include "maintenance/libraryfile.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <bitset>
#include <cctype>

using cli::ExitStatus;

namespace {

constexpr qint64 nameAddress = 0xFFE0; ///< of the language; the version ends a segment
constexpr int languageSize = 16;
constexpr int versionPosition = 28;
constexpr int versionSize = 4;
constexpr int nameSize = versionPosition + versionSize;

/// The line, counted from 1, on which a word of a file stands, counted from 0.
int lineOfWord(const QString& path, int word)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return 1;
    }
    int line = 1;
    int words = -1;
    bool isInside = false;
    char character = '\0';
    while (file.getChar(&character)) {
        const bool isSpace = std::isspace(static_cast<unsigned char>(character)) != 0;
        if (!isSpace && !isInside && ++words == word) {
            break;
        }
        isInside = !isSpace;
        line += character == '\n' ? 1 : 0;
    }
    return line;
}

cMyOutcome fault(const QString& path, int word, const QString& reason)
{
    return {ExitStatus::BadFile,
            {QStringLiteral("%1:%2: %3; nothing was uploaded")
                 .arg(path)
                 .arg(lineOfWord(path, word))
                 .arg(reason)}};
}

/// Takes the words of a library one after another.
class Reading
{
public:
    explicit Reading(cMyCheckedLibrary& library) : m_library(library) {}

    /// What is wrong with the word; empty if nothing is.
    QString take(const QByteArray& word, int number)
    {
        if (const auto upper = image::upperAddress(word)) {
            m_upperAddress = qint64{*upper} << 16;
            return {};
        }
        const auto fields = image::wholeRecord(word);
        if (!fields) {
            return QStringLiteral("this is no Intel HEX record");
        }
        if (fields->type != image::DataRecord && fields->type != image::EndOfFileRecord) {
            return fields->type == image::ExtendedLinearAddressRecord
                       ? QStringLiteral("this address record is not in order")
                       : QStringLiteral("the device takes no records of type %1").arg(fields->type);
        }
        if (!image::isChecksumRight(*fields)) {
            return QStringLiteral("the checksum of this record is wrong");
        }
        if (fields->type == image::DataRecord) {
            takeData(*fields, number);
            return {};
        }
        return fields->offset == 0 && fields->size == 0
                   ? QString()
                   : QStringLiteral("the device takes no end record with an address or data");
    }

    void finish()
    {
        m_library.hasName = m_named.all();
        for (int i = 0; i < languageSize && m_name.at(static_cast<std::size_t>(i)) != 0; ++i) {
            m_library.language.append(
                QLatin1Char(static_cast<char>(m_name.at(static_cast<std::size_t>(i)))));
        }
        QStringList parts;
        for (int i = versionPosition; i < nameSize; ++i) {
            parts.append(QString::number(m_name.at(static_cast<std::size_t>(i))));
        }
        m_library.version = parts.join(QLatin1Char('.'));
    }

private:
    void takeData(const cMyRecordFields& fields, int number)
    {
        const qint64 address = m_upperAddress + fields.offset;
        const qint64 end = address + fields.size;
        m_library.bytes += fields.size;
        if (end > m_library.end) {
            m_library.end = end;
            m_library.lastWord = number;
        }
        for (qint64 at = std::max(address, nameAddress); at < std::min(end, nameAddress + nameSize);
             ++at) {
            m_name.at(static_cast<std::size_t>(at - nameAddress)) =
                fields.data.at(static_cast<std::size_t>(at - address));
            m_named.set(static_cast<std::size_t>(at - nameAddress));
        }
    }

    cMyCheckedLibrary& m_library;
    qint64 m_upperAddress = 0;
    std::array<quint8, nameSize> m_name{};
    std::bitset<nameSize> m_named; ///< the bytes of it that came
};

QString unreadable(LibraryFault fault)
{
    return fault == LibraryFault::TooLarge
               ? QStringLiteral("%1: is too large for a library; nothing was uploaded")
               : QStringLiteral("%1: cannot be read, or is no regular file; nothing was uploaded");
}

} // namespace

namespace cli {

cMyOutcome checkLibrary(const QString& path, cMyCheckedLibrary& library)
{
    // Its records would pass for a small library, and spoil the one on the device.
    if (path.endsWith(QLatin1String(".mio"), Qt::CaseInsensitive)) {
        return {ExitStatus::BadFile,
                {QStringLiteral("%1: this is a settings file; \"miolkactl write\" takes it")
                     .arg(path)}};
    }
    cMyLibrary file = maintenance::readLibraryFile(path);
    if (file.fault != LibraryFault::None) {
        return {ExitStatus::BadFile, {unreadable(file.fault).arg(path)}};
    }
    library.lines = std::move(file.lines);
    Reading reading(library);
    for (int i = 0; i < library.lines.size(); ++i) {
        const QString reason = reading.take(library.lines.at(i).toLatin1(), i);
        if (!reason.isEmpty()) {
            return fault(path, i, reason);
        }
    }
    if (library.bytes == 0) {
        return {ExitStatus::BadFile,
                {QStringLiteral("%1: holds no data at all; nothing was uploaded").arg(path)}};
    }
    if (library.lines.constLast().toLatin1() != image::endOfFileRecord.data()) {
        return fault(
            path, static_cast<int>(library.lines.size()) - 1,
            QStringLiteral("the file ends here, without the end record :00000001FF: a part "
                           "of it may be missing"));
    }
    reading.finish();
    return {};
}

cMyOutcome checkLibrarySize(const QString& path, const cMyCheckedLibrary& library, int megabytes)
{
    constexpr qint64 megabyte = 1024LL * 1024;
    if (library.end <= megabytes * megabyte) {
        return {};
    }
    return fault(path, library.lastWord,
                 QStringLiteral("this record ends at address 0x%1, and the device says that it has "
                                "%2 MB (0x%3 bytes) for sounds")
                     .arg(library.end, 0, 16)
                     .arg(megabytes)
                     .arg(megabytes * megabyte, 0, 16));
}

QString libraryKind(const cMyCheckedLibrary& library)
{
    if (library.hasName) {
        return QStringLiteral("a sound library (language \"%1\", version %2)")
            .arg(library.language, library.version);
    }
    return QStringLiteral("a library without a language and version at address 0x%1, as custom "
                          "messages are")
        .arg(nameAddress, 0, 16);
}

} // namespace cli
