# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Prints what fish offers after each of the lines, each with its description behind a tabulator,
# and "----" after each list. Usage: fish --no-config complete.fish SCRIPT LINE...
source $argv[1]; or exit 1
for line in $argv[2..-1]
    complete -C$line
    echo ----
end
