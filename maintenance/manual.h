// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_MAINTENANCE_MANUAL_H
#define MIOLKA_MAINTENANCE_MANUAL_H

#include <QUrl>

/// The user manual, a PDF file beside the program.
namespace maintenance {

/// Where it lies, or should.
[[nodiscard]] QUrl manualUrl();

/// Hands it to the desktop, which shows it and tells the user if it cannot.
void openManual();

} // namespace maintenance

#endif
