"""The phone's page in a real browser, from an export of the program back into it: seite_test.py KOBEN-SKRIPT

What is booked on the page must be in the database what the same texts typed in the windows are. Ends with 77 where there is
no Chromium.
"""
import os
import pathlib
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

import browser
from browser import Browser

CLOCK = '''{ const Real = Date, shift = Real.UTC(2026, 6, 15, 8) - Real.now();
    window.Date = class extends Real {
        constructor(...parts) { parts.length ? super(...parts) : super(Real.now() + shift); }
        static now() { return Real.now() + shift; }
    }; }'''
SOWS = ['117', '118', "Ü 12'5\"<b>", '</script>&amp;', '0200']
FROM_PAGE = 'KOBEN2_DATEN_VON_POCKET.KO2'
REMARK = ('Kommentar', 'kom({})', 'Bemerkung', 'kom({})')

# The kind's entry in the menu, and its fields in the window's order: the page's name, the window's, what is typed.
KINDS = {
    'Belegung': ('XE_belegung', [('Ebernr', 'kom(0)', 15), ('Deckanzahl', 'tz(0)', '#'), ('Belegungsart', 'kom(1)', 'KN'),
                                 ('Belegungsstation', 'kom(2)', 20), ('Kosten', 'tz(1)', ','), ('Kommentar', 'kom(3)', 20),
                                 ('Bemerkung', 'kom(4)', 20)]),
    'Trächtigkeit': ('XE_trächtigkeit', [('Trächtig', 'kom(0)', 'JN'), ('Kosten', 'tz', ','), ('Kommentar', 'kom(1)', 20),
                                         ('Bemerkung', 'kom(2)', 20)]),
    'Ferkelung': ('XE_ferkelung', [('Ferkel_Gesamt', 'tz(0)', '#'), ('Ferkel_Tot', 'tz(2)', '#'),
                                   ('Ferkel_Lebendig', 'tz(1)', '#'), ('Stück_Gewicht_kg', 'tz(3)', ','),
                                   ('Kosten', 'tz(4)', ','), ('Kommentar', 'kom(0)', 20), ('Bemerkung', 'kom(1)', 20)]),
    'Absetzung': ('XE_absetzung', [('Anzahl_Ferkel', 'tz(0)', '#'), ('Stück_Gewicht_kg', 'tz(1)', ','),
                                   ('Kommentar', 'kom(0)', 20), ('Bemerkung', 'kom(1)', 20), (None, 'tz(2)', '0')]),
    'Verschiebung': ('XE_Verschiebung', [('Anzahl_Ferkel', 'tz', '#'), ('Zu_Saunr', 'kom(0)', '118'),
                                         ('Kommentar', 'kom(1)', 20), ('Bemerkung', 'kom(2)', 20)]),
    'Verluste': ('XE_verluste', [('Anzahl_Ferkel', 'tz(0)', '#'), ('Grund', 'kom(0)', 20), ('Kosten', 'tz(1)', ','),
                                 ('Kommentar', 'kom(1)', 20), ('Bemerkung', 'kom(2)', 20)]),
    'Ferkelverkauf': ('XE_Ferkelverkauf', [('Anzahl_Verkauf', 'tz(0)', '#'), ('Preis_je_Stück', 'tz(1)', '9,'),
                                           ('Stück_Gewicht_kg', 'tz(3)', ','), ('Gesamtgewicht_kg', 'tz(4)', ','),
                                           ('Kunde', 'kom(0)', 20), ('Kommentar', 'kom(1)', 20)]),
    'Behandlung': ('XE_behandlung', [('Behandlungsart', 'kom(6)', 20), ('Medikament', 'kom(0)', 'Jod'), ('Menge', 'tz(0)', ','),
                                     ('Einheit', 'kom(1)', ('ml', 'g', 'St')), ('Verabreichungsart', 'kom(2)', 20),
                                     ('Wartezeit_Tage', 'tz(1)', '#'), ('Tierarzt', 'kom(3)', 20), ('Beleg_Nr', 't', 20),
                                     ('Kosten', 'tz(2)', ','), ('Kommentar', 'kom(4)', 20), ('Bemerkung', 'kom(5)', 20)])}
