#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the medians of benchmark results as tables, with ratios.

Usage: table.py RECORDS.json START.json REFRESH.json SIM.json LINK.json LINK_ONCE.json
                BYTES_PER_LINE
"""
import json
import sys

LINES_OF_CYCLE = 17  # that the simulation exchanges with the device


def medians(path, aggregate='median'):
    with open(path, encoding='utf-8') as file:
        results = json.load(file)['benchmarks']
    return {result['run_name'].split('/iterations')[0]: result for result in results
            if result.get('aggregate_name') == aggregate}


def processors(path):
    with open(path, encoding='utf-8') as file:
        return json.load(file)['context']['num_cpus']


def once(path):
    with open(path, encoding='utf-8') as file:
        results = json.load(file)['benchmarks']
    return {result['run_name'].split('/iterations')[0]: result for result in results}


def print_link(link, longest, single, cpus, bytes_per_line):
    print(f'\nTransfers over a pseudo-terminal, time for each line, median of '
          f'{link["bare/now/20000"]["repetitions"]}, logging of lines off')
    print(f'{"":34}{"time":>12}{"ratio":>8}{"goal":>8}{"processor":>12}{"goal":>9}')
    for name, caption, bare, goal in (
            ('bare/now/20000', 'bare loop, answered at once', None, None),
            ('linked/now/20000', 'link', 'bare/now/20000', 1.15),
            ('linked/now_dialog/20000', 'link and progress dialog', 'bare/now/20000', 1.25),
            ('linked/now_log/20000', 'link, logging of lines on', 'bare/now/20000', None),
            ('linked/now/1000', 'link, 1,000 lines', 'bare/now/20000', None),
            ('linked/many/500000', 'link, 500,000 lines (once)', 'bare/now/20000', None),
            ('bare/slow/2000', 'bare loop, answered after 1 ms', None, None),
            ('linked/slow/2000', 'link', 'bare/slow/2000', 1.05),
            ('linked/slow_dialog/2000', 'link and progress dialog', 'bare/slow/2000', 1.10)):
        result = link.get(name) or single[name]
        row = f'{caption:34}{result["real_time"]:>9.1f} us'
        if bare:
            row += f'{result["real_time"] / link[bare]["real_time"]:>8.2f}'
            row += f'{goal:>8.2f}' if goal else ' ' * 8
            row += f'{result["processor_us"]:>9.1f} us'
            row += '    60 us' if 'slow' in name else ''
        print(row)
    where = 'processors of their own' if cpus > 1 else 'the one processor that there is'
    print(f'ratio: to the bare loop with the same peer, both ends on {where}')
    gap = longest['unanswered']['real_time'] / 1000
    polling = single['polling']['real_time'] / 10000
    print(f'{"Longest time without an answer of the window":48}{gap:>8.1f} ms   '
          f'ratio to 50 ms {gap / 50:.2f}')
    print(f'{"Looking for ports, no device":48}{polling:>8.2f} %    '
          f'ratio to 0.5 % of a processor {polling / 0.5:.2f}')
    print(f'{"Memory of a transfer of 500,000 lines, each line":48}{bytes_per_line:>8} B    '
          f'ratio to 400 B {int(bytes_per_line) / 400:.2f}')


def print_sim(sim, cpus):
    print(f'\nSimulation over a pseudo-terminal, time for each cycle of {LINES_OF_CYCLE} lines, '
          f'median of {sim["bare/now/2000"]["repetitions"]}')
    print(f'{"":34}{"time":>12}{"ratio":>8}{"goal":>8}{"processor, each line":>24}')
    for name, caption, bare, goal in (
            ('bare/now/2000', 'bare loop, answered at once', None, None),
            ('alone/now/2000', 'worker', 'bare/now/2000', 1.15),
            ('shown/now/2000', 'worker and its page', 'bare/now/2000', 1.15),
            ('bare/slow/100', 'bare loop, answered after 1 ms', None, None),
            ('alone/slow/100', 'worker', 'bare/slow/100', 1.05),
            ('shown/slow/100', 'worker and its page', 'bare/slow/100', 1.05)):
        result = sim[name]
        row = f'{caption:34}{result["real_time"]:>9.0f} us'
        row += f'{result["real_time"] / sim[bare]["real_time"]:>8.2f}{goal:>8.2f}' if bare \
            else ' ' * 16
        print(row + f'{result["processor_us"] / LINES_OF_CYCLE:>21.1f} us')
    for name, caption in (('shown/now/2000', 'answered at once'),
                          ('shown/slow/100', 'answered after 1 ms')):
        print(f'{"Processor for the page, each cycle, " + caption:57}'
              f'{sim[name]["window_us"]:>6.0f} us')
    where = ('the worker and the peer on a processor each, the window on '
             + ('a third' if cpus > 2 else 'that of the worker')) if cpus > 1 \
        else 'all on the one processor that there is'
    print(f'ratio: to the bare loop with the same lines and peer; {where}')


def main():
    records, start, refresh, sim, link = (medians(path) for path in sys.argv[1:6])
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

    print_sim(sim, processors(sys.argv[4]))
    print_link(link, medians(sys.argv[5], 'max'), once(sys.argv[6]), processors(sys.argv[5]),
               sys.argv[7])


main()
