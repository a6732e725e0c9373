// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_TEXTVALIDATOR_H
#define MIOLKA_EDITOR_TEXTVALIDATOR_H

#include "editor/fieldtext.h"

#include <QRegularExpressionValidator>
#include <QSet>

namespace editor {

/// What an edit put in: the part of the new text between what it shares with the old one at the
/// beginning and at the end.
struct Edit
{
    int position = 0;
    int removed = 0; ///< characters of the old text
    QString inserted;
};

/// Of two texts that are the same nothing was removed or inserted.
[[nodiscard]] Edit difference(const QString& before, const QString& after);

/// The text without those of its characters that cannot be typed but were loaded, in their order.
/// What undoing and redoing bring back leaves nothing that cannot be typed.
template <typename IsTypable>
[[nodiscard]] QString withoutLoaded(const QString& text, const QString& loaded,
                                    IsTypable canBeTyped)
{
    QString rest;
    QString::size_type from = 0;
    for (const QChar character : text) {
        const auto found = canBeTyped(character) ? -1 : loaded.indexOf(character, from);
        if (found < 0) {
            rest.append(character);
        } else {
            from = found + 1;
        }
    }
    return rest;
}

} // namespace editor

/// Lets a line edit take characters from space to tilde only, but keep what was loaded: a text
/// with other characters in it may be changed as long as no such character is put in.
class cMyTextValidator : public QRegularExpressionValidator
{
    Q_OBJECT

public:
    explicit cMyTextValidator(QObject* parent = nullptr);

    /// Takes the text that is about to be loaded, and forgets those before it.
    void setLoaded(const QString& text);

    /// The text is now this; undoing may bring it back.
    void remember(const QString& text);

    QValidator::State validate(QString& input, int& position) const override;

private:
    QString m_current;
    QSet<QString> m_accepted; ///< what the text was since it was loaded
};

#endif
