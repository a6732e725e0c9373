// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/invocation.h"
#include "cli/portprobe.h"
#include "cli/portsearch.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

struct PortState
{
    cMyFoundPort port;
    cMyPortProbe probe; ///< of what has a path
};

QString accessName(cMyPortProbe::Access access)
{
    switch (access) {
    case cMyPortProbe::Access::Free:
        return QStringLiteral("free");
    case cMyPortProbe::Access::Busy:
        return QStringLiteral("busy");
    case cMyPortProbe::Access::Forbidden:
        return QStringLiteral("forbidden");
    case cMyPortProbe::Access::Faulty:
        break;
    }
    return QStringLiteral("faulty");
}

QString accessText(const cMyPortProbe& probe)
{
    switch (probe.access) {
    case cMyPortProbe::Access::Free:
        return {};
    case cMyPortProbe::Access::Busy:
        return QStringLiteral(", in use by another program");
    case cMyPortProbe::Access::Forbidden:
        return QStringLiteral(", cannot be opened: %1").arg(probe.reason);
    case cMyPortProbe::Access::Faulty:
        break;
    }
    return QStringLiteral(", cannot be opened: %1").arg(probe.reason);
}

QString lineOf(const PortState& state)
{
    const QString serial = state.port.serialNumber.isEmpty()
                               ? QString()
                               : QStringLiteral(", serial number ") + state.port.serialNumber;
    if (state.port.isBootLoader) {
        return QStringLiteral("%1: boot loader, waits for a firmware%2")
            .arg(state.port.name, serial);
    }
    return QStringLiteral("%1: Miolka%2%3").arg(state.port.name, serial, accessText(state.probe));
}

QJsonObject objectOf(const PortState& state)
{
    QJsonObject object = {{QStringLiteral("name"), state.port.name},
                          {QStringLiteral("path"), state.port.path},
                          {QStringLiteral("product"), state.port.product},
                          {QStringLiteral("serialNumber"), state.port.serialNumber},
                          {QStringLiteral("bootLoader"), state.port.isBootLoader}};
    if (!state.port.isBootLoader) {
        object.insert(QStringLiteral("access"), accessName(state.probe.access));
        object.insert(QStringLiteral("reason"), state.probe.reason);
    }
    return object;
}

QVector<PortState> statesOfPorts()
{
    QVector<PortState> states;
    const QVector<cMyFoundPort> ports = cli::findPorts();
    for (const cMyFoundPort& port : ports) {
        states.append({port, port.isBootLoader ? cMyPortProbe() : cli::probePort(port.path)});
    }
    return states;
}

void print(const QVector<PortState>& states, cMyConsole& console)
{
    QJsonArray array;
    for (const PortState& state : states) {
        if (console.isJson()) {
            array.append(objectOf(state));
        } else {
            console.result(lineOf(state));
        }
    }
    if (console.isJson()) {
        console.result(QJsonObject{{QStringLiteral("ports"), array}});
    }
}

} // namespace

namespace cli {

ExitStatus runPorts(const cMyInvocation& /*invocation*/, cMyConsole& console)
{
    const QVector<PortState> states = statesOfPorts();
    print(states, console);
    if (states.isEmpty()) {
        console.error(
            QStringLiteral("no device is attached (miolkactl doctor looks for the cause)"));
        return ExitStatus::NoDevice;
    }
    return ExitStatus::Done;
}

} // namespace cli
