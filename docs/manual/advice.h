// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_ADVICE_H
#define MIOLKA_DOCS_MANUAL_ADVICE_H

#include <QHash>
#include <QString>
#include <QStringList>

struct cMySettingsField;

/// What the manual says about fields and choices beyond what their tables know: Markdown under
/// keys. A line "[key]" begins a text, which goes on to the next such line. Lines that begin with
/// "#" before the first key are comments. Keys are the names of fields, those of rules without the
/// rule's number ("timerRule.condition"), and a table's name with a stored code ("msgCb1/2").
class cMyAdvice
{
public:
    explicit cMyAdvice(const QString& source);

    /// The text under a key, without blank lines around it; empty if there is none.
    [[nodiscard]] QString text(const QString& key) const { return m_texts.value(key); }

    /// What a choice means. One of timer rules that has no text of its own means what the choice of
    /// the same label means for message rules.
    [[nodiscard]] QString meaning(const QString& table, int code) const;

    /// What keeps the manual from being made, in words; empty if nothing does: a field or a choice
    /// of rules without text, and keys that mean nothing or come twice.
    [[nodiscard]] QStringList faults() const;

private:
    QHash<QString, QString> m_texts;
    QStringList m_keys; ///< in their order, repeated ones too
};

namespace manual {

/// The key of a field's text.
[[nodiscard]] QString adviceKey(const cMySettingsField& field);

/// The key of a choice's text.
[[nodiscard]] QString adviceKey(const QString& table, const QString& code);

} // namespace manual

#endif
