#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the medians of benchmark results as tables, with ratios.

Usage: table.py RECORDS.json START.json REFRESH.json
"""
import json
import sys


def medians(path):
    with open(path, encoding='utf-8') as file:
        results = json.load(file)['benchmarks']
    return {result['run_name'].split('/iterations')[0]: result for result in results
            if result.get('aggregate_name') == 'median'}


def main():
    records, start, refresh = (medians(path) for path in sys.argv[1:4])
    repetitions = next(iter(records.values()))['repetitions']

    print(f'\nRecords: 500,000 of 16 bytes, 22 MB of text, whole processes, '
          f'median of {repetitions}')
    print(f'{"":12}{"read and check":>16}{"ratio":>8}{"read and print":>16}{"ratio":>8}{"memory":>12}')
    for tool in ('miolka', 'objcopy', 'srec_cat'):
        cells = ''
        for step in ('check', 'print'):
            time = records[f'{step}/{tool}']['real_time']
            cells += f'{time:>13.1f} ms{records[f"{step}/miolka"]["real_time"] / time:>8.2f}'
        print(f'{tool:12}{cells}{records[f"print/{tool}"]["peak_KiB"] / 1024:>8.1f} MiB')
    print('ratio: our time divided by that tool\'s; below 1 we are faster')

    print(f'\nInside the process, median of {repetitions}')
    for name in ('decode', 'recordFromString', 'recordToString', 'settingsFile'):
        print(f'{name:20}{records[name]["cpu_time"]:>10.0f} ns')

    program = start['firstPaint/miolkasoft']['real_time']
    empty = start['firstPaint/empty']['real_time']
    print(f'\nStart to first painted window, offscreen, median of '
          f'{start["firstPaint/empty"]["repetitions"]}')
    print(f'{"empty window":20}{empty:>10.1f} ms')
    print(f'{"miolkasoft":20}{program:>10.1f} ms   ratio {program / empty:.2f}')

    # A record from the device must never wait for the window; one millisecond is what it may take.
    print(f'\nRefresh of the three tabs, median of {repetitions}')
    for name, caption, count in (('refresh', 'nothing changed', 1),
                                 ('readDevice', 'one of 64 records', 64),
                                 ('refreshAll', 'everything changed', 1)):
        time = refresh[name]['real_time'] / count
        print(f'{caption:20}{time:>10.0f} us   ratio to 1 ms {time / 1000:.2f}')


main()
