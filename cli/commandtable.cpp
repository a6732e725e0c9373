// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"

#include "cli/commands.h"
#include "cli/devicedetails.h"

#include <algorithm>

namespace {

using cli::ExitStatus;

const cMyOption yesOption = {'y', "yes", "", Completion::None, "Do not ask"};
const cMyOption forceOption = {
    'f', "force", "", Completion::None,
    "Write over an existing file, which is kept in the backup directory first"};
const cMyOption backupOption = {'\0', "backup-dir", "DIR", Completion::Directory,
                                "Keep backups there, not in the user's data directory"};

QVector<cMyCommand> buildCommands()
{
    return {
        {"ports",
         {},
         {},
         "list the devices and boot loaders found",
         "Each line tells the port and, where it cannot be opened, why. Ports are opened for a "
         "moment, but nothing is sent to a device.",
         cli::runPorts},
        {"status",
         {},
         {},
         "show the status of the device and its self-test",
         cli::statusDetails,
         cli::runStatus},
        {"show",
         {{"SOURCE", Completion::ImageSource}},
         {},
         "show every field of the settings, rules as sentences",
         "SOURCE is a settings file, \"device\" for the attached device or \"default\" for the "
         "built-in settings.\n\n"
         "Rules are told as sentences, those that are switched off in short; with -v, each with "
         "its "
         "members. --json tells the stored bytes, the value, the unit and the label of every "
         "field, and every rule as a sentence.",
         cli::runShow},
        {"get",
         {{"SOURCE", Completion::ImageSource}, {"FIELD", Completion::Field, true}},
         {},
         "print the values of fields",
         "SOURCE is a settings file, \"device\" or \"default\". FIELD is a name as \"show\" prints "
         "it; that of a rule, such as messageRule07, stands for all of its members.\n\n"
         "The value of one field is printed as it is. Of several, each is a line FIELD=VALUE, "
         "which "
         "\"set\" takes; line breaks in the description are \\n there, and backslashes \\\\.",
         cli::runGet},
        {"set",
         {{"FILE", Completion::SettingsFile}, {"FIELD=VALUE", Completion::Assignment, true}},
         {backupOption},
         "change fields of a settings file, and nothing else in it",
         "Numbers are in the unit of the field, which may be left out: diveThreshold=120 or "
         "\"diveThreshold=120 cm\". Choices are given by their label, in small or capital letters, "
         "or by the number that is stored for it. Texts are ASCII; in the description, \\n is a "
         "line "
         "break and \\\\ a backslash. The threshold of a rule is in the unit of the value that the "
         "rule compares after this call. An empty VALUE empties a text.\n\n"
         "If anything on the line is wrong, nothing is changed. Otherwise the file is first kept "
         "in "
         "the backup directory, and then the bytes of these fields are replaced, and no others: "
         "gravity does not follow altitude and latitude, as it does in the window. What changed "
         "is printed. Bytes that the file did not give are added, with their default values. If "
         "nothing changes, nothing is written.",
         cli::runSet},
        {"diff",
         {{"A", Completion::ImageSource}, {"B", Completion::ImageSource}},
         {},
         "compare two sets of settings field by field",
         "A and B are each a settings file, \"device\" or \"default\". Rules that differ are told "
         "as "
         "sentences, then their members; bytes that belong to no field are told, too.\n\n"
         "The status is 1 if they differ and 0 if they do not. The version of the program that "
         "wrote "
         "the settings last is shown, but does not count.",
         cli::runDiff},
        {"check",
         {{"FILE", Completion::SettingsFile}},
         {},
         "look for faults and doubts in a settings file",
         "Faults make a file unusable, and the status 5: text that is no Intel HEX record, wrong "
         "checksums, addresses beyond the settings, bytes with two values, a missing end. Each is "
         "told with its line. The window reads such a file up to its first fault and says "
         "nothing.\n\n"
         "Doubts leave the status 0. They are about what is allowed but hardly meant: a file that "
         "gives only some of the bytes, unknown choices, numbers out of range and what the window "
         "would make of them, dive thresholds too near to each other, texts without an end, rules "
         "that never speak or act, rules that speak without end, and thresholds without effect. "
         "Rules are understood as the virtual device understands them.",
         cli::runCheck},
        {"new",
         {{"FILE", Completion::SettingsFile}},
         {forceOption, backupOption},
         "write the built-in default settings to a file",
         "A file that is there already is an error. With --force it is kept in the backup "
         "directory "
         "and then replaced.",
         cli::runNew},
        {"read",
         {{"FILE", Completion::SettingsFile}},
         {forceOption, backupOption},
         "read the settings of the device into a file",
         cli::readDetails,
         cli::runRead},
        {"write",
         {{"FILE", Completion::SettingsFile}},
         {yesOption,
          backupOption,
          {'\0', "all", "", Completion::None, "Write to every attached device"},
          {'\0', "restore", "", Completion::None,
           "FILE is a backup: write it byte for byte, without the version of this program"}},
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
        {"rehearse",
         {{"SOURCE", Completion::ImageSource}},
         {{'p', "profile", "PROFILE", Completion::Profile,
           "The dive: a file, or freedive, square or sawtooth"},
          {'\0', "plot", "FILE", Completion::Picture, "Draw the dive as a picture (.svg or .png)"},
          forceOption,
          backupOption},
         "dive with a virtual device and print what it says",
         "",
         cli::runRehearse},
        {"doctor",
         {},
         {},
         "say why a device is not found or cannot be used, and what to do",
         "Looks at USB, at the ports and who may use or has them, and at services that take ports "
         "for modems, and asks each device that can be opened for a sign of life. Whatever is "
         "wrong is told with a way out and, where there are, the lines to type. Nothing is "
         "changed, "
         "neither in the system nor in a device.",
         cli::runDoctor},
    };
}

} // namespace

namespace cli {

const QVector<cMyCommand>& commands()
{
    static const QVector<cMyCommand> table = buildCommands();
    return table;
}

const cMyCommand* findCommand(const QString& name)
{
    const auto& table = commands();
    const auto* found = std::find_if(table.cbegin(), table.cend(), [&](const cMyCommand& command) {
        return name == QLatin1String(command.name);
    });
    return found == table.cend() ? nullptr : found;
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
