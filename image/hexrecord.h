// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_HEXRECORD_H
#define MIOLKA_IMAGE_HEXRECORD_H

#include <QObject>
#include <QString>
#include <QVector>

#include <initializer_list>

/// One line of Intel HEX text: the unit of settings files and of transfers to and from the device.
///
/// Two things differ from the public Intel HEX format, because the device expects them so: an
/// extended linear address record (type 4) is written with a count of 00, and data of types other
/// than 0 is not part of the checksum.
class cMyHexRecord : public QObject
{
    Q_OBJECT

public:
    /// An empty record, to be filled by fromString().
    explicit cMyHexRecord(QObject* parent = nullptr);

    /// A data record; an end-of-file record (type 1, offset 0) if data is empty.
    cMyHexRecord(unsigned short offset, const QVector<unsigned char>& data,
                 QObject* parent = nullptr);

    /// As above, so that an empty pair of braces means no data and not a null parent.
    cMyHexRecord(unsigned short offset, std::initializer_list<unsigned char> data,
                 QObject* parent = nullptr);

    /// An extended linear address record for the upper 16 bits of the address.
    explicit cMyHexRecord(unsigned short segment, QObject* parent = nullptr);

    /// The fields of the record. The offset is the lower half of the address of its first byte; the
    /// checksum is worked out from the others.
    [[nodiscard]] unsigned short offset() const { return m_offset; }
    [[nodiscard]] unsigned char type() const { return m_type; }
    [[nodiscard]] QVector<quint8> data() const { return m_data; }
    [[nodiscard]] quint8 checksum() const;

    /// The line in upper case, without a line end.
    [[nodiscard]] QString toString() const;

    /// Reads one line by the positions of its fields; true if it was read and its checksum is
    /// right. Text after the checksum is ignored. After a failure the record holds what was read
    /// before it: nothing new if count, start code, offset or type were at fault.
    bool fromString(const QString& line);

    /// Data bytes index and index + 1, low byte first; 0 unless a further byte follows them.
    [[nodiscard]] qint16 getQint16(unsigned char index) const;

private:
    quint16 m_offset = 0;
    quint8 m_type = 0;
    QVector<quint8> m_data;
    quint16 m_segment = 0;
};

#endif
