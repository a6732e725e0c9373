# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Prints what bash offers after each of the lines, and "----" after each list. Words are parted as
# the shell does it, also at "=".
# Usage: bash complete.bash SCRIPT LINE...
source "$1" || exit
shift
for line; do
    read -ra COMP_WORDS <<<"${line//=/ = }"
    if [[ $line == *' ' ]]; then
        COMP_WORDS+=("")
    fi
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _miolkactl
    ((${#COMPREPLY[@]})) && printf '%s\n' "${COMPREPLY[@]}"
    echo ----
done