AWKWARD = ["'", '"', '\\', '\\n', '</script>', '<b>', '&amp;', ';', '€', 'ß', 'Ž', '„“', '–', '=1+1', '@', '%s', ' ', '`', '´',
           '\u00ff', 'N', '|', ',', '#']


def random_text(rng, width):
    text = ''.join(rng.choice(AWKWARD + list('abcÄÖÜ019')) for _ in range(rng.randint(1, 12)))[:width].strip()
    return text or 'x'


def random_booking(rng, kind, number, day):
    typed = {}
    for name, control, what in KINDS[kind][1]:
        if what == '#':
            text = str(rng.randint(1, 99))
        elif what == ',':
            text = rng.choice(['2,5' if kind == 'Behandlung' else '0', ',5', '7.125', '12,345', '1', str(rng.randint(1, 10 ** 6)) + ',995'])
        elif what == '9,':
            text = rng.choice(['0,04', '7,5', '9.995'])
        elif isinstance(what, int):
            text = random_text(rng, what)
        else:
            text = rng.choice(what) if isinstance(what, tuple) or what in ('KN', 'JN') else what
        typed[name or control] = text
    if kind == 'Ferkelung':
        typed['Ferkel_Gesamt'] = str(int(typed['Ferkel_Lebendig']) + int(typed['Ferkel_Tot']))
    if typed.get('Zu_Saunr') == number:
        typed['Zu_Saunr'] = '117'
    return {'kind': kind, 'number': number, 'day': day, 'typed': typed}


def random_bookings(rng, days):
    """Never two of a kind, sow and day, of which the desk would take one; the partner of a cross-fostering counts."""
    for day in range(1, days + 1):
        for kind in KINDS:
            yield random_booking(rng, kind, rng.choice(SOWS), f'2026-06-{day:02}')


class Farm:
    """A data folder, worked with koben-skript."""

    def __init__(self, program, folder):
        self.program, self.folder = program, folder

    def run(self, *lines):
        script = self.folder.with_suffix('.skript')
        script.write_text('\n'.join(['heute 15.07.2026', f'ordner {self.folder}', 'start', *lines]) + '\n')
        done = subprocess.run([self.program, str(script)], capture_output=True, text=True)
        assert done.returncode == 0, done.stdout[-2000:] + done.stderr
        return done.stdout

    def export(self):
        self.run('menue O_Exportpocketpc', 'klick ok(0)', 'klick beenden')

    def take_in(self):
        """The list of what came in."""
        self.run('menue O_Importpocketpc', 'klick ok(1)', 'schliesse', 'klick cmdschließen', 'schliesse')
        return (self.folder / 'LISTE.TXT').read_bytes().decode('cp1252').split('=\r\n')[1].splitlines()

    def rows(self, table):
        with sqlite3.connect(self.folder / 'koben2.mdb') as database:
            database.row_factory = sqlite3.Row
            rows = [dict(row) for row in database.execute(f'select * from "{table}"')]
        for row in rows:  # the partner's row: the exchange file knows the sow's number with a backtick
            if row.get('Zu_Saunr'):
                row['Zu_Saunr'] = row['Zu_Saunr'].replace("'", '`')
        return sorted(repr({name: value for name, value in sorted(row.items()) if value not in (None, 0, '')
                            and name not in ('ID', 'LNr', 'LNrJahr') and not name.startswith('koben')}) for row in rows)


def window_lines(booking):
    menu, fields = KINDS[booking['kind']]
    escape = lambda text: text.replace('\\', '\\\\')
    yield f"text t = {escape(booking['number'])}"
    yield from (f'menue {menu}', 'klick neu', f"text tdat(0) = {booking['day'][8:]}.{booking['day'][5:7]}.{booking['day'][:4]}")
    for name, control, what in fields:
        choice = what in ('KN', 'JN') or isinstance(what, tuple)
        yield f"{'wahl' if choice else 'text'} {control} = {escape(booking['typed'][name or control])}"
    yield from ('klick ok(0)', 'klick cmdschließen')


