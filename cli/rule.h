// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_RULE_H
#define MIOLKA_CLI_RULE_H

#include "editor/settingslayout.h"

class cMyMemoryArea;

/// One rule of a settings image, for a person to read. The image is not owned and outlives it.
class cMyRule
{
public:
    /// The two tables of rules in the image.
    enum class Kind { Timer, Message };

    /// Rules count from 1.
    cMyRule(const cMyMemoryArea& image, Kind kind, int number);

    /// "messageRule07".
    [[nodiscard]] QString name() const;

    /// Which table it is in.
    [[nodiscard]] Kind kind() const { return m_kind; }

    /// A member of the rule, by the part of its name behind the point.
    [[nodiscard]] const cMySettingsField& field(const char* member) const;

    /// The number in a member, in stored units.
    [[nodiscard]] int stored(const char* member) const;

    /// Whether a member holds one of the choices that are offered for it.
    [[nodiscard]] bool isOffered(const char* member) const;

    /// It is switched off.
    [[nodiscard]] bool isOff() const;

    /// It applies regardless of any value, or compares one that does not exist.
    [[nodiscard]] bool comparesNothing() const;

    /// "depth >= 5.00 m".
    [[nodiscard]] QString comparison() const;

    /// What it does in one sentence, in the words of the option tables: "underwater, when depth >=
    /// 5.00 m: say Depth (value & point & unit), every period A"; "off" if it is switched off.
    [[nodiscard]] QString sentence() const;

private:
    [[nodiscard]] QString text(const char* member) const;
    [[nodiscard]] QString occasion() const;
    [[nodiscard]] QString deed() const;

    const cMyMemoryArea* m_image;
    Kind m_kind;
    int m_number;
};

namespace cli {

/// All rules of an image in their order, timer rules first.
[[nodiscard]] QVector<cMyRule> rules(const cMyMemoryArea& image);

/// A timer action that starts a timer, which counts down from the rule's time. The stopwatch
/// counts up and needs none.
[[nodiscard]] bool takesTime(int action);

} // namespace cli

#endif
