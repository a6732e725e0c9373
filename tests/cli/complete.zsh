# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Prints what zsh offers after each of the lines, and "----" after each list. The completion is
# looked for in the directory, which takes a file of what was offered.
# Usage: zsh -f complete.zsh DIRECTORY LINE...

# What the shell reads first in which the lines are typed.
prepare() {
    PROMPT=
    unsetopt zle_bracketed_paste auto_list
    LISTMAX=10000
    fpath=($directory $fpath)
    autoload -Uz compinit
    compinit -u -D
    compadd() {
        local -a matches
        if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
            builtin compadd "$@"
            return
        fi
        builtin compadd -A matches "$@"
        (( $#matches )) && print -rl -- $matches >>$directory/offered
        builtin compadd "$@"
    }
    offer() {
        zle complete-word
        print -r -- ---- >>$directory/offered
        print -n FINISHED
    }
    zle -N offer
    bindkey '^I' offer
    print READY
}

if [[ -n $COMPLETION_DIRECTORY ]]; then
    directory=$COMPLETION_DIRECTORY
    prepare
    return
fi
export COMPLETION_DIRECTORY=$1
shift
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "source ${(q)${0:A}}"
zpty -r shell output '*READY*' || exit 1
for line; do
    zpty -w -n shell $'\x15'"$line"$'\t'
    zpty -r shell output '*FINISHED*' || exit 1
done
zpty -d shell
cat -- $COMPLETION_DIRECTORY/offered
