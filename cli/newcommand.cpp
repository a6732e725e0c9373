// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/invocation.h"
#include "cli/outputfile.h"
#include "cli/settingsource.h"
#include "image/memoryarea.h"

namespace cli {

ExitStatus runNew(const cMyInvocation& invocation, cMyConsole& console)
{
    const QString file = invocation.operands.first();
    cMyMemoryArea image;
    loadDefaults(image);
    const cMyOutcome written = writeImageFile(file, image, invocation, console);
    if (written.isDone()) {
        console.say(QStringLiteral("%1: holds the default settings").arg(file));
    }
    return console.tell(written);
}

} // namespace cli
