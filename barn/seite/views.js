// Today's work, the herd, and one animal.

const MostHits = 60, MostBookings = 40, MostLate = 100;

function heading(text, ...more) {
    return el('header', {}, el('h1', {}, text), ...more);
}

function bookLink(kind, number, text = 'Buchen') {
    return link('#buchen/' + [kind, number].map(encodeURIComponent).join('/'), 'knopf', text);
}

function animalLink(number, className, ...children) {
    return link('#tier/' + encodeURIComponent(number), className, ...children);
}

// ------------------------------------------------------------------------------------------------------- today's work

function viewToday() {
    const herd = page.herd, day = today();
    const rows = herd.planOf(day);
    const due = rows.filter((row) => !row.late), late = rows.filter((row) => row.late);
    const open = late.filter((row) => !row.done).length;
    return [heading(weekday(day) + ', ' + germanDay(day), el('p', {className: 'leise'}, herdText())),
        draftBanner(),
        planNote(rows),
        el('ul', {className: 'liste'}, due.map(planRow)),
        late.length > 0 ? el('h2', {}, counted(open, 'Arbeit', 'Arbeiten') + ' überfällig') : null,
        el('ul', {className: 'liste'}, late.slice(0, MostLate).map(planRow)),
        late.length > MostLate ? el('p', {className: 'hinweis'}, `Gezeigt sind die ${MostLate} jüngsten.`) : null];
}

function herdText() {
    const farm = page.herd.farm;
    return [farm.name, counted(page.herd.animals.length, 'Tier', 'Tiere'), farm.made ? 'Stand ' + timeText(farm.made) : '']
        .filter((text) => text).join(' · ');
}

function draftBanner() {
    const draft = page.draft;
    if (!draft) return null;
    const number = draft.typed.find(([name]) => name === 0)?.[1];
    const hash = draft.changes ? '#aendern/' + draft.booking : '#buchen/' + encodeURIComponent(draft.kind) + '/';
    return el('p', {className: 'warnung'}, `Angefangen und noch nicht gebucht: ${draft.kind} ${number ?? ''} `,
        link(hash, 'knopf', 'Weiter'), button('Verwerfen', async () => {
            await page.store.write([], [draft.id]);
            page.draft = null;
            showView();
        }));
}

function planNote(rows) {
    const farm = page.herd.farm, day = today();
    let text = '';
    if (!farm.plan)
        text = page.herd.planLines.length === 0
            ? 'In der geöffneten Datei steht kein Arbeitsplan. Berechnen Sie ihn am Rechner unter „Arbeitspläne“ und ' +
                'exportieren Sie noch einmal.'
            : 'Der Plan ist der, den der Rechner zuletzt gelistet hat; was schon gebucht oder überfällig ist, weiß die Datei ' +
                'nicht.';
    else if (day > farm.planUntil)
        text = `Der Plan reicht nur bis ${germanDay(farm.planUntil)}. Holen Sie sich am Rechner eine neue Seite.`;
    else if (rows.length === 0) text = 'Heute ist nichts fällig.';
    return text ? el('p', {className: 'hinweis'}, text) : null;
}

function planRow(row) {
    const state = row.done ? '✓ gebucht' : row.late ? '! überfällig seit ' + germanDay(addDays(row.to, 1))
        : 'bis ' + germanDay(row.to);
    const known = row.number !== '';
    const text = [el('strong', {}, known ? row.number : 'Stall ' + row.pen), el('span', {}, row.work),
        el('small', {}, [row.pen && known ? 'Stall ' + row.pen : '', state].filter((part) => part).join(' · '))];
    return el('li', {className: row.done ? 'fertig' : row.late ? 'eilig' : ''},
        known ? animalLink(row.number, 'zeile', text) : el('span', {className: 'zeile'}, text),
        known && row.kind && !row.done ? bookLink(row.kind, row.number) : null);
}

// ------------------------------------------------------------------------------------------------------------- herd

