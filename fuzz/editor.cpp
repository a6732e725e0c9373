// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"
#include "editor/fileposition.h"
#include "editor/settingslayout.h"
#include "editor/tablemodel.h"
#include "fuzz/support.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

using fuzz::expect;

namespace {

bool isNumber(const cMySettingsField& field)
{
    return field.encoding == FieldEncoding::Unsigned || field.encoding == FieldEncoding::Signed;
}

quint32 addressOf(const cMySettingsField& field)
{
    return static_cast<quint32>(field.address);
}

QByteArray bytesOf(const QVector<quint8>& data)
{
    return fuzz::bytesOf(data.constData(), static_cast<std::size_t>(data.size()));
}

void checkNumber(const cMyMemoryArea& area, const cMySettingsField& field)
{
    const int number = editor::storedNumber(area, field);
    const int count = 1 << (8 * field.width);
    const int least = field.encoding == FieldEncoding::Signed ? -count / 2 : 0;
    expect(number >= least && number < least + count, "a number is one that its bytes can hold");
    expect(editor::numberBytes(number, field) == editor::storedBytes(area, field),
           "a number that was read is written as it was");
}

/// A text is written as it was read, as far as there is room for its end.
void checkText(const cMyMemoryArea& area, const cMySettingsField& field)
{
    const QString text = editor::storedText(area, field);
    const QByteArray stored = bytesOf(editor::storedBytes(area, field));
    const QByteArray written = bytesOf(editor::textBytes(text, field));
    expect(text.size() <= field.width && written.size() <= field.width, "a text fits its field");
    expect(written.endsWith('\0') && written.indexOf('\0') == written.size() - 1,
           "a text is ended by a zero byte");
    expect(stored.startsWith(written.chopped(1)), "a text that was read is written as it was");
    expect(text.size() > editor::textCapacity(field) || stored.startsWith(written),
           "only a text without an end is cut");
}

void checkFields(const cMyMemoryArea& area, const QByteArray& image)
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        expect(bytesOf(editor::storedBytes(area, field)) == image.mid(field.address, field.width),
               "a field's bytes are those at its address");
        if (isNumber(field)) {
            checkNumber(area, field);
        } else if (field.encoding == FieldEncoding::Text) {
            checkText(area, field);
        }
    }
}

/// The fields of a rule that make up its threshold.
struct Comparison
{
    const cMySettingsField& measuredValue;
    const cMySettingsField& threshold;
};

/// Those of all rules of a kind.
std::vector<Comparison> comparisons(const QString& kind, int count)
{
    std::vector<Comparison> rules;
    for (int rule = 1; rule <= count; ++rule) {
        const auto field = [&kind, rule](const char* member) -> const cMySettingsField& {
            return editor::settingsField(
                editor::ruleMember(kind, rule, QString::fromLatin1(member)));
        };
        rules.push_back({field("measuredValue"), field("threshold")});
    }
    return rules;
}

/// Every rule's threshold, on the scale of the value that the rule names.
void checkThresholds(const cMyMemoryArea& area, const std::vector<Comparison>& rules,
                     const cMyTableModel& values)
{
    for (const Comparison& rule : rules) {
        const int row = values.rowOfValue(editor::storedNumber(area, rule.measuredValue));
        const cMyThresholdScale scale = editor::thresholdScale(values, row);
        const int stored = editor::storedNumber(area, rule.threshold);
        const double shown = editor::shownThreshold(stored, scale);
        expect(row >= 0 ? std::isfinite(shown) : shown == 0, "a threshold is a number");
        expect(row < 0 || static_cast<qint16>(std::lround(shown * scale.factor)) == stored,
               "a threshold that is shown is the one that is stored");
    }
}

/// What is written lands in its field and nowhere else.
void checkWriting(cMyMemoryArea& area, QByteArray image, const cMySettingsField& field, int number)
{
    const QString text = QString(qAbs(number % 600), QChar(number & 0xFF));
    const QVector<quint8> bytes =
        isNumber(field) ? editor::numberBytes(number, field) : editor::textBytes(text, field);
    area.setData(addressOf(field), bytes);
    expect(bytes.size() <= field.width, "nothing is longer than its field");
    image.replace(field.address, bytes.size(), bytesOf(bytes));
    expect(fuzz::imageOf(area) == image, "writing a field changes its bytes only");
}

/// An input's bytes for any number at all are those of the nearest one that 32 bits hold.
void checkPosition(cMyMemoryArea& area, const cMySettingsField& field, double value)
{
    cMyFilePosition position;
    position.setFilePosition(&area, addressOf(field), field.width == 1 ? Length8 : Length16,
                             field.encoding == FieldEncoding::Signed ? TypeSigned : TypeUnsigned);
    const QVector<quint8> bytes = position.dataToFile(value);
    expect(bytes.size() == field.width, "an input writes as many bytes as its field has");
    constexpr double exactUpTo = 1e9;
    if (std::abs(value) < exactUpTo) {
        expect(bytes == editor::numberBytes(static_cast<int>(std::lround(value)), field),
               "an input's number is rounded half away from zero");
    }
    area.setData(addressOf(field), bytes);
    expect(!position.differsFrom(bytes), "what was written is there");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const cMyTableModel timerValues(editor::optionTableFile(QStringLiteral("timCb2")));
    static const cMyTableModel messageValues(editor::optionTableFile(QStringLiteral("msgCb2")));
    static const auto timerRules = comparisons(QStringLiteral("timerRule"), editor::timerRuleCount);
    static const auto messageRules =
        comparisons(QStringLiteral("messageRule"), editor::messageRuleCount);
    double value = 0;
    std::memcpy(&value, bytes, std::min(size, sizeof value));
    const QByteArray image = fuzz::bytesOf(bytes, size)
                                 .mid(sizeof value, image::settingsImageSize)
                                 .leftJustified(image::settingsImageSize, '\0');
    cMyMemoryArea area;
    area.setData(0, QVector<quint8>(image.cbegin(), image.cend()));
    checkFields(area, image);
    checkThresholds(area, timerRules, timerValues);
    checkThresholds(area, messageRules, messageValues);

    // The field to be written is chosen by the lowest bytes of the number.
    quint32 number = 0;
    std::memcpy(&number, &value, sizeof number);
    const auto count = static_cast<quint32>(editor::settingsFields().size());
    const cMySettingsField& field = editor::settingsFields().at(static_cast<int>(number % count));
    checkWriting(area, image, field, static_cast<int>(number));
    if (isNumber(field)) {
        checkPosition(area, field, value);
    }
    return 0;
}
