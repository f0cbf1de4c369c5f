#!/usr/bin/env python3
"""How the journal of actions grows: a farm at work for years, booked day by day through koben-skript.

    bench/verlauf.py KOBEN-SKRIPT [--sauen 150] [--jahre 10] [--ferkel] [--komprimieren]

Each year a line: actions, size of the database file, what of it the journal takes, without it. --ferkel: each weaning
takes its piglets into the herd, and a sale takes them out. --komprimieren: the farmer tidies the file each New Year
(what is older than the journal is to be kept goes then).
"""
import argparse
import datetime
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile

CYCLE, PREGNANT, SUCKLING = 147, 115, 28  # days


class Farm:
    def __init__(self, args, folder):
        self.args, self.folder, self.random = args, folder, random.Random(7)
        self.number = args.sauen
        self.sows = {str(n): {} for n in range(1, args.sauen + 1)}
        for i, sow in enumerate(self.sows.values()):
            sow['next'] = FIRST + datetime.timedelta(days=i * CYCLE // args.sauen)
        self.todo = {}

    def run(self, day, body):
        script = f'heute {day:%d.%m.%Y}\nordner {self.folder}\nstart\nsetze Konfig_Zahl(24) = 1\n{body}'
        done = subprocess.run([self.args.skript, '-'], input=script.encode(), stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, check=False)
        if done.returncode:
            sys.exit(done.stderr.decode() + script)

    def book(self, sow, entry, *fields):
        return f'text t = {sow}\nmenue {entry}\nklick neu\n' + ''.join(f'{f}\n' for f in fields) + \
            'klick ok(0)\nklick cmdschließen\n'

    def day(self, day):
        """What is done on one day, as lines of a script."""
        lines, date = '', f'{day:%d.%m.%Y}'
        for sow, state in list(self.sows.items()):
            if state['next'] == day:
                lines += self.book(sow, 'XE_belegung', f'text tdat = {date}', 'text kom(0) = E1',
                                   f'text kom(4) = Rausche {self.random.randint(1, 9)}')
                state['farrows'] = day + datetime.timedelta(days=PREGNANT)
                state['next'] = day + datetime.timedelta(days=CYCLE)
                self.todo.setdefault(day + datetime.timedelta(days=28), []).append(
                    self.book(sow, 'XE_trächtigkeit', 'text tdat = %s'))
            if state.get('farrows') == day:
                born, lost = self.random.randint(9, 16), self.random.randint(0, 2)
                lines += self.book(sow, 'XE_ferkelung', f'text tdat = {date}', f'text tz(0) = {born}')
                if lost:
                    self.todo.setdefault(day + datetime.timedelta(days=3), []).append(
                        self.book(sow, 'XE_verluste', 'text tdat = %s', f'text tz(0) = {lost}',
                                  'text kom(2) = Erdrückt'))
                fields = ['text tdat = %s', f'text tz(0) = {born - lost}', 'text tz(1) = 7,8']
                if self.args.ferkel:
                    fields.append('text kom(2) = F1')
                self.todo.setdefault(day + datetime.timedelta(days=SUCKLING), []).append(
                    self.book(sow, 'XE_absetzung', *fields))
                self.todo.setdefault(day + datetime.timedelta(days=1), []).append(
                    self.book(sow, 'XE_behandlung', 'text tdat(0) = %s', 'text kom(6) = Impfung',
                              'text kom(0) = Eisen', 'text tz(0) = 2'))
        lines += ''.join(entry.replace('%s', date) for entry in self.todo.pop(day, []))
        if self.args.ferkel and day.day == 28 and (day - FIRST).days > PREGNANT + 2 * SUCKLING:
            lines += ('menue XB_ferkeleinverkauf\nklick neu\n' f'text tdat = {date}\nmarkiere gridli alle\n'
                      'klick gridli\nklick optiverkauf(1)\ntext tz(2) = 60\nklick ok(0)\nklick cmdschließen\n')
        if day.day in (1, 11, 21) and self.random.random() < self.args.sauen * .4 / 36:
            lines += self.replace(date)
        return lines

    def replace(self, date):
        """One sow leaves, another comes."""
        old = self.random.choice([s for s, state in self.sows.items() if 'farrows' not in state] or list(self.sows))
        self.number += 1
        self.sows[str(self.number)] = {'next': self.sows.pop(old)['next']}
        self.todo = {day: [e for e in entries if f'text t = {old}\n' not in e] for day, entries in self.todo.items()}
        return (f'text t = {old}\nmenue XB_schweinändern\ntext tdat(2) = {date}\nklick ok\n'
                f'menue XB_neueschweine\ntext t(0) = {self.number}\ntext t(1) = DE {self.number:010}\n'
                f'wahl kom(0) = Sau\ntext kom(2) = B{self.number % 9}\nklick ok\n')

    def measure(self):
        name, = (n for n in os.listdir(self.folder) if n.lower() == 'koben2.mdb')
        file = sqlite3.connect(os.path.join(self.folder, name))
        entries, = file.execute('select count(*) from koben_verlauf').fetchone()
        pages, = file.execute('pragma page_count').fetchone()
        free, = file.execute('pragma freelist_count').fetchone()
        size, = file.execute('pragma page_size').fetchone()
        bytes_, = file.execute('select ifnull(sum(80 + length(name) + ifnull(length(daten), 0) + '
                               'ifnull(length(bereiche), 0)), 0) from koben_verlauf').fetchone()
        file.close()
        return entries, (pages - free) * size / 1e6, bytes_ / 1e6


FIRST = datetime.date(2016, 1, 1)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('skript')
    parser.add_argument('--sauen', type=int, default=150)
    parser.add_argument('--jahre', type=int, default=10)
    parser.add_argument('--ferkel', action='store_true')
    parser.add_argument('--komprimieren', action='store_true')
    args = parser.parse_args()
    folder = tempfile.mkdtemp()
    try:
        farm = Farm(args, folder)
        herd = ''.join(f"sql insert into Sauen (Art, Nummer, Stallnr, Status) values ('Sau', '{s}', 'B1', '')\n"
                       for s in farm.sows)
        farm.run(FIRST, herd +
                 "sql insert into Medikamente (Medikament, Menge, Einheit) values ('Eisen', 2, 'ml')\n"
                 "sql insert into Sauen (Art, Nummer, Status) values ('Eber', 'E1', '')\n")
        print('year  entries  file MB  journal MB  without MB')
        day = FIRST
        for year in range(args.jahre):
            while day.year == FIRST.year + year:
                month, body, last = day.month, '', day
                while day.month == month:
                    body, last, day = body + farm.day(day), day, day + datetime.timedelta(days=1)
                farm.run(last, body)
            if args.komprimieren:
                farm.run(last, 'antwort ja\nmenue O_Datenbankkomprimieren\n')
            entries, file, journal = farm.measure()
            print(f'{year + 1:4}  {entries:7}  {file:7.2f}  {journal:10.2f}  {file - journal:10.2f}', flush=True)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == '__main__':
    main()
