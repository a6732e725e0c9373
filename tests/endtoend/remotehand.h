// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_REMOTEHAND_H
#define MIOLKA_ENDTOEND_REMOTEHAND_H

#include "tests/endtoend/remoteanswer.h"

#include <QHash>

/// What a person does to the program, with mouse and keyboard. To be called in the GUI thread.
namespace remote {

/// The requests that act, by their names. What a person could not do now - use what is disabled,
/// out of sight or behind a dialog - is refused.
[[nodiscard]] QHash<QString, Command> actingCommands();

} // namespace remote

#endif
