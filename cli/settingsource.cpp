// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingsource.h"

#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "image/strictsettings.h"

#include <QFileInfo>

namespace {

const QString defaultFile = QStringLiteral(":/pliki/clear.mio");
const QString deviceSource = QStringLiteral("device");
const QString defaultSource = QStringLiteral("default");

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
        QStringList reasons = image::faultLines(path, settings);
        const bool isSource = path == deviceSource || path == defaultSource;
        if (isSource && !QFileInfo::exists(path)) {
            reasons +=
                QStringLiteral("this command takes a file only: get one with \"miolkactl %1\"")
                    .arg(path == deviceSource ? QStringLiteral("read FILE")
                                              : QStringLiteral("new FILE"));
        }
        return {ExitStatus::BadFile, reasons};
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
    if (source == deviceSource) {
        return readDevice(invocation, console, image);
    }
    if (source == defaultSource) {
        loadDefaults(image);
        return {};
    }
    return loadSettings(source, image);
}

} // namespace cli
