// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_DEVELOPER_SETTINGSIMAGE_H
#define MIOLKA_DOCS_DEVELOPER_SETTINGSIMAGE_H

#include <QString>

/// Pages for developers.
namespace developer {

/// docs/settings-image.md: every field of the settings image, the bytes that belong to none, and
/// the option tables, from the tables of the editor. Captions are in the language of the installed
/// catalogue.
[[nodiscard]] QString settingsImagePage();

} // namespace developer

#endif
