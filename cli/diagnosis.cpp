// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diagnosis.h"

#include "cli/bootloader.h"
#include "cli/shellword.h"
#include "cli/system/portaccess.h"
#include "device/protocol.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

using cli::ExitStatus;

const QString modemService = QStringLiteral("ModemManager");

/// The very rules that the package installs. A file of this name overrides the package's one.
const QString rulesFile = QStringLiteral("70-miolkasoft.rules");

QString hexId(quint16 id)
{
    constexpr int digits = 4;
    constexpr int base = 16;
    return QStringLiteral("%1").arg(id, digits, base, QLatin1Char('0'));
}

/// What the system reads of the rules: neither comments nor blank lines.
QStringList ruleLines()
{
    QFile file(QStringLiteral(":/udev/") + rulesFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString& line) {
                                   return line.isEmpty() || line.startsWith(QLatin1Char('#'));
                               }),
                lines.end());
    return lines;
}

/// Both for the rights and against the modem service.
cMyRemedy ruleRemedy(const QString& purpose)
{
    const QString wayIn = QStringLiteral("sudo tee /etc/udev/rules.d/%1 <<'END'").arg(rulesFile);
    return {
        purpose + QStringLiteral(": install the package miolkasoft, or write the rules for the "
                                 "device that come with it; then plug it in anew"),
        QStringList{wayIn} + ruleLines() +
            QStringList{QStringLiteral("END"), QStringLiteral("sudo udevadm control --reload")}};
}

cMyFinding nothingAttached(const cMySystemLook& system)
{
    cMyFinding finding = {
        "none",
        {},
        system.isBlind() ? QStringLiteral("no serial port of a device is found")
                         : QStringLiteral("no device is seen on USB"),
        {{QStringLiteral("Plug the device in; it comes on by itself"), {}},
         {QStringLiteral("Try another cable: one that is only for charging has no wires for "
                         "data. Try another socket, and none of a hub"),
          {}}},
        ExitStatus::NoDevice};
    const QString listing = system.usbListing(device::vendorId);
    if (!listing.isEmpty()) {
        finding.remedies.append(
            {QStringLiteral("Look for a line with \"ID %1:%2\" in what USB shows; while there is "
                            "none, the computer does not see the device")
                 .arg(hexId(device::vendorId), hexId(device::productId)),
             {listing}});
    }
    return finding;
}

cMyFinding withoutPort(const cMyUsbDevice& usb, const cMySystemLook& system)
{
    cMyFinding finding = {"noPort",
                          usb.name,
                          QStringLiteral("the device is seen on USB but has no serial port"),
                          {},
                          ExitStatus::NoDevice};
    if (!system.hasSerialDriver()) {
        finding.text += QStringLiteral(", as the driver cdc_acm is not loaded");
        finding.remedies = {
            {QStringLiteral("Load the driver"), {QStringLiteral("sudo modprobe cdc_acm")}}};
        return finding;
    }
    finding.remedies = {
        {QStringLiteral("It may still be coming: wait a few seconds and look again"),
         {QStringLiteral("miolkactl doctor")}},
        {QStringLiteral("Otherwise plug it in anew, and see what the system says of it"),
         {QStringLiteral("sudo dmesg | tail -n 20")}}};
    return finding;
}

cMyFinding waitingBootLoader(const cMyFoundPort& port)
{
    return {"bootLoader",
            port.path.isEmpty() ? port.name : port.path,
            QStringLiteral("the device waits in its boot loader for a new firmware, and answers "
                           "nothing else"),
            {{QStringLiteral("To use it again, %1").arg(cli::bootLoaderWayOut()), {}}},
            ExitStatus::NoDevice};
}

QString rightsText(const cMyNode& node, const cMyUser& user)
{
    const QString rights = QStringLiteral("it belongs to %1, group %2, with the mode %3")
                               .arg(node.owner, node.group, node.mode);
    if (user.groups.contains(node.group)) {
        return QStringLiteral("%1; the user %2 is in that group").arg(rights, user.name);
    }
    return QStringLiteral("%1, and the user %2 is not in that group%3")
        .arg(rights, user.name,
             user.futureGroups.contains(node.group)
                 ? QStringLiteral(" in this login, but will be in the next")
                 : QString());
}

