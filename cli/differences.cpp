// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/differences.h"

#include "editor/fieldtext.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <algorithm>

namespace {

constexpr int noField = -1;

/// Which field each byte of the image belongs to, by its place in the table.
QVector<int> buildOwners()
{
    QVector<int> owners(image::settingsImageSize, noField);
    const QVector<cMySettingsField>& fields = editor::settingsFields();
    for (int field = 0; field < fields.size(); ++field) {
        const int first = fields.at(field).address;
        std::fill_n(owners.begin() + first, fields.at(field).width, field);
    }
    return owners;
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// Finds what two images do not share.
class Comparison
{
public:
    Comparison(const cMyMemoryArea& before, const cMyMemoryArea& after)
        : m_before(before), m_after(after)
    {
    }

    [[nodiscard]] QVector<cMySettingsDifference> differences() const
    {
        static const QVector<int> owners = buildOwners();
        QVector<cMySettingsDifference> found;
        for (int address = 0; address < owners.size();) {
            const int owner = owners.at(address);
            const int end = owner == noField ? endOfRun(owners, address)
                                             : editor::settingsFields().at(owner).address +
                                                   editor::settingsFields().at(owner).width;
            if (isDifferentAt(address, end)) {
                found.append(owner == noField ? ofBytes(address, end)
                                              : ofField(editor::settingsFields().at(owner)));
            }
            address = end;
        }
        return found;
    }

private:
    [[nodiscard]] QVector<quint8> bytesBefore(int address, int end) const
    {
        return m_before.data(address, static_cast<unsigned short>(end - address));
    }

    [[nodiscard]] QVector<quint8> bytesAfter(int address, int end) const
    {
        return m_after.data(address, static_cast<unsigned short>(end - address));
    }

    [[nodiscard]] bool isDifferentAt(int address, int end) const
    {
        return bytesBefore(address, end) != bytesAfter(address, end);
    }

    /// Of bytes without a field that all differ, or are all the same.
    [[nodiscard]] int endOfRun(const QVector<int>& owners, int address) const
    {
        int end = address + 1;
        const bool differs = isDifferentAt(address, end);
        while (end < owners.size() && owners.at(end) == noField &&
               isDifferentAt(end, end + 1) == differs) {
            ++end;
        }
        return end;
    }

    [[nodiscard]] cMySettingsDifference ofBytes(int address, int end) const
    {
        const QString name = end - address == 1
                                 ? QStringLiteral("byte %1").arg(address)
                                 : QStringLiteral("bytes %1 to %2").arg(address).arg(end - 1);
        return {name, editor::hexadecimal(bytesBefore(address, end)),
                editor::hexadecimal(bytesAfter(address, end)), false};
    }

    [[nodiscard]] cMySettingsDifference ofField(const cMySettingsField& field) const
    {
        const editor::FieldKind kind = editor::fieldKind(field);
        QString before = editor::valueText(m_before, field);
        QString after = editor::valueText(m_after, field);
        if (kind == editor::FieldKind::Version) {
            return {QStringLiteral("program version"), before, after, true};
        }
        if (kind == editor::FieldKind::Text) {
            const bool isSameText = before == after;
            before = quoted(before);
            after = quoted(after);
            if (isSameText) {
                before += hidden(m_before, field);
                after += hidden(m_after, field);
            }
        }
        return {field.name, before, after, false};
    }

    /// The bytes behind the end of a text, from the first to the last one that differs.
    [[nodiscard]] QString hidden(const cMyMemoryArea& image, const cMySettingsField& field) const
    {
        int first = field.address;
        int end = field.address + field.width;
        while (first < end && !isDifferentAt(first, first + 1)) {
            ++first;
        }
        while (end > first && !isDifferentAt(end - 1, end)) {
            --end;
        }
        return QStringLiteral(" and behind its end %1")
            .arg(editor::hexadecimal(image.data(first, static_cast<unsigned short>(end - first))));
    }

    const cMyMemoryArea& m_before;
    const cMyMemoryArea& m_after;
};

} // namespace

namespace cli {

QVector<cMySettingsDifference> differences(const cMyMemoryArea& before, const cMyMemoryArea& after)
{
    return Comparison(before, after).differences();
}

bool isDifferent(const QVector<cMySettingsDifference>& differences)
{
    return std::any_of(differences.cbegin(), differences.cend(),
                       [](const cMySettingsDifference& each) { return !each.isVersion; });
}

QStringList differenceLines(const QVector<cMySettingsDifference>& differences)
{
    QStringList lines;
    for (const cMySettingsDifference& each : differences) {
        const QString line = QStringLiteral("%1: %2 -> %3").arg(each.name, each.before, each.after);
        lines += each.isVersion ? line + QStringLiteral(" (not counted)") : line;
    }
    return lines;
}

} // namespace cli
