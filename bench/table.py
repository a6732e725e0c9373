#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints what the benchmarks have measured beside what it is held against: another tool, a bare
loop, an empty window, or a limit. The goal is the highest ratio of ours to that which will do.

Usage: table.py [--csv | --details] DIRECTORY     (with the benchmarks' results as JSON)
"""
import csv
import json
import pathlib
import sys
from dataclasses import dataclass

MICROSECONDS = {'ns': 1e-3, 'us': 1, 'ms': 1e3, 's': 1e6}


@dataclass
class Row:
    name: str  # with the unit at its end; stays as it is
    caption: str
    ours: float
    peer: float
    against: str  # what the peer is
    goal: float

    @property
    def ratio(self):
        return self.ours / self.peer

    @property
    def is_met(self):
        return self.ratio <= self.goal

    @property
    def unit(self):
        return self.name.rpartition('_')[2].replace('pc', '%')


class Results:
    """Results of one benchmark program, medians unless told otherwise."""

    def __init__(self, path):
        with open(path, encoding='utf-8') as file:
            self.runs = json.load(file)['benchmarks']

    def run(self, name, aggregate='median'):
        return next(run for run in self.runs
                    if run['run_name'].split('/iterations')[0] == name
                    and run.get('aggregate_name') == aggregate)

    def time(self, name, unit, aggregate='median'):
        run = self.run(name, aggregate)
        return run['real_time'] * MICROSECONDS[run['time_unit']] / MICROSECONDS[unit]


def record_rows(records):
    for step, caption in (('check', 'Read and check'), ('print', 'Read and print')):
        for tool in ('objcopy', 'srec_cat'):
            yield Row(f'records_{step}_{tool}_ms', f'{caption} 500,000 records',
                      records.time(f'{step}/miolka', 'ms'), records.time(f'{step}/{tool}', 'ms'),
                      tool, 1.00)


def exchange_rows(link):
    for speed, count, alone, shown, suffix, when in (
            ('now', 20000, 1.15, 1.25, '', 'at once'),
            ('slow', 2000, 1.05, 1.10, '_1ms', 'after 1 ms')):
        bare = link.time(f'bare/{speed}/{count}', 'us')
        for run, goal, name, caption in (
                (f'linked/{speed}/{count}', alone, 'link', 'A line, answered '),
                (f'linked/{speed}_dialog/{count}', shown, 'dialog', 'with dialog, ')):
            yield Row(f'exchange_{name}{suffix}_us', caption + when, link.time(run, 'us'), bare,
                      'bare loop', goal)
    for run, name, caption in (('linked/slow/2000', 'link', 'Processor for a line'),
                               ('linked/slow_dialog/2000', 'dialog', 'with dialog')):
        yield Row(f'processor_{name}_us', caption, link.run(run)['processor_us'], 60, 'limit', 1.00)


def simulation_rows(sim):
    for speed, goal, suffix, when in (('now/2000', 1.15, '', 'at once'),
                                      ('slow/100', 1.05, '_1ms', 'after 1 ms')):
        for run, name, caption in (('alone', 'worker', 'A cycle, answered '),
                                   ('shown', 'page', 'with its page, ')):
            yield Row(f'simulation_{name}{suffix}_us', caption + when,
                      sim.time(f'{run}/{speed}', 'us'), sim.time(f'bare/{speed}', 'us'),
                      'bare loop', goal)


def window_rows(refresh, start, link):
    # A record from the device must never wait for the window; one millisecond is what it may take.
    for run, name, caption, count in (('refresh', 'unchanged', 'Refresh, nothing changed', 1),
                                      ('readDevice', 'record', 'Refresh for a record', 64)):
        yield Row(f'refresh_{name}_us', caption, refresh.time(run, 'us') / count, 1000, 'limit',
                  1.00)
    yield Row('window_gap_ms', 'Longest gap of the window', link.time('unanswered', 'ms', 'max'),
              50, 'limit', 1.00)
    yield Row('start_ms', 'Start to the first picture', start.time('firstPaint/miolkasoft', 'ms'),
              start.time('firstPaint/empty', 'ms'), 'empty window', 3.0)
    yield Row('status_ms', 'miolkactl --emulator status', start.time('status', 'ms'), 250, 'limit',
              1.00)


def idle_rows(ports, idle):
    # The window waits while it looks for ports.
    yield Row('ports_look_ms', 'One look for ports', ports.time('look', 'ms'), 50, 'limit', 1.00)
    yield Row('ports_tick_us', 'A tick without a look', ports.time('tick', 'us'), 1000, 'limit',
              1.00)
    yield Row('ports_share_pc', 'Looking for ports', ports.run('share')['percent'], 0.5, 'limit',
              1.00)
    ours, empty = idle['program'], idle['empty']
    yield Row('idle_processor_pc', 'The program, idle', ours['percent'], 0.5, 'limit', 1.00)
    # No more than as much again as the toolkit takes for itself; of memory that is not shared, in
    # which the program's own is all there is, as much as of time at the start.
    yield Row('idle_resident_MiB', 'Resident memory, idle', ours['resident_MiB'],
              empty['resident_MiB'], 'empty window', 2.0)
    yield Row('idle_private_MiB', 'Private memory, idle', ours['private_MiB'],
              empty['private_MiB'], 'empty window', 3.0)


def memory_rows(memory):
    for transfer, caption in (('upload', 'Upload'), ('write', 'Write'), ('read', 'Read')):
        yield Row(f'memory_{transfer}_B', f'{caption}, memory for a line', memory[transfer], 400,
                  'limit', 1.00)


def load(path):
    with open(path, encoding='utf-8') as file:
        return json.load(file)


def rows(directory):
    records, start, refresh, sim, link, ports = (
        Results(directory / f'{name}.json')
        for name in ('records', 'start', 'refresh', 'sim', 'link', 'ports'))
    return [*record_rows(records), *exchange_rows(link), *simulation_rows(sim),
            *window_rows(refresh, start, link), *idle_rows(ports, load(directory / 'idle.json')),
            *memory_rows(load(directory / 'memory.json'))]


def print_table(table):
    print(f'{"":31}{"ours":>12}{"peer or limit":>16} {"":13}{"ratio":>6}{"goal":>6}')
    for row in table:
        print(f'{row.caption:31}{row.ours:>9.5g} {row.unit:3}{row.peer:>12.5g} {row.unit:3} '
              f'{row.against:13}{row.ratio:>6.2f}{row.goal:>6.2f}  '
              f'{"met" if row.is_met else "MISSED"}')


def print_csv(table):
    writer = csv.writer(sys.stdout, lineterminator='\n')
    writer.writerow(('name', 'ours', 'peer', 'ratio', 'goal', 'met'))
    for row in table:
        writer.writerow((row.name, f'{row.ours:.5g}', f'{row.peer:.5g}', f'{row.ratio:.3f}',
                         f'{row.goal:.2f}', 'yes' if row.is_met else 'no'))


def print_details(directory):
    """Everything that was measured, with what each program has counted besides time."""
    for path in sorted(directory.glob('*.json')):
        for run in load(path).get('benchmarks', []):
            if run.get('aggregate_name', 'median') == 'median':
                counters = ''.join(f'  {key} {run[key]:.1f}' for key in
                                   ('processor_us', 'window_us', 'percent', 'peak_KiB')
                                   if key in run)
                print(f'{path.stem:9}{run["run_name"]:44}{run["real_time"]:>12.1f} '
                      f'{run["time_unit"]}{counters}')


def main():
    directory = pathlib.Path(sys.argv[-1])
    if '--csv' in sys.argv:
        print_csv(rows(directory))
        return
    print_table(rows(directory))
    if '--details' in sys.argv:
        print()
        print_details(directory)


main()