function viewHerd() {
    const list = el('ul', {className: 'liste'}), note = el('p', {className: 'hinweis', role: 'status'});
    const show = () => {
        const hits = page.herd.find(page.query);
        list.replaceChildren(...hits.slice(0, MostHits).map(animalRow));
        note.textContent = hits.length === 0 ? `Kein Tier mit „${page.query}“ in den Daten.`
            : hits.length > MostHits ? `${MostHits} von ${hits.length} Tieren. Tippen Sie weiter.` : '';
        note.hidden = !note.textContent;
    };
    const digits = page.herd.animals.every((animal) => /^\d+$/.test(animal.nummer));
    const field = el('input', {type: 'search', id: 'suche', placeholder: 'Nummer', value: page.query, autocomplete: 'off',
        inputMode: digits ? 'numeric' : 'search', enterKeyHint: 'search', 'aria-label': 'Tier suchen nach Nummer',
        oninput: () => {
            page.query = field.value;
            show();
        }});
    const camera = button('', () => readCode(), 'bild');
    camera.append(sign('kamera'));
    camera.setAttribute('aria-label', 'Sauenkarte mit der Kamera lesen');
    const form = el('form', {className: 'suche', onsubmit: (event) => {
        event.preventDefault();
        const hits = page.herd.find(page.query);
        if (hits.length === 1 || hits[0]?.nummer.toLowerCase() === page.query.trim().toLowerCase())
            location.hash = 'tier/' + encodeURIComponent(hits[0].nummer);
    }}, field, camera);
    show();
    return [heading('Herde'), form, note, list];
}

function animalRow(animal) {
    const next = animal.naechsteFerkelung ? 'Ferkelung ' + animal.naechsteFerkelung
        : animal.naechsteBelegung ? 'Belegung ' + animal.naechsteBelegung : '';
    const place = [animal.art, animal.stall && 'Stall ' + animal.stall, animal.gruppe && 'Gruppe ' + animal.gruppe];
    return el('li', {}, animalLink(animal.nummer, 'zeile', el('strong', {}, animal.nummer),
        el('span', {}, place.filter((text) => text).join(' · ')), el('small', {}, next)));
}

// ------------------------------------------------------------------------------------------------------- one animal

function viewAnimal(number) {
    const animal = page.herd.byNumber.get(number);
    const bookings = page.herd.bookingsOf(number);
    const kinds = Kinds.map((kind) => bookLink(kind.name, number, kind.name));
    return [heading((animal?.art ?? 'Sau') + ' ' + number),
        animal ? facts(animal) : el('p', {className: 'warnung'}, 'Dieses Tier steht nicht in den Daten.'),
        page.herd.doubled.has(number) ? el('p', {className: 'warnung'}, 'Diese Nummer haben mehrere Tiere. Der Rechner bucht ' +
            'bei dem, das zuletzt dazukam.') : null,
        el('h2', {}, 'Buchen'), el('div', {className: 'arten'}, kinds),
        el('h2', {}, 'Buchungen'),
        bookings.length === 0 ? el('p', {className: 'hinweis'}, 'Keine Buchungen in den Daten.') : null,
        el('ul', {className: 'liste'}, bookings.slice(0, MostBookings).map(bookingRow)),
        bookings.length > MostBookings
            ? el('p', {className: 'hinweis'}, `Gezeigt sind die letzten ${MostBookings} von ${bookings.length}.`) : null];
}

function facts(animal) {
    const rows = [['Stall', animal.stall], ['Gruppe', animal.gruppe], ['Geboren', animal.geburt],
        ['Nächste Belegung', animal.naechsteBelegung], ['Nächste Ferkelung', animal.naechsteFerkelung],
        ['Belegungen', animal.belegungen], ['Ferkelungen', animal.ferkelungen], ['Ferkel lebend', animal.lebend]];
    return el('dl', {}, rows.filter(([, text]) => text !== '' && text !== '0')
        .map(([word, text]) => el('div', {}, el('dt', {}, word), el('dd', {}, text))));
}

function stateOf(booking) {
    if (booking.desk) return '';
    if (!booking.handover) return 'noch nicht übergeben';
    return 'übergeben ' + timeText(booking.handedAt);
}

/// The page's own that are not handed over yet open for a change.
function bookingRow(booking) {
    const text = [el('strong', {}, booking.fields[1]), el('span', {}, booking.kind),
        el('small', {}, [summary(booking), stateOf(booking)].filter((part) => part).join(' · '))];
    const changeable = !booking.desk && !booking.handover;
    return el('li', {className: booking.desk ? '' : 'eigen'}, changeable ? link('#aendern/' + booking.id, 'zeile', text)
        : el('span', {className: 'zeile'}, text));
}

/// Which kind is to be booked, where no animal was chosen before.
function viewKinds() {
    return [heading('Was buchen?'),
        el('div', {className: 'arten'}, Kinds.map((kind) => bookLink(kind.name, '', kind.name)))];
}
