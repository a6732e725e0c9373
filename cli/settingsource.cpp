// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingsource.h"

#include "image/memoryarea.h"
#include "image/strictsettings.h"

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
    return applySettings(path, image::readStrictSettings(path), image);
}

cMyOutcome applySettings(const QString& path, const cMyStrictSettings& settings,
                         cMyMemoryArea& image)
{
    loadDefaults(image);
    if (settings.faultCount > 0) {
        return {ExitStatus::BadFile, image::faultLines(path, settings)};
    }
    for (std::size_t address = 0; address < settings.bytes.size(); ++address) {
        if (settings.isGiven[address]) {
            image.setData(static_cast<quint32>(address), settings.bytes.at(address));
        }
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
