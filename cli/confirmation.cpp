// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/confirmation.h"

#include "cli/console.h"
#include "cli/invocation.h"

namespace cli {

cMyOutcome confirm(const cMyInvocation& invocation, cMyConsole& console, const QString& question)
{
    if (invocation.has("yes") || console.ask(question)) {
        return {};
    }
    return {ExitStatus::Cancelled,
            {QStringLiteral("cancelled; the device is as it was (--yes goes on without a "
                            "question)")}};
}

} // namespace cli
