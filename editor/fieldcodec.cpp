// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"

#include "editor/tablemodel.h"
#include "image/memoryarea.h"

#include <cmath>

namespace {

constexpr std::pair<double, int> factorDecimals[] = {{1, 0}, {10, 1}, {100, 2}, {327.68, 2}};

} // namespace

namespace editor {

QVector<quint8> storedBytes(const cMyMemoryArea& area, const cMySettingsField& field)
{
    return area.data(field.address, static_cast<unsigned short>(field.width));
}

int storedNumber(const cMyMemoryArea& area, const cMySettingsField& field)
{
    quint8 low = 0;
    quint8 high = 0;
    area.data(field.address, &low);
    const bool isSigned = field.encoding == FieldEncoding::Signed;
    if (field.width == 1) {
        return isSigned ? static_cast<qint8>(low) : low;
    }
    area.data(field.address + 1, &high);
    const auto number = static_cast<quint16>(low | (high << 8));
    return isSigned ? static_cast<qint16>(number) : number;
}

QString storedText(const cMyMemoryArea& area, const cMySettingsField& field)
{
    QString text;
    for (const quint8 byte : storedBytes(area, field)) {
        if (byte == 0) {
            break;
        }
        text.append(QChar(byte));
    }
    return text;
}

QVector<quint8> numberBytes(int number, const cMySettingsField& field)
{
    QVector<quint8> bytes(field.width);
    for (int i = 0; i < field.width; ++i) {
        bytes[i] = static_cast<quint8>(static_cast<quint32>(number) >> (8 * i));
    }
    return bytes;
}

QVector<quint8> textBytes(const QString& text, const cMySettingsField& field)
{
    const QByteArray latin1 = text.left(textCapacity(field)).toLatin1();
    QVector<quint8> bytes(latin1.size() + 1, 0);
    std::copy(latin1.begin(), latin1.end(), bytes.begin());
    return bytes;
}

int textCapacity(const cMySettingsField& field)
{
    return field.width - 1;
}

cMyThresholdScale thresholdScale(const cMyTableModel& values, int row)
{
    cMyThresholdScale scale;
    scale.factor = values.number(row, cMyTableModel::Factor);
    scale.unit = values.cell(row, cMyTableModel::Unit);
    scale.minimum = values.number(row, cMyTableModel::Minimum);
    scale.maximum = values.number(row, cMyTableModel::Maximum);
    return scale;
}

QString plainUnit(const QString& unit)
{
    return unit.startsWith(QLatin1Char('[')) ? unit.mid(1, unit.size() - 2) : unit;
}

double shownThreshold(int stored, const cMyThresholdScale& scale)
{
    if (scale.factor == 0) {
        return 0;
    }
    constexpr int greatestSigned = 32767;
    const bool isUnsigned = scale.minimum >= 0 && scale.maximum * scale.factor > greatestSigned;
    return (isUnsigned ? static_cast<quint16>(stored) : static_cast<qint16>(stored)) / scale.factor;
}

std::optional<int> decimalsOfFactor(double factor)
{
    for (const auto& [known, decimals] : factorDecimals) {
        if (qFuzzyCompare(known, factor)) {
            return decimals;
        }
    }
    return std::nullopt;
}

int storedGravity(double altitude, double latitude)
{
    constexpr double pi = 3.14; // as the device has it
    const double s1 = std::sin(2 * latitude * pi / 360);
    const double s2 = std::sin(4 * latitude * pi / 360);
    const double gravity =
        9.780318 * (1 + 0.0053024 * s1 * s1 - 0.0000058 * s2 * s2) - 0.000003086 * altitude;
    return static_cast<int>(gravity * 32768 / 10);
}

QVector<quint8> versionBytes(const QString& version)
{
    QVector<quint8> bytes;
    const QStringList parts = version.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    bytes.reserve(parts.size());
    for (const QString& part : parts) {
        bytes.append(static_cast<quint8>(part.toInt()));
    }
    return bytes;
}

} // namespace editor
