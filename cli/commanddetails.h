// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_COMMANDDETAILS_H
#define MIOLKA_CLI_COMMANDDETAILS_H

/// What the help and the manual page say of each command; paragraphs parted by a blank line.
namespace cli {

constexpr char portsDetails[] =
    "Each line tells the port and, where it cannot be opened, why. Ports are opened for a "
    "moment, but nothing is sent to a device.\n\n"
    "Exit status: 0, 3 if there is neither.\n\n"
    "Example: miolkactl ports";

constexpr char statusDetails[] =
    "The thirteen values of the page Overview of the window, and the result of the self-test "
    "in words. A device whose answers do not fit the questions has no status: nothing is "
    "guessed.\n\n"
    "With --json: port, selfTest (flags, works, faults), maximumDepthMetres, diveTimeSeconds, "
    "serialNumber, memorySizeMegabytes, versions and texts.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if it does not answer as it should, 130 after Ctrl-C.\n\n"
    "Example: miolkactl status --json";

constexpr char showDetails[] =
    "Rules are told as sentences, those that are switched off in short; with -v, each with "
    "its members. --json tells the stored bytes, the value, the unit and the label of every "
    "field, and every rule as a sentence.\n\n"
    "Exit status: 0, 5 if the file is at fault; with \"device\", 3 if there is no device or "
    "several, 4 if its port is in use or forbidden, 6 if it does not answer as it should, "
    "130 after Ctrl-C.\n\n"
    "Examples: miolkactl show mine.mio; miolkactl show device --json";

constexpr char getDetails[] =
    "FIELD is a name as \"show\" prints it; that of a rule, such as messageRule07, stands for all "
    "of its members.\n\n"
    "The value of one field is printed as it is. Of several, each is a line FIELD=VALUE, "
    "which \"set\" takes; line breaks in the description are \\n there, and backslashes \\\\.\n\n"
    "A choice that is not offered is the number that is stored for it on such a line, as #99. "
    "The version and numbers out of range are printed, but not taken by \"set\".\n\n"
    "Exit status: 0, 2 if there is no such field, 5 if the file is at fault; with "
    "\"device\", 3 if there is no device or several, 4 if its port is in use or forbidden, "
    "6 if it does not answer as it should, 130 after Ctrl-C.\n\n"
    "Examples: miolkactl get mine.mio volume; miolkactl get mine.mio messageRule01";

constexpr char setDetails[] =
    "Numbers are in the unit of the field, which may be left out: diveThreshold=120 or "
    "\"diveThreshold=120 cm\". Choices are given by their label, in small or capital letters; "
    "those of \"4 [s]\" and the like also as 4 or \"4 s\"; and any by the number that is stored "
    "for it, as #7. Texts are ASCII; in the description, \\n is a "
    "line break and \\\\ a backslash. The threshold of a rule is in the unit of the value "
    "that the rule compares after this call. An empty VALUE empties a text.\n\n"
    "If anything on the line is wrong, nothing is changed. Otherwise the file is first kept "
    "in the backup directory, and then the bytes of these fields are replaced, and no others: "
    "gravity does not follow altitude and latitude, as it does in the window. What changed is "
    "printed. Bytes that the file did not give are added, with their default values. If "
    "nothing changes, nothing is written.\n\n"
    "Exit status: 0, 2 if a field or value is not understood or out of range, 5 if FILE is "
    "at fault or cannot be written, or no backup can be made.\n\n"
    "Example: miolkactl set mine.mio diveThreshold=120 messageRule01.condition=underwater "
    "\"messageRule01.measuredValue=Depth MAX\" \"messageRule01.threshold=5 m\"";

constexpr char diffDetails[] =
    "A and B are each a settings file, \"device\" or \"default\". Rules that differ are told "
    "as sentences, then their members; bytes that belong to no field are told, too.\n\n"
    "The status is 1 if they differ and 0 if they do not. The version of the program that "
    "wrote the settings last is shown, but does not count.\n\n"
    "Exit status besides: 5 if a file is at fault; with \"device\", 3 if there is no device "
    "or several, 4 if its port is in use or forbidden, 6 if it does not answer as it "
    "should, 130 after Ctrl-C.\n\n"
    "Examples: miolkactl diff default mine.mio; miolkactl diff device mine.mio";

constexpr char checkDetails[] =
    "Faults make a file unusable, and the status 5: text that is no Intel HEX record, wrong "
    "checksums, addresses beyond the settings, bytes with two values, a missing end. Each is "
    "told with its line. The window reads such a file up to its first fault and says "
    "nothing.\n\n"
    "Doubts leave the status 0. They are about what is allowed but hardly meant: a file that "
    "gives only some of the bytes, unknown choices, numbers out of range and what the window "
    "would make of them, dive thresholds too near to each other, texts without an end, rules "
    "that never speak or act, rules that speak without end, and thresholds without effect. "
    "Rules are understood as the virtual device understands them.\n\n"
    "Example: miolkactl check mine.mio";

constexpr char newDetails[] =
    "A file that is there already is an error. With --force it is kept in the backup "
    "directory and then replaced.\n\n"
    "Exit status: 0, 5 if FILE is there already or cannot be written, or no backup can be "
    "made.\n\n"
    "Example: miolkactl new mine.mio";

constexpr char readDetails[] =
    "All 1024 bytes come from the device, or FILE is not written at all. A file that is there "
    "is refused; with --force it is written over, and kept in the backup directory first.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 5 if FILE is there already or cannot be written, 6 if the device does not "
    "answer as it should, 130 after Ctrl-C.\n\n"
    "Example: miolkactl read mine.mio";

constexpr char writeDetails[] =
    "FILE is checked, what the device holds is read, and every field that would change is "
    "shown. After \"yes\", what the device held is kept in a file of the backup directory; "
    "where that cannot be done, nothing is written. Then the settings are written with the "
    "version of this program in their first four bytes, as the window does, read back and "
    "compared byte for byte. If the device holds all settings of FILE already, nothing is "
    "written.\n\n"
    "If that is cut off, the device holds a part of the new settings and a part of the old: "
    "do not dive with it. The message gives the very command that brings back what it held. "
    "If what is read back is not what was written, that is offered at once; with --yes it is "
    "done.\n\n"
    "With --restore, FILE is such a backup and is written byte for byte; it has to give all 1024 "
    "bytes. If its name says that it is a backup of another device, the question says so, too; "
    "with --yes, which leaves nobody to ask, it is refused with status 3.\n\n"
    "With --all, every "
    "attached device is written to after one question for all of them; a line for each says "
    "what became of it, and the exit status is the one with the highest number.\n\n"
    "Exit status: 0, 3 if there is no device, several or the wrong one, 4 if its port is in use or "
    "forbidden, 5 if FILE is at fault or no backup can be made, 6 if the device does not "
    "answer as it should or has gone, 7 if it does not hold what was written, 130 after "
    "Ctrl-C or \"no\".\n\n"
    "Examples: miolkactl write mine.mio; miolkactl write club.mio --all --yes";

constexpr char verifyDetails[] =
    "Reads the device and prints each field that differs, with the value of the file first "
    "and that of the device behind it. The version of the program that wrote the settings is "
    "shown, but does not count.\n\n"
    "With --json: isDifferent, and differences with name, before (the file), after (the device) "
    "and isCounted.\n\n"
    "Exit status: 0 if they are the same, 1 if they differ, 3 if there is no device or "
    "several, 4 if its port is in use or forbidden, 5 if FILE is at fault, 6 if the device "
    "does not answer as it should, 130 after Ctrl-C.\n\n"
    "Example: miolkactl verify mine.mio";

constexpr char uploadDetails[] =
    "FILE is a sound library (.mia) or a custom messages library (.mic). Each of its records "
    "is checked before anything is sent: the device has to take it, it has to fit into its "
    "memory (if the device says how large that is), and the end record has to be there. What is "
    "wrong is told with the file and the "
    "line.\n\n"
    "The library that the device holds is replaced, and cannot be read back: keep its file. "
    "Ctrl-C leaves the device with a part of a library, in its root mode; upload again from "
    "the start then, before you dive.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 5 if FILE is at fault or does not fit, 6 if the device does not answer as it "
    "should or has gone, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl upload english.mia";

constexpr char resetDetails[] =
    "The device starts anew; its settings and sounds stay. It leaves its port for a moment: "
    "wait until it is back. If it does not come back, plug it in anew.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if the device does not answer as it should, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl reset --yes";

constexpr char clearStatsDetails[] =
    "Clears greatest depth, dive time and all other least and greatest values. They cannot be "
    "brought back; \"miolkactl status\" shows the two most wanted.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if the device does not answer as it should, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl status && miolkactl clear-stats";

constexpr char powerOffDetails[] =
    "The device goes off as soon as it is unplugged, which saves its battery over weeks. It "
    "comes on again by itself at USB or a charger; before that it is of no use under "
    "water.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if the device does not answer as it should, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl power-off";

constexpr char bootDetails[] =
    "The device waits in its boot loader for new firmware, which another program sends. It "
    "understands nothing else until that program starts it again ([Start Application]). Read "
    "its settings into a file before.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if the device does not answer as it should, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl read before.mio && miolkactl boot";

constexpr char rehearseDetails[] =
    "PROFILE is freedive (30 m in a minute), square (up from 18 m after 40 minutes) or "
    "sawtooth; or a file: a table of seconds and metres (.csv), a log of Subsurface (.ssrf, "
    ".xml) or one in the Universal Dive Data Format (.uddf). Of several dives the first is "
    "taken, unless --dive chooses another. The rehearsal ends with a minute at the "
    "surface.\n\n"
    "Each message is printed with its time, the depth and its rule; a + marks one that begins "
    "less than 2 s after the one before. What is printed is how the virtual device reads the "
    "rules, which is no promise of what the real one says.\n\n"
    "Exit status: 0, 2 if --dive or --plot is not understood, 5 if a file is at fault or "
    "cannot be written; with \"device\", 3 if there is no device or several, 4 if its port "
    "is in use or forbidden, 6 if it does not answer as it should, 130 after Ctrl-C.\n\n"
    "Examples: miolkactl rehearse mine.mio --profile freedive; miolkactl rehearse mine.mio "
    "--profile log.ssrf --dive 2 --plot dive.svg";

constexpr char doctorDetails[] =
    "Looks at USB, at the ports and who may use or has them, and at services that take ports "
    "for modems, and asks each device that can be opened for a sign of life. Whatever is "
    "wrong is told with a way out and, where there are, the lines to type. Nothing is "
    "changed, neither in the system nor in a device.\n\n"
    "Exit status: 0 if a device is well, 3 if there is none but perhaps a boot loader, 4 if its "
    "port is in use or forbidden, 6 if it does not answer.\n\n"
    "Example: miolkactl doctor";

} // namespace cli

#endif