def book(page, booking):
    page.run("location.hash = 'heute'")
    page.wait("!document.querySelector('form.eingabe')")
    number = booking['number'].replace("'", '`')
    page.run(f"location.hash = 'buchen/{booking['kind']}/' + encodeURIComponent({number!r})")
    page.wait("document.querySelector('form.eingabe')")
    page.type('1', booking['day'])
    for name, _, what in KINDS[booking['kind']][1]:
        if what in ('KN', 'JN') or isinstance(what, tuple):
            page.run(f"document.querySelector('[data-feld={name}] [data-wert={booking['typed'][name]}]').click()")
        elif name:
            page.type(name, booking['typed'][name])
    page.press('Buchen', "document.querySelector('#leiste')")
    while page.wait("document.querySelector('dialog') ? 'frage' : !document.querySelector('form.eingabe') && 'fertig'",
                    str(booking)) == 'frage':
        page.run("document.querySelector('dialog button:last-of-type').click()")


def hand_over(page, downloads, button):
    file = downloads / FROM_PAGE
    file.unlink(missing_ok=True)
    page.run("location.hash = 'uebergabe'")
    page.press(button)
    page.press('Ja')
    page.wait("!document.querySelector('dialog') && document.querySelector('#meldung').innerText === 'Übergeben.'")
    return file.read_bytes()


def open_count(page):
    return int(page.run("document.querySelector('#leiste b')?.innerText ?? 0"))


def check(program, work, runs):
    rng = random.Random(7)
    farm = Farm(program, work / 'hof')
    escaped = [sow.replace("'", "''") for sow in SOWS]
    farm.run(*(f"sql insert into Sauen (Art, Nummer, Stallnr) values ('Sau', '{sow}', 'A1')" for sow in escaped),
             'sql insert into Ferkelung (Kennung, Datum, Ferkel_Gesamt, Ferkel_Lebendig) select ID, #05/30/2026#, 30000, 30000'
             ' from Sauen',
             "sql insert into Medikamente (Medikament, Behandlungsart, Menge, Einheit, Wartezeit_Tage, Kosten_je_Gabe) values"
             " ('Jod', 'Wunde', 9, 'ml', 3, 7)")
    farm.export()
    shutil.copytree(farm.folder, work / 'fenster')
    downloads = work / 'downloads'
    address = (farm.folder / 'KOBEN-Stall.html').as_uri()
    # Litters last: the windows ask about more piglets than the latest one had.
    bookings = sorted(random_bookings(rng, runs), key=lambda booking: booking['kind'] == 'Ferkelung')

    # Killed again and again, at once after a booking was called booked.
    booked = 0
    while booked < len(bookings):
        chromium = Browser(str(work / 'profil'))
        page = chromium.page(str(downloads), before=CLOCK)
        page.open(address)
        assert open_count(page) == booked, f'{open_count(page)} statt {booked} nach dem Abschuß'
        assert 'Angefangen' not in page.run('document.body.innerText'), 'was gebucht ist, gilt noch als angefangen'
        for booking in bookings[booked:booked + rng.randint(3, 9)]:
            book(page, booking)
            booked += 1
        chromium.kill()

    chromium = Browser(str(work / 'profil'))
    page = chromium.page(str(downloads), width=360, height=640, before=CLOCK)
    page.open(address)
    check_entry(page, booked)
    first = hand_over(page, downloads, 'Als Datei sichern')
    assert open_count(page) == 0
    assert hand_over(page, downloads, 'Noch einmal übergeben') == first
    (farm.folder / FROM_PAGE).write_bytes(first)
    listed = farm.take_in()
    assert len(listed) == booked, f'{len(listed)} von {booked} eingelesen'
    assert farm.take_in() == [], 'zweimal eingelesen'

    typed = Farm(program, work / 'fenster')
    typed.run(*(line for booking in bookings for line in window_lines(booking)))
    for kind in KINDS:
        page_rows, window_rows = farm.rows(kind), typed.rows(kind)
        assert page_rows == window_rows, f'{kind}: Seite und Fenster\n' + '\n'.join(
            sorted(set(page_rows) ^ set(window_rows))[:4])

    # The next day's page knows what has arrived.
    farm.export()
    page.open(address + '?neu')
    page.run("location.hash = 'uebergabe'")
    page.wait("document.body.innerText.includes('Es ist nichts zu übergeben')")
    assert 'unterwegs' not in page.run('document.body.innerText')
    check_phone(chromium, address, str(downloads))
    check_no_storage(chromium, address, str(downloads))
    faults = [event for event in chromium.events if event['method'] in ('Runtime.exceptionThrown', 'Log.entryAdded')]
    assert not faults, faults[:2]
    requests = {event['params']['request']['url'].split('?')[0] for event in chromium.events
                if event['method'] == 'Network.requestWillBeSent'}
    assert {url for url in requests if not url.startswith(('blob:', 'data:'))} == {address}, requests
    chromium.kill()
    check_network(farm, work)


