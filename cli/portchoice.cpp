// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/portchoice.h"

#include "cli/bootloader.h"
#include "cli/invocation.h"
#include "cli/system/portaccess.h"

#include <algorithm>
#include <iterator>

namespace {

cMyOutcome noDevice(const QString& reason, const QString& wayOut)
{
    return {cli::ExitStatus::NoDevice, {reason, wayOut}};
}

cMyOutcome bootLoader(const QString& name)
{
    return noDevice(
        QStringLiteral("%1: this device waits in its boot loader for a firmware update, "
                       "and understands nothing else")
            .arg(name),
        cli::bootLoaderWayOut());
}

cMyOutcome chooseNamed(const QString& name, cMyFoundPort& port)
{
    const QString path = cli::portPath(name);
    if (name.isEmpty() || !cli::isPortThere(path)) {
        return noDevice(QStringLiteral("there is no port \"%1\"").arg(name),
                        QStringLiteral("\"miolkactl ports\" lists the devices attached"));
    }
    const QVector<cMyFoundPort> found = cli::findPorts();
    const QString target = cli::linkedPort(path);
    const QVector<cMyFoundPort>::const_iterator known =
        std::find_if(found.cbegin(), found.cend(),
                     [&](const cMyFoundPort& each) { return each.path == target; });
    if (known != found.cend()) {
        port = *known;
    } else {
        port.name = cli::portName(path);
        port.path = path;
    }
    return port.isBootLoader ? bootLoader(port.name) : cMyOutcome();
}

} // namespace

namespace cli {

cMyOutcome choosePort(const cMyInvocation& invocation, cMyFoundPort& port)
{
    if (invocation.has("port")) {
        return chooseNamed(invocation.value("port"), port);
    }
    QVector<cMyFoundPort> ports;
    cMyOutcome outcome = chooseAllPorts(ports);
    if (!outcome.isDone()) {
        return outcome;
    }
    if (ports.size() > 1) {
        QStringList names;
        for (const cMyFoundPort& each : ports) {
            names.append(each.name);
        }
        return noDevice(QStringLiteral("several devices are attached: %1")
                            .arg(names.join(QStringLiteral(", "))),
                        QStringLiteral("name one of them: --port %1").arg(names.constFirst()));
    }
    port = ports.constFirst();
    return {};
}

cMyOutcome chooseAllPorts(QVector<cMyFoundPort>& ports)
{
    const QVector<cMyFoundPort> found = findPorts();
    std::copy_if(found.cbegin(), found.cend(), std::back_inserter(ports),
                 [](const cMyFoundPort& each) { return !each.isBootLoader; });
    if (!ports.isEmpty()) {
        return {};
    }
    if (!found.isEmpty()) {
        return bootLoader(found.constFirst().name);
    }
    return noDevice(QStringLiteral("no device is attached"),
                    QStringLiteral("plug it in; \"miolkactl doctor\" says why one that is plugged "
                                   "in is not found"));
}

} // namespace cli