cMyFinding forbidden(const QString& path, const cMyExamination& examination, const QString& reason)
{
    cMyFinding finding = {"forbidden",
                          path,
                          QStringLiteral("the port may not be opened"),
                          {},
                          ExitStatus::NotAllowed};
    const std::optional<cMyNode> node = examination.system.node(path);
    if (!node) {
        finding.text += QStringLiteral(": %1").arg(reason);
        return finding;
    }
    finding.text += QStringLiteral(": %1").arg(rightsText(*node, examination.user));
    const bool isGroupOfUse = node->mode.mid(3, 2) == QLatin1String("rw");
    if (isGroupOfUse && !examination.user.groups.contains(node->group)) {
        if (examination.user.futureGroups.contains(node->group)) {
            finding.remedies.append({QStringLiteral("Log out and in again"), {}});
            return finding;
        }
        // A group of root's own would allow far more than the port.
        if (node->group != QLatin1String("root")) {
            finding.remedies.append(
                {QStringLiteral("Put the user into the group, then log out and in again"),
                 {QStringLiteral("sudo usermod -aG %1 \"$USER\"").arg(node->group)}});
        }
    }
    finding.remedies.prepend(ruleRemedy(QStringLiteral("For whoever sits at the computer")));
    return finding;
}

/// The line that ends a process, if need be with the rights of root.
QString endLine(const cMyProcess& process, const cMyUser& user)
{
    const bool isAllowed = process.owner == user.name || user.name == QLatin1String("root");
    return QStringLiteral("%1kill %2")
        .arg(isAllowed ? QString() : QStringLiteral("sudo "))
        .arg(process.id);
}

cMyFinding held(const QString& path, const QVector<cMyProcess>& holders, const cMyUser& user)
{
    QStringList names;
    QStringList endLines;
    for (const cMyProcess& process : holders) {
        names.append(QStringLiteral("%1 (process %2)").arg(process.name).arg(process.id));
        endLines.append(endLine(process, user));
    }
    const bool isOne = holders.size() == 1;
    return {
        "busy",
        path,
        QStringLiteral("the port is in use by %1").arg(names.join(QStringLiteral(", "))),
        {{isOne ? QStringLiteral("Close that program; if it has no window to close, end it")
                : QStringLiteral("Close those programs; end those that have no window to close"),
          endLines}},
        ExitStatus::NotAllowed};
}

/// The system lets only who made a lock file, or root, remove it.
cMyFinding locked(const QString& path, const QStringList& locks)
{
    QStringList lines;
    for (const QString& lock : locks) {
        lines.append(QStringLiteral("sudo rm %1").arg(cli::shellWord(lock)));
    }
    return {"staleLock",
            path,
            QStringLiteral("the port is locked by %1, which a program left behind that runs no "
                           "longer")
                .arg(locks.join(QStringLiteral(", "))),
            {{QStringLiteral("Remove the lock file"), lines}},
            ExitStatus::NotAllowed};
}

cMyFinding busy(const QString& path, const cMyExamination& examination, const QString& reason)
{
    const QVector<cMyProcess> holders = examination.system.holders(path);
    if (!holders.isEmpty()) {
        return held(path, holders, examination.user);
    }
    const QStringList locks = examination.system.staleLocks(path);
    if (!locks.isEmpty()) {
        return locked(path, locks);
    }
    cMyFinding finding = {
        "busy",
        path,
        QStringLiteral("the port cannot be opened (%1); a program of another user may have it")
            .arg(reason),
        {},
        ExitStatus::NotAllowed};
    const QString listing = examination.system.holderListing(path);
    if (listing.isEmpty()) {
        finding.remedies.append({QStringLiteral("Close what may use the port, then look again"),
                                 {QStringLiteral("miolkactl doctor")}});
    } else {
        finding.remedies.append({QStringLiteral("Find the program"), {listing}});
    }
    return finding;
}

/// That it can be opened does not mean that nobody else has it: few programs ask for it alone, and
/// each takes a part of the answers from the others.
cMyFinding freePort(const QString& path, const cMyExamination& examination)
{
    const QVector<cMyProcess> holders = examination.system.holders(path);
    if (!holders.isEmpty()) {
        // Nothing is sent into what another program is at.
        return held(path, holders, examination.user);
    }
    if (examination.answers(path)) {
        return {"well", path, QStringLiteral("the device answers; all is well"), {}};
    }
    // A program that has come meanwhile may have got the answer.
    const QVector<cMyProcess> latecomers = examination.system.holders(path);
    if (!latecomers.isEmpty()) {
        return held(path, latecomers, examination.user);
    }
    return {"silent",
            path,
            QStringLiteral("the port can be opened, but the device does not answer"),
            {{QStringLiteral("Unplug the device and plug it in again; then look again"),
              {QStringLiteral("miolkactl doctor")}}},
            ExitStatus::Protocol};
}

cMyFinding stateOfPort(const QString& path, const cMyExamination& examination)
{
    const cMyPortProbe probe = examination.probe(path);
    switch (probe.access) {
    case cMyPortProbe::Access::Free:
        return freePort(path, examination);
    case cMyPortProbe::Access::Busy:
        return busy(path, examination, probe.reason);
    case cMyPortProbe::Access::Forbidden:
        return forbidden(path, examination, probe.reason);
    case cMyPortProbe::Access::Faulty:
        break;
    }
    return {"faulty",
            path,
            QStringLiteral("the port cannot be opened: %1").arg(probe.reason),
            {{QStringLiteral("See which ports there are"), {QStringLiteral("miolkactl ports")}}},
            ExitStatus::NoDevice};
}

