// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DEVICEDETAILS_H
#define MIOLKA_CLI_DEVICEDETAILS_H

/// What the help and the manual page say of the commands that talk with a device; paragraphs parted
/// by a blank line.
namespace cli {

constexpr char statusDetails[] =
    "The thirteen values of the page Overview of the window, and the result of the self-test "
    "in words. A device whose answers do not fit the questions has no status: nothing is "
    "guessed.\n\n"
    "With --json: port, selfTest (flags, works, faults), maximumDepthMetres, diveTimeSeconds, "
    "serialNumber, memorySizeMegabytes, versions and texts.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 6 if it does not answer as it should, 130 after Ctrl-C.\n\n"
    "Example: miolkactl status --json";

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
    "With --restore, FILE is such a backup and is written byte for byte. With --all, every "
    "attached device is written to after one question for all of them; a line for each says "
    "what became of it, and the exit status is the one with the highest number.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
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
    "memory, and the end record has to be there. What is wrong is told with the file and the "
    "line.\n\n"
    "The library that the device holds is replaced, and cannot be read back: keep its file. "
    "Ctrl-C leaves the device with a part of a library, in its root mode; upload again from "
    "the start then, before you dive.\n\n"
    "Exit status: 0, 3 if there is no device or several, 4 if its port is in use or "
    "forbidden, 5 if FILE is at fault or does not fit, 6 if the device does not answer as it "
    "should or has gone, 130 after Ctrl-C or \"no\".\n\n"
    "Example: miolkactl upload english.mia";

constexpr char resetDetails[] =
    "The device starts anew; its settings and sounds stay. It leaves its port for a moment. "
    "If it does not come back, plug it in anew.\n\n"
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

} // namespace cli

#endif
