// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"

#include "cli/commanddetails.h"
#include "cli/commands.h"

namespace {

const cMyOption yesOption = {'y', "yes", "", Completion::None, "Do not ask"};
const cMyOption forceOption = {
    'f', "force", "", Completion::None,
    "Write over an existing file, which is kept in the backup directory first"};
const cMyOption backupOption = {'\0', "backup-dir", "DIR", Completion::Directory,
                                "Keep backups there, not in the user's data directory"};

const cMyOption allOption = {'\0', "all", "", Completion::None, "Write to every attached device"};
const cMyOption restoreOption = {
    '\0', "restore", "", Completion::None,
    "FILE is a backup: write it byte for byte, without the version of this program"};
const cMyOption profileOption = {'p', "profile", "PROFILE", Completion::Profile,
                                 "The dive: a file, or freedive, square or sawtooth"};
const cMyOption diveOption = {'\0', "dive", "N", Completion::None,
                              "Which dive of the file, counted from 1"};
const cMyOption plotOption = {'\0', "plot", "FILE", Completion::Picture,
                              "Draw the dive as a picture (.svg or .png)"};

QVector<cMyCommand> lookingCommands()
{
    return {
        {"ports",
         {},
         {},
         "list the devices and boot loaders found",
         cli::portsDetails,
         cli::runPorts},
        {"status",
         {},
         {},
         "show the status of the device and its self-test",
         cli::statusDetails,
         cli::runStatus},
        {"doctor",
         {},
         {},
         "say why a device is not found or cannot be used, and what to do",
         cli::doctorDetails,
         cli::runDoctor},
    };
}

QVector<cMyCommand> settingsCommands()
{
    return {
        {"show",
         {{"SOURCE", Completion::ImageSource}},
         {},
         "show every field of the settings, rules as sentences",
         cli::showDetails,
         cli::runShow},
        {"get",
         {{"SOURCE", Completion::ImageSource}, {"FIELD", Completion::Field, true}},
         {},
         "print the values of fields",
         cli::getDetails,
         cli::runGet},
        {"set",
         {{"FILE", Completion::SettingsFile}, {"FIELD=VALUE", Completion::Assignment, true}},
         {backupOption},
         "change fields of a settings file, and nothing else in it",
         cli::setDetails,
         cli::runSet},
        {"diff",
         {{"A", Completion::ImageSource}, {"B", Completion::ImageSource}},
         {},
         "compare two sets of settings field by field",
         cli::diffDetails,
         cli::runDiff},
        {"check",
         {{"FILE", Completion::SettingsFile}},
         {},
         "look for faults and doubts in a settings file",
         cli::checkDetails,
         cli::runCheck},
        {"new",
         {{"FILE", Completion::SettingsFile}},
         {forceOption, backupOption},
         "write the built-in default settings to a file",
         cli::newDetails,
         cli::runNew},
        {"rehearse",
         {{"SOURCE", Completion::ImageSource}},
         {profileOption, diveOption, plotOption, forceOption, backupOption},
         "dive with a virtual device and print what it says",
         cli::rehearseDetails,
         cli::runRehearse},
    };
}

QVector<cMyCommand> transferCommands()
{
    return {
        {"read",
         {{"FILE", Completion::SettingsFile}},
         {forceOption, backupOption},
         "read the settings of the device into a file",
         cli::readDetails,
         cli::runRead},
        {"write",
         {{"FILE", Completion::SettingsFile}},
         {yesOption, backupOption, allOption, restoreOption},
         "write a settings file to the device",
         cli::writeDetails,
         cli::runWrite},
        {"verify",
         {{"FILE", Completion::SettingsFile}},
         {},
         "compare the settings of the device with a file",
         cli::verifyDetails,
         cli::runVerify},
        {"upload",
         {{"FILE", Completion::LibraryFile}},
         {yesOption},
         "send a sound or messages library to the device",
         cli::uploadDetails,
         cli::runUpload},
    };
}

QVector<cMyCommand> serviceCommands()
{
    return {
        {"reset", {}, {yesOption}, "start the device anew", cli::resetDetails, cli::runReset},
        {"clear-stats",
         {},
         {yesOption},
         "clear the statistics of the device",
         cli::clearStatsDetails,
         cli::runClearStats},
        {"power-off",
         {},
         {yesOption},
         "switch the device off",
         cli::powerOffDetails,
         cli::runPowerOff},
        {"boot",
         {},
         {yesOption},
         "start the boot loader of the device",
         cli::bootDetails,
         cli::runBoot},
    };
}

} // namespace

namespace cli {

const QVector<cMyCommand>& commands()
{
    static const QVector<cMyCommand> table =
        lookingCommands() + settingsCommands() + transferCommands() + serviceCommands();
    return table;
}

const cMyCommand* findCommand(const QString& name)
{
    for (const cMyCommand& command : commands()) {
        if (name == QLatin1String(command.name)) {
            return &command;
        }
    }
    return nullptr;
}

const QVector<cMyOption>& commonOptions()
{
    static const QVector<cMyOption> options = {
        {'\0', "port", "NAME", Completion::Port, "Use the device at this port"},
        {'\0', "emulator", "", Completion::None, "Use a virtual device inside this program"},
        {'\0', "json", "", Completion::None, "Print results as JSON"},
        {'q', "quiet", "", Completion::None, "Print results and errors only"},
        {'v', "verbose", "", Completion::None, "Tell more of what is done"},
        {'\0', "trace", "FILE", Completion::File, "Keep every line to and from the device there"},
        {'h', "help", "", Completion::None, "Print help, of the command if one is given"},
        {'\0', "version", "", Completion::None, "Print the version"},
    };
    return options;
}

const QVector<StatusMeaning>& exitStatuses()
{
    static const QVector<StatusMeaning> meanings = {
        {ExitStatus::Done, "done"},
        {ExitStatus::Differs, "the settings differ"},
        {ExitStatus::Usage, "the command line is not understood"},
        {ExitStatus::NoDevice, "no device is attached, or several and none was named"},
        {ExitStatus::NotAllowed, "the port is in use by another program, or forbidden"},
        {ExitStatus::BadFile, "a file cannot be read or written, or is at fault"},
        {ExitStatus::Protocol, "the device does not answer, not as it should, or has gone"},
        {ExitStatus::Mismatch, "the device does not hold what was written to it"},
        {ExitStatus::Cancelled, "cancelled"},
    };
    return meanings;
}

QString synopsis(const cMyCommand& command)
{
    QString text = QLatin1String(command.name);
    for (const cMyOperand& operand : command.operands) {
        const QString name =
            QLatin1String(operand.name) + QLatin1String(operand.isRepeated ? "..." : "");
        text += QLatin1Char(' ') +
                (operand.isOptional ? QLatin1Char('[') + name + QLatin1Char(']') : name);
    }
    return text;
}

} // namespace cli
