# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Tells Doxygen what our headers leave to a reader who knows their habits. Line numbers stay.
# - A comment stands for all declarations below it, up to a blank line.
# - What overrides is told by its base class.
# - A parent owns its child.
# - A slot on_WIDGET_SIGNAL() is called by its name.
# - A variable without a comment says by its name what it is.
# Links between pages of Markdown become plain text: Doxygen does not know our anchors.

function indentation(line) {
    match(line, /^ */)
    return RLENGTH
}

function document(text, line) {
    return substr(line, 1, indentation(line)) "/** " text " */ " substr(line, indentation(line) + 1)
}

function habit(line,    name, signal) {
    if (line ~ /override( = default)?;$/ || line ~ /override \{.*\}$/) {
        return "Overrides what its base class tells of."
    }
    if (line ~ /^ *explicit cMy[A-Za-z0-9]*\((QWidget|QObject)\* parent( = nullptr)?\)/) {
        return "The parent, if there is one, owns the object."
    }
    if (line ~ /^ *void on_/) {
        name = line
        sub(/^ *void on_/, "", name)
        sub(/\(.*/, "", name)
        signal = name
        sub(/^.*_/, "", signal)
        sub(/_[^_]*$/, "", name)
        return "Called by its name, for the signal " signal "() of the form's object \"" name "\"."
    }
    if (line ~ /^ *constexpr [^(]*=$/ || line ~ /^ *[A-Za-z][^()]* [a-zA-Z]+( = [^(]*|{})?;$/) {
        return line ~ /^ *return / ? "" : "&#8203;"
    }
    return ""
}

FILENAME ~ /\.md$/ {
    while (match($0, /\[[^][]*\]\([^()]*\)/)) {
        link = substr($0, RSTART, RLENGTH)
        sub(/^\[/, "", link)
        sub(/\]\([^()]*\)$/, "", link)
        $0 = substr($0, 1, RSTART - 1) link substr($0, RSTART + RLENGTH)
    }
    print
    next
}

/^ *\/\/\/[^<]/ || /^ *\/\/\/$/ {
    if (!isComment) {
        text = ""
    }
    isComment = 1
    line = $0
    sub(/^ *\/\/\/ ?/, "", line)
    text = text " " line
    indent = indentation($0)
    isFirst = 1
    print
    next
}

# What goes on below is not told of twice.
{
    isComment = 0
    isContinued = isOpen
    isOpen = /[,(=]$/
}

# The end of a group, or of what has a scope of its own.
/^ *$/ || /^ *[{}]/ || /:$/ {
    text = ""
    print
    next
}

/^ *(Q_|#|using |friend |class [A-Za-z]*;|struct [A-Za-z]*;)/ {
    print
    next
}

{
    if (isContinued) {
        # as it stands
    } else if (text != "" && isFirst) {
        isFirst = 0
    } else if (text != "" && indentation($0) == indent && $0 !~ /\/\/\/</ && $0 !~ /^ *\/\//) {
        $0 = document(text, $0)
    } else if (text == "" && $0 !~ /\/\/\/</) {
        told = habit($0)
        if (told != "") {
            $0 = document(told, $0)
        }
    }
    print
}