def check_entry(page, booked):
    """What the entry refuses, keeps, and gives up."""
    page.run("location.hash = 'buchen/Behandlung/117'")
    page.wait("document.querySelector('form.eingabe')")
    page.type('Behandlungsart', 'a\u0308😀ル\tb')
    assert page.run("document.querySelector('[name=Behandlungsart]').value") == 'ä b'
    assert '😀 ル' in page.run("document.querySelector('[data-feld=Behandlungsart] .merke').innerText")
    for field, text in (('Medikament', 'Jod'), ('Menge', '0'), ('Kosten', '1.234,56'), ('Wartezeit_Tage', '2147483648')):
        page.type(field, text)
    page.press('Buchen', "document.querySelector('#leiste')")
    wrong = page.wait("[...document.querySelectorAll('.falsch:not([hidden])')].map((one) => one.closest('.feld').dataset.feld)")
    assert sorted(wrong) == ['Kosten', 'Menge', 'Wartezeit_Tage'], wrong
    page.run('new Promise((done) => setTimeout(done, 600))')  # the draft is kept
    page.call('Page.reload')
    page.wait("document.querySelector('[name=Behandlungsart]').value === 'ä b'")
    page.press('Abbrechen')
    page.wait("!document.querySelector('form.eingabe')")
    book(page, {'kind': 'Trächtigkeit', 'number': '117', 'day': '2026-07-01',
                'typed': {'Trächtig': 'J', 'Kosten': '1', 'Kommentar': 'weg', 'Bemerkung': ''}})
    assert open_count(page) == booked + 1
    page.run("location.hash = 'tier/117'")
    page.press('01.07.2026\nTrächtigkeit\nja, Kosten 1,00, weg · noch nicht übergeben')
    page.press('Buchung löschen')
    page.press('Löschen')
    page.wait("!document.querySelector('form.eingabe')")
    assert open_count(page) == booked
    small = page.run('''[...document.querySelectorAll('button, a, input')].filter((one) => one.offsetParent)
        .map((one) => one.getBoundingClientRect()).filter((box) => box.height < 48 || box.width < 48).length''')
    assert small == 0 and page.run('document.documentElement.scrollWidth') == 360


PHONE = '''class Detector {
        static async getSupportedFormats() { return ['qr_code']; }
        async detect() { return [{rawValue: "Ü 12'5\\"<b>"}]; }
    }
    window.BarcodeDetector = Detector;
    navigator.mediaDevices.getUserMedia = async () => document.createElement('canvas').captureStream();
    window.shared = [];
    navigator.canShare = ({files}) => files[0].name.endsWith('.txt');
    navigator.share = async ({files}) => {
        if (window.refuses) throw new DOMException('nein', 'AbortError');
        window.shared.push(files[0].name, await files[0].text());
    };'''


