// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/devicesession.h"
#include "device/replies.h"
#include "device/requests.h"

#include <QJsonArray>
#include <QJsonObject>

#include <array>

namespace {

struct Fault
{
    device::SelfTest flag;
    const char* meaning;
};

constexpr std::array<Fault, 7> faults = {{
    {device::PressureSensorFault, "pressure sensor faulty"},
    {device::AudioFault, "audio codec faulty"},
    {device::FlashFault, "flash faulty"},
    {device::SettingsError, "error in the settings"},
    {device::LibraryError, "error in the sound library"},
    {device::MessagesError, "error in the custom messages"},
    {device::FirmwareError, "error in the firmware"},
}};

bool works(const device::DeviceStatus& status)
{
    return (status.selfTest & device::Works) != 0;
}

QStringList faultsOf(const device::DeviceStatus& status)
{
    QStringList meanings;
    for (const Fault& fault : faults) {
        if ((status.selfTest & fault.flag) != 0) {
            meanings.append(QLatin1String(fault.meaning));
        }
    }
    return meanings;
}

QString selfTestText(const device::DeviceStatus& status)
{
    const QStringList verdict(works(status) ? QStringLiteral("works")
                                            : QStringLiteral("does not work"));
    return (verdict + faultsOf(status)).join(QStringLiteral(", "));
}

void print(const device::DeviceStatus& status, cMyConsole& console)
{
    const std::array<std::pair<const char*, QString>, device::StatusTextCount> lines = {{
        {"Self-test", selfTestText(status)},
        {"Max depth", device::depthText(status.maximumDepth)},
        {"Dive time", device::durationText(status.diveTime)},
        {"Serial number", QString::number(status.serialNumber)},
        {"Hardware version", status.hardwareVersion},
        {"Memory size", QStringLiteral("%1 MB").arg(status.memorySize)},
        {"Firmware version", status.firmwareVersion},
        {"Language", status.voiceLanguage},
        {"Sound library version", status.voiceVersion},
        {"Settings version", status.settingsVersion},
        {"Author", status.settingsAuthor},
        {"Title", status.settingsTitle},
        {"Description", status.settingsDescription},
    }};
    constexpr int captionWidth = 23;
    for (const auto& [caption, value] : lines) {
        console.result(
            QString(QLatin1String(caption) + QLatin1Char(':')).leftJustified(captionWidth) + value);
    }
}

QJsonObject toJson(const device::DeviceStatus& status, const QString& port)
{
    constexpr double centimetresPerMetre = 100;
    return {
        {QStringLiteral("port"), port},
        {QStringLiteral("selfTest"),
         QJsonObject{{QStringLiteral("flags"), status.selfTest},
                     {QStringLiteral("works"), works(status)},
                     {QStringLiteral("faults"), QJsonArray::fromStringList(faultsOf(status))}}},
        {QStringLiteral("maximumDepthMetres"), status.maximumDepth / centimetresPerMetre},
        {QStringLiteral("diveTimeSeconds"), status.diveTime},
        {QStringLiteral("serialNumber"), status.serialNumber},
        {QStringLiteral("hardwareVersion"), status.hardwareVersion},
        {QStringLiteral("memorySizeMegabytes"), status.memorySize},
        {QStringLiteral("firmwareVersion"), status.firmwareVersion},
        {QStringLiteral("language"), status.voiceLanguage},
        {QStringLiteral("soundLibraryVersion"), status.voiceVersion},
        {QStringLiteral("settingsVersion"), status.settingsVersion},
        {QStringLiteral("author"), status.settingsAuthor},
        {QStringLiteral("title"), status.settingsTitle},
        {QStringLiteral("description"), status.settingsDescription},
    };
}

} // namespace

namespace cli {

ExitStatus runStatus(const cMyInvocation& invocation, cMyConsole& console)
{
    cMyDeviceSession session(console);
    cMyOutcome outcome = session.open(invocation);
    QStringList replies;
    if (outcome.isDone()) {
        // A record that is missing would give its place to the next one, and a depth to a time.
        outcome = session.exchange(QStringLiteral("Reading status"), device::statusRequest(),
                                   cMyDeviceSession::Answers::Records, &replies);
    }
    if (!outcome.isDone()) {
        return console.tell(outcome);
    }
    const device::DeviceStatus status = device::readStatus(replies);
    if (console.isJson()) {
        console.result(toJson(status, session.name()));
    } else {
        print(status, console);
    }
    return ExitStatus::Done;
}

} // namespace cli
