// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingsource.h"

#include "image/memoryarea.h"
#include "image/settingsfile.h"

namespace {

const QString defaultFile = QStringLiteral(":/pliki/clear.mio");

} // namespace

namespace cli {

void loadDefaults(cMyMemoryArea& image)
{
    image::readSettingsFile(defaultFile, image);
    image.clearModified();
}

cMyOutcome loadSettings(const QString& path, cMyMemoryArea& image)
{
    loadDefaults(image);
    if (!image::readSettingsFile(path, image)) {
        return {ExitStatus::BadFile, {QStringLiteral("%1: cannot be read").arg(path)}};
    }
    image.clearModified();
    return {};
}

cMyOutcome loadSource(const QString& source, const cMyInvocation& invocation, cMyConsole& console,
                      cMyMemoryArea& image)
{
    if (source == QLatin1String("device")) {
        return readDevice(invocation, console, image);
    }
    if (source == QLatin1String("default")) {
        loadDefaults(image);
        return {};
    }
    return loadSettings(source, image);
}

} // namespace cli
