// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_SPOKENFORM_H
#define MIOLKA_EMULATOR_SPOKENFORM_H

#include "editor/fieldcodec.h"
#include "editor/tablemodel.h"
#include "emulator/divemoment.h"

/// The option tables that message rules are read by.
struct cMyMessageTables
{
    cMyMessageTables();

    cMyTableModel values;
    cMyTableModel messages;
    cMyTableModel forms;
};

/// What one message rule says, and in which form. For any one thread.
class cMySpokenForm
{
public:
    /// The numbers as the settings hold them. The tables are not needed any more afterwards.
    cMySpokenForm(int message, int form, const cMyMessageTables& tables);

    /// There is nothing to say: a message that does nothing, or that no table has.
    [[nodiscard]] bool isSilent() const { return m_isSilent; }

    /// The message in words, with the value in the chosen form if it is one of a measured value.
    /// Numbers have a point in every language.
    [[nodiscard]] QString text(const cMyDiveValues& values) const;

private:
    int m_message;
    bool m_isSilent;
    bool m_isMeasured;
    bool m_hasCaption;
    bool m_hasPoint;
    bool m_hasUnit;
    QString m_caption;
    cMyThresholdScale m_scale;
};

namespace emulator {

/// A spoken message for a person to read: time in s, depth in m, rule and words.
[[nodiscard]] QString spokenLine(const cMySpokenMessage& message);

} // namespace emulator

#endif