def check_phone(chromium, address, downloads):
    """Camera and sharing, which a browser on a desk has not: a card is read, and a booking of no sow shared."""
    page = chromium.page(downloads, before=CLOCK + PHONE)
    page.open(address + '#herde')
    page.press('Sauenkarte mit der Kamera lesen')
    page.wait("location.hash === '#tier/' + encodeURIComponent('Ü 12`5\"<b>')")
    book(page, {'kind': 'Verluste', 'number': '', 'day': '2026-07-01', 'typed': {
        'Anzahl_Ferkel': '2', 'Grund': 'Erdrückt', 'Kosten': '', 'Kommentar': '', 'Bemerkung': ''}})
    page.run("window.refuses = true, location.hash = 'uebergabe'")
    page.press('Teilen …')
    page.wait("document.querySelector('#leiste b').innerText === '1'")
    page.run('window.refuses = false')
    page.press('Teilen …')
    page.press('Verstanden')
    page.wait("!document.querySelector('#leiste b')")
    name, text = page.run('window.shared')
    assert name == FROM_PAGE + '.txt', name
    assert text == '0\r\n' * 4 + ' 1 \r\n\t01.07.2026\t2\tErdr\ufffdckt\t0,00\t\t\tN\r\n' + '0\r\n' * 3, repr(text)


def check_network(farm, work):
    """The desk offers the page, takes what was booked on it, and closes the window; the page says so and keeps the rest."""
    gate = farm.folder / 'warte'
    os.mkfifo(gate)
    (farm.folder / 'voll').write_text('x\n' * 40000)  # the transcript comes in pieces of 64 KB
    script = work / 'netz.skript'
    script.write_text('\n'.join(['heute 15.07.2026', f'ordner {farm.folder}', 'start', 'menue O_Exportpocketpc', 'klick hausnetz',
                                 'zeige adresse', 'datei voll', 'datei warte', 'klick einlesen', 'klick ok(1)', 'schliesse',
                                 'klick cmdschließen', 'schliesse', 'zeige li', 'klick beenden', 'klick beenden',
                                 'datei voll', 'datei warte']) + '\n')
    said = work / 'netz.protokoll'
    desk = subprocess.Popen([farm.program, str(script)], stdout=said.open('w'))

    def line(begin):
        end = time.monotonic() + browser.TIMEOUT
        while time.monotonic() < end:
            for one in said.read_text().splitlines():
                if one.startswith(begin):
                    return one
            time.sleep(0.05)
        raise RuntimeError(f'Vergeblich gewartet: {begin}')

    address = line('= http')[2:]
    chromium = Browser(str(work / 'netzprofil'))
    page = chromium.page(str(work / 'downloads'), before=CLOCK)
    page.open(address)
    loss = {'kind': 'Verluste', 'number': '118', 'typed': {'Anzahl_Ferkel': '1', 'Grund': 'Netz', 'Kosten': '', 'Kommentar': '',
                                                         'Bemerkung': ''}}
    book(page, loss | {'day': '2026-07-03'})
    page.run("location.hash = 'uebergabe'")
    page.press('An den Rechner senden')
    page.wait("document.querySelector('#meldung').innerText === 'Am Rechner empfangen.'")
    assert open_count(page) == 0
    book(page, loss | {'day': '2026-07-04'})
    gate.write_text('weiter')  # the desk reads in, and its window closes
    line('- PO_Hausnetz')
    assert len([row for row in farm.rows('Verluste') if "'Netz'" in row]) == 1
    page.run("location.hash = 'uebergabe'")
    page.press('An den Rechner senden')
    page.wait("document.querySelector('dialog').innerText.includes('Der Rechner antwortet nicht')")
    page.press('Verstanden')
    assert open_count(page) == 1
    gate.write_text('ende')
    assert desk.wait() == 0
    chromium.kill()


def check_no_storage(chromium, address, downloads):
    refuse = '''for (const name of ['indexedDB', 'localStorage'])
        Object.defineProperty(window, name, {get() { throw new DOMException('nein', 'SecurityError'); }});'''
    page = chromium.page(downloads, before=CLOCK + refuse)
    page.open(address)
    assert 'bewahrt nichts auf' in page.run("document.querySelector('.warnung').innerText")


if __name__ == '__main__':
    if not browser.PROGRAM:
        print('Kein Chromium da: Die Seite für das Telefon wurde nicht geprüft (apt install chromium).')
        sys.exit(77)
    with tempfile.TemporaryDirectory(prefix='stallseite-') as work:
        check(sys.argv[1], pathlib.Path(work), min(int(os.environ.get('KOBEN_ROBUST_RUNS', 2)), 30))
