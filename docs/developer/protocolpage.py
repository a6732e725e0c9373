#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes docs/protocol.md: the text in protocol.md.in, and in it exchanges that are recorded now.

Usage: protocolpage.py MIOLKACTL SIMULATIONTRACE OUTFILE
A line "<!-- exchange: NAME -->" of the text is replaced by the exchange of that name.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
SETTINGS = HERE.parent / "example.mio"
LIBRARY = HERE / "library.mia"
EXCHANGES = {
    "status": ["status"],
    "read": ["read", "out.mio"],
    "write": ["write", str(SETTINGS), "--yes", "--backup-dir", "backups"],
    "reset": ["reset", "--yes"],
    "clear": ["clear-stats", "--yes"],
    "off": ["power-off", "--yes"],
    "boot": ["boot", "--yes"],
    "upload": ["upload", str(LIBRARY), "--yes"],
}
SHOWN = 2  # data records at the start of a run, before one is left out
INCLUDE = re.compile(r"<!-- exchange: (\w+) -->")


def run(command, directory):
    """Runs a program that shall say nothing but errors, away from what the user keeps."""
    environment = dict(os.environ, HOME=directory, XDG_DATA_HOME=directory)
    done = subprocess.run(command, cwd=directory, env=environment, text=True, check=False,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)} ended with {done.returncode}:\n{done.stdout}")


def record(name, miolkactl, simulation):
    """The lines of an exchange, without times and line ends."""
    with tempfile.TemporaryDirectory() as directory:
        trace = pathlib.Path(directory, "trace")
        if name == "simulation":
            run([simulation, str(trace)], directory)
        else:
            run([miolkactl, "--quiet", "--emulator", "--trace", str(trace), *EXCHANGES[name]],
                directory)
        lines = trace.read_text(encoding="ascii").splitlines()
    bare = [re.sub(r"^[0-9.]+ ", "", line) for line in lines]
    if not bare or any(not line.endswith(r"\r\n") for line in bare):
        sys.exit(f"{name}: a line of the trace has no line end")
    return [line[: -len(r"\r\n")] for line in bare]


def is_data(line):
    return re.match(r"> :[0-9A-F]{6}00", line) is not None


def shortened(lines):
    """Of a run of data records only the first ones and the last stay."""
    pairs = [lines[i : i + 2] for i in range(0, len(lines), 2)]
    if any(len(pair) != 2 or pair[0][0] != ">" or pair[1][0] != "<" for pair in pairs):
        sys.exit("a line of the trace is not followed by its one answer")
    short = []
    i = 0
    while i < len(pairs):
        end = i
        while end < len(pairs) and is_data(pairs[end][0]):
            end += 1
        left_out = end - i - SHOWN - 1
        if left_out > 0:
            short += sum(pairs[i : i + SHOWN], [])
            short.append(f"... {left_out} more data record{'s' * (left_out > 1)}, each with its answer")
            i = end - 1
        short += pairs[i]
        i += 1
    return short


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    miolkactl, simulation, outfile = (str(pathlib.Path(each).resolve()) for each in sys.argv[1:])
    template = (HERE / "protocol.md.in").read_text(encoding="utf-8")

    def recorded(match):
        lines = shortened(record(match.group(1), miolkactl, simulation))
        return "\n".join(["```text", *lines, "```"])

    pathlib.Path(outfile).write_text(INCLUDE.sub(recorded, template), encoding="utf-8")


if __name__ == "__main__":
    main()
