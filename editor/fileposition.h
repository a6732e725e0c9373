// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_FILEPOSITION_H
#define MIOLKA_EDITOR_FILEPOSITION_H

#include <QVector>

class cMyMemoryArea;

/// How many bytes an input writes. Any other value writes nothing.
enum DataLength : qint32 {
    Length8 = 0,  ///< one byte
    Length16 = 1, ///< two bytes, the low one first
};

/// How a field is read back; both are written alike.
enum DataType : qint32 {
    TypeUnsigned = 0,
    TypeSigned = 1, ///< two's complement
};

/// Where in a memory area an input stores its number. Every bound input has one.
class cMyFilePosition
{
public:
    /// A binding to nowhere.
    cMyFilePosition() = default;

    /// Binds to the field of this length and type at position; area is not owned.
    void setFilePosition(cMyMemoryArea* area, unsigned int position, DataLength length,
                         DataType type);

    /// Address of the field's first byte.
    [[nodiscard]] unsigned int filePosition() const { return m_position; }

    /// The bytes to store for a number in stored units. It is rounded half away from zero; of
    /// what does not fit into the field, the high bits are lost.
    [[nodiscard]] QVector<unsigned char> dataToFile(double value) const;

    /// Whether it is bound, and other bytes than these are stored there.
    [[nodiscard]] bool differsFrom(const QVector<unsigned char>& bytes) const;

private:
    unsigned int m_position = 0;
    DataLength m_length = Length8;
    DataType m_type = TypeUnsigned;
    cMyMemoryArea* m_area = nullptr;
};

#endif
