// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_OPTIONTABLES_H
#define MIOLKA_DOCS_MANUAL_OPTIONTABLES_H

#include <QStringList>

/// What the manual is made of.
namespace manual {

/// The tables that fields offer their choices from, in the order of the first field of each.
[[nodiscard]] QStringList optionTables();

} // namespace manual

#endif
