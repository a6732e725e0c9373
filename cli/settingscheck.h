// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SETTINGSCHECK_H
#define MIOLKA_CLI_SETTINGSCHECK_H

#include <QString>
#include <QVector>

class cMyMemoryArea;

/// Something in settings that is allowed but hardly meant.
struct cMySettingsDoubt
{
    QString name; ///< of the field
    QString text; ///< what is doubtful about it, in the middle of a sentence
};

namespace cli {

/// All doubts about an image, those about rules last. What a window would make of a value that it
/// does not offer is told with it.
[[nodiscard]] QVector<cMySettingsDoubt> settingsDoubts(const cMyMemoryArea& image);

/// The gravity, as stored, that the window makes of altitude and latitude, each of which it brings
/// into its range before.
[[nodiscard]] int gravityOfPlace(const cMyMemoryArea& image);

} // namespace cli

#endif