bool isDisturbed(const QString& path, const cMySystemLook& system)
{
    return system.isRunning(modemService) && !system.isHiddenFromModems(QFileInfo(path).fileName());
}

cMyFinding modemFinding(const QString& path)
{
    return {"modemService",
            path,
            QStringLiteral("%1 runs and is not told to leave the port alone: for some seconds "
                           "after the device was plugged in, it takes the port and sends to it")
                .arg(modemService),
            {ruleRemedy(QStringLiteral("To keep it away"))}};
}

/// So that nobody takes what is not told here for looked at and well.
cMyFinding unseen()
{
    return {"unseen",
            {},
            QStringLiteral("only serial ports could be looked at: on this system, miolkactl cannot "
                           "see what is on USB without a port, who may use a port, and which "
                           "programs have it"),
            {}};
}

cMyFinding severalDevices(const QStringList& paths)
{
    return {"several",
            {},
            QStringLiteral("%1 devices are attached, so each command must be told which of them "
                           "is meant")
                .arg(paths.size()),
            {{QStringLiteral("Name the port, such as"),
              {QStringLiteral("miolkactl --port %1 status").arg(cli::shellWord(paths.first()))}}}};
}

QString chosenPath(const QString& chosen)
{
    const QString path = cli::portPath(chosen);
    return path == chosen ? QFileInfo(chosen).absoluteFilePath() : path;
}

/// A port may be named by a link to it, too.
bool isMeant(const cMyFoundPort& port, const cMyExamination& examination)
{
    const QString& chosen = examination.chosenPort;
    return chosen.isEmpty() || chosen == port.name || chosen == port.path ||
           (!port.path.isEmpty() && examination.system.isSamePort(port.path, chosenPath(chosen)));
}

/// Paths of the ports to look at. One that was named need not be of a device that was recognised.
QStringList pathsToExamine(const cMyExamination& examination)
{
    QStringList paths;
    bool isAnyMeant = false;
    for (const cMyFoundPort& port : examination.ports) {
        const bool isThisMeant = isMeant(port, examination);
        isAnyMeant = isAnyMeant || isThisMeant;
        if (isThisMeant && !port.isBootLoader) {
            paths.append(port.path);
        }
    }
    if (!isAnyMeant && !examination.chosenPort.isEmpty()) {
        paths.append(examination.system.target(chosenPath(examination.chosenPort)));
    }
    return paths;
}

QVector<cMyFinding> findingsBeyondPorts(const cMyExamination& examination)
{
    QVector<cMyFinding> findings;
    for (const cMyFoundPort& port : examination.ports) {
        if (port.isBootLoader && isMeant(port, examination)) {
            findings.append(waitingBootLoader(port));
        }
    }
    const QVector<cMyUsbDevice> usbDevices = examination.system.usbDevices();
    for (const cMyUsbDevice& usb : usbDevices) {
        if (usb.product == device::productId && usb.portName.isEmpty()) {
            findings.append(withoutPort(usb, examination.system));
        }
    }
    return findings;
}

} // namespace

namespace cli {

QVector<cMyFinding> diagnose(const cMyExamination& examination)
{
    QVector<cMyFinding> findings;
    const QStringList paths = pathsToExamine(examination);
    for (const QString& path : paths) {
        findings.append(stateOfPort(path, examination));
        if (isDisturbed(path, examination.system)) {
            findings.append(modemFinding(path));
        }
    }
    if (paths.size() > 1) {
        findings.append(severalDevices(paths));
    }
    findings += findingsBeyondPorts(examination);
    if (findings.isEmpty()) {
        findings.append(nothingAttached(examination.system));
    }
    if (examination.system.isBlind()) {
        findings.append(unseen());
    }
    return findings;
}

ExitStatus statusOf(const QVector<cMyFinding>& findings)
{
    const bool isAnyWell =
        std::any_of(findings.cbegin(), findings.cend(),
                    [](const cMyFinding& finding) { return qstrcmp(finding.kind, "well") == 0; });
    const QVector<cMyFinding>::const_iterator bad =
        std::find_if(findings.cbegin(), findings.cend(), [&](const cMyFinding& finding) {
            // A device that is not ready hinders nobody who has another.
            return finding.status != ExitStatus::Done &&
                   !(isAnyWell && finding.status == ExitStatus::NoDevice);
        });
    return bad == findings.cend() ? ExitStatus::Done : bad->status;
}

} // namespace cli
