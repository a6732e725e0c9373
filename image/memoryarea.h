// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_MEMORYAREA_H
#define MIOLKA_IMAGE_MEMORYAREA_H

#include <QObject>
#include <QStringList>
#include <QVector>

#include <vector>

/// The bytes of one kind of device memory, addressed by 32 bits and grown as they are written.
///
/// It is kept in pages of 64 KiB; a page is as long as the highest offset written into it plus
/// one, and what was never written below that reads as 0x00.
class cMyMemoryArea : public QObject
{
    Q_OBJECT

public:
    explicit cMyMemoryArea(QObject* parent = nullptr);

    /// Up to count bytes from address on; ends before the first byte that does not exist.
    [[nodiscard]] QVector<quint8> data(int address, unsigned short count) const;

    /// Reads one byte; false, leaving value as it was, if the byte does not exist.
    bool data(int address, unsigned char* value) const;

    /// Intel HEX lines for count bytes from address on, the end-of-file record last.
    ///
    /// A record's offset is the address of its last byte + 1 - recordLength, also where the record
    /// is shorter than that. Bytes that do not exist are left out; an extended linear address
    /// record stands wherever the upper 16 bits of the address change from 0 or from the last.
    [[nodiscard]] QStringList toHex(int address, int count, unsigned short recordLength) const;

    /// True from the first byte written until clearModified().
    [[nodiscard]] bool isModified() const { return m_modified; }

    /// The image is now stored in a file as it is.
    void clearModified() { m_modified = false; }

public slots:
    /// Writes one byte, growing the area as needed. Counts as a change even if the value stays.
    void setData(quint32 address, quint8 value);

    /// Writes bytes one after another from address on. Writes nothing if data is empty.
    void setData(quint32 address, QVector<quint8> data);

private:
    std::vector<QVector<quint8>> m_pages;
    bool m_modified = false;
};

#endif
