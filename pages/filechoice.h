// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_PAGES_FILECHOICE_H
#define MIOLKA_PAGES_FILECHOICE_H

#include <QString>

class QWidget;

/// Dialogs about files that stand over the window. What they say about a file, its name may have
/// come from anywhere, is said in plain text.
namespace pages {

/// Asks for a file that exists, beginning in the directory; empty if none was chosen.
[[nodiscard]] QString chooseFileToOpen(QWidget& window, const QString& title,
                                       const QString& directory, const QString& filter);

/// Asks for a name to save to, beginning in the directory, and whether a file that is there may be
/// replaced; empty if none was chosen.
[[nodiscard]] QString chooseFileToSave(QWidget& window, const QString& title,
                                       const QString& directory, const QString& filter);

} // namespace pages

#endif
