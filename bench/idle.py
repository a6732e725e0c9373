#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Lets the program and an empty window stand idle beside each other, shown offscreen, and prints as
JSON what share of a processor each has had (user and system time) and what memory it holds: its
resident set, and of that what it has written to, which no other process shares.

Usage: idle.py SECONDS PROGRAM EMPTY_PROGRAM
"""
import json
import os
import subprocess
import sys
import time

SETTLING_TIME = 8  # seconds; right after its start the program looks for ports more often
CLOCK_TICKS = os.sysconf('SC_CLK_TCK')


def processor_seconds(process):
    with open(f'/proc/{process.pid}/stat', encoding='utf-8') as file:
        fields = file.read().rpartition(')')[2].split()
    user, system = fields[11:13]
    return (int(user) + int(system)) / CLOCK_TICKS


def memory_mib(process):
    with open(f'/proc/{process.pid}/smaps_rollup', encoding='utf-8') as file:
        sizes = {line.split()[0]: int(line.split()[1]) for line in file.readlines()[1:]}
    # A clean page counts as private as long as nothing else on the machine has the library loaded.
    return {'resident_MiB': sizes['Rss:'] / 1024, 'private_MiB': sizes['Private_Dirty:'] / 1024}


def main():
    seconds = float(sys.argv[1])
    environment = dict(os.environ, QT_QPA_PLATFORM='offscreen')
    processes = {name: subprocess.Popen([path], env=environment, stderr=subprocess.DEVNULL)
                 for name, path in zip(('program', 'empty'), sys.argv[2:4])}
    try:
        time.sleep(SETTLING_TIME)
        before = {name: processor_seconds(process) for name, process in processes.items()}
        start = time.monotonic()
        time.sleep(seconds)
        took = time.monotonic() - start
        print(json.dumps({
            name: {'percent': (processor_seconds(process) - before[name]) / took * 100,
                   **memory_mib(process)}
            for name, process in processes.items()}))
    finally:
        for process in processes.values():
            process.kill()
            process.wait()


main()
