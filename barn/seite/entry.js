// The entry of a booking, new or not yet handed over. What is typed is kept as a draft until it is booked; the booking gets
// its id when the entry opens, so that it can never be kept twice.

const DraftPause = 300;  // milliseconds after the last key

class Entry {
    constructor(kind, booking, draft) {
        this.kind = kind;
        this.herd = page.herd;
        this.id = booking?.id ?? draft?.booking ?? newId();
        this.old = booking;
        const context = {
            choices: (field) => this.choices(field),
            typed: () => this.typed(),
            left: (name) => this.left(name),
            note: (name, text) => this.controls.get(name).note(text)
        };
        const make = (field) => control(field, context);
        this.number = make({name: 0, type: 'text', width: 15, label: kind.mother ? 'Muttersau (kann leer bleiben)' : 'Sau'});
        this.day = make({name: 1, type: 'day', label: 'Datum'});
        this.fields = kind.fields.map(make);
        this.controls = new Map([[0, this.number], [1, this.day], ...this.fields.map((one) => [one.field.name, one])]);
        this.preset();
        if (booking) this.show(booking);
        if (draft) for (const [name, text] of draft.typed) this.controls.get(name)?.write(text);
        this.noteDay();
        this.dose = hundredths(this.controls.get('Menge')?.read() ?? '0') ?? 0n;
    }

    choices(field) {
        if (field.name !== 0) return this.herd.choices(field);
        const sows = this.herd.animals.filter((animal) => animal.art === 'Sau' || this.kind.name === 'Behandlung');
        return sows.map((animal) => animal.nummer);
    }

    preset() {
        this.day.write(page.lastDay ?? today());
        for (const {field, write} of this.fields)
            if (field.type === 'count') write(field.preset);
            else if (field.type === 'amount' || field.type === 'weight') write('0,00');
    }

    show(booking) {
        this.number.write(booking.fields[0]);
        this.day.write(dayOf(booking.fields[1]));
        this.fields.forEach(({field, write}, at) => {
            const text = booking.fields[at + 2];
            write(field.type === 'day' ? dayOf(text) : field.point ? text.replace('.', ',') : text);
        });
    }

    // -------------------------------------------------------------------------------------------------- while typing

    left(name) {
        const get = (field) => this.controls.get(field).read();
        const set = (field, text) => this.controls.get(field).write(String(text));
        (FieldRules[this.kind.name] ?? (() => {}))(name, get, set, this);
        this.controls.get(name).wrong('');
        this.noteDay();
        this.typed();
    }

    /// The browser shows days in the telephone's language; the farm reads them in hers.
    noteDay() {
        const day = this.day.read();
        this.day.note(day ? `${weekday(day)}, ${germanDay(day)}` + (day > today() ? ' – liegt in der Zukunft' : '') : '');
    }

    typed() {
        this.touched = true;
        clearTimeout(this.timer);
        this.timer = setTimeout(() => this.keepDraft(), DraftPause);
    }

    keepDraft() {
        clearTimeout(this.timer);
        if (this.done || !this.touched) return;
        const typed = [...this.controls].map(([name, one]) => [name, one.read()]);
        const draft = {id: this.draftId(), type: 'draft', farm: this.herd.farm.id, kind: this.kind.name, booking: this.id,
            changes: Boolean(this.old), typed};
        page.draft = draft;
        page.store.write([draft]).catch(() => {});
    }

    // -------------------------------------------------------------------------------------------------------- booking

    /// As the file holds it.
    booking() {
        const text = ({field, read}) => {
            const typed = read();
            if (field.type === 'day') return germanDay(typed);
            if (field.type === 'count') return wholeNumber(typed) === null ? typed : String(wholeNumber(typed));
            if (field.type !== 'amount' && field.type !== 'weight') return typed;
            const number = hundredths(typed);
            if (number === null) return typed;
            return field.point ? decimalText(number).replace(',', '.') : decimalText(number);
        };
        const now = Date.now();
        const booking = {id: this.id, type: 'booking', farm: this.herd.farm.id, farmName: this.herd.farm.name,
            kind: this.kind.name, fields: [this.number, this.day, ...this.fields].map(text), made: this.old?.made ?? now,
            changed: now};
        return {...booking, twins: this.herd.countAtDesk(booking)};
    }

    async book() {
        if (this.saving) return;
        this.saving = true;
        try {
            if (await this.allowed()) await this.keep();
        } finally {
            this.saving = false;
        }
    }

    async allowed() {
        for (const one of this.controls.values()) one.wrong('');
        const booking = this.booking();
        const found = checkFields(this.kind, booking);
        for (const {name, text} of found) this.controls.get(name).wrong(text);
        if (found.length > 0) {
            const first = this.controls.get(found[0].name);
            first.focus();
            first.element.scrollIntoView({block: 'center'});
            return false;
        }
        for (const question of questionsOf(booking, this.herd))
            if (await ask(question, ['Zurück', 'Ja, buchen']) !== 1) return false;
        return warnWhereNothingIsKept();
    }

    /// Said to be booked once it is on the disk.
    async keep() {
        const booking = this.booking();
        const stored = (await page.store.all()).find((record) => record.id === this.id);
        if (stored?.handover) {
            await tell('Diese Buchung wurde inzwischen übergeben. Ändern Sie sie bitte am Rechner.');
            return leaveEntry();
        }
        if (this.old && !stored) {
            await tell('Diese Buchung wurde inzwischen gelöscht. Es wurde nichts geändert.');
            return leaveEntry();
        }
        const hints = hintsOf(booking, this.herd);
        this.finish();  // no draft is written behind the booking
        try {
            await page.store.write([booking], [this.draftId()]);
        } catch (error) {
            this.done = false;
            this.keepDraft();
            await tell(`Die Buchung konnte nicht gespeichert werden: ${error?.message ?? 'der Speicher antwortet nicht'}.\n` +
                'Schaffen Sie Platz im Telefon, oder übergeben Sie zuerst, was schon gebucht ist. Die Eingabe bleibt stehen.');
            return;
        }
        page.lastDay = dayOf(booking.fields[1]);
        await reloadOwn();
        toast(`${this.old ? 'Geändert' : 'Gebucht'}: ${this.kind.name} ${booking.fields[0]}`.trim());
        if (hints.length > 0) await tell(['HINWEIS zu ' + booking.fields[0] + ':', ...hints].join('\n'));
        leaveEntry();
    }

    async remove() {
        const question = `${this.kind.name} ${this.old.fields[0]} vom ${this.old.fields[1]} löschen?`;
        if (await ask(question, ['Behalten', 'Löschen'], 0) !== 1) return;
        this.finish();
        const stored = (await page.store.all()).find((record) => record.id === this.id);
        if (stored?.handover) await tell('Diese Buchung wurde inzwischen übergeben und bleibt stehen.');
        else await page.store.write([], [this.id, this.draftId()]);
        await reloadOwn();
        leaveEntry();
    }

    async cancel() {
        this.finish();
        await page.store.write([], [this.draftId()]).catch(() => {});
        leaveEntry();
    }

    draftId() {
        return 'draft:' + this.herd.farm.id;
    }

    finish() {
        this.done = true;
        clearTimeout(this.timer);
        page.draft = null;
    }

    // ---------------------------------------------------------------------------------------------------------- look

    element() {
        const first = this.fields.filter((one) => one.field.first);
        const usual = this.fields.filter((one) => !one.field.more && !one.field.first);
        const more = this.fields.filter((one) => one.field.more);
        const days = [['heute', 0], ['gestern', -1]].map(([word, by]) => button(word, () => {
            this.day.write(addDays(today(), by));
            this.left(1);
        }));
        return el('form', {className: 'eingabe', noValidate: true, onsubmit: (event) => event.preventDefault(),
            onkeydown: (event) => this.moveOn(event)},
            this.number.element,
            this.day.element, el('div', {className: 'tage'}, days),
            [...first, ...usual].map((one) => one.element),
            el('details', {}, el('summary', {}, 'Weitere Angaben'), more.map((one) => one.element)),
            this.old ? button('Buchung löschen', () => this.remove(), 'loeschen') : null);
    }

    /// Enter leaves the field for the next one; it never books.
    moveOn(event) {
        if (event.key !== 'Enter' || event.isComposing || event.target.tagName !== 'INPUT') return;
        event.preventDefault();
        const inputs = [...event.currentTarget.querySelectorAll('input')].filter((input) => input.offsetParent);
        const next = inputs[inputs.indexOf(event.target) + 1];
        if (next) next.focus();
        else event.target.blur();
    }
}

function leaveEntry() {
    location.replace('#' + (page.before ?? 'heute'));
    if (currentView() !== 'buchen' && currentView() !== 'aendern') showView();
}

/// Before the first booking that nothing would keep.
async function warnWhereNothingIsKept() {
    if (page.store.keeps || page.warned) return true;
    page.warned = await ask('Dieser Browser bewahrt nichts auf: Wird die Seite geschlossen oder geht das Telefon aus, sind die ' +
        'Buchungen weg.\nÖffnen Sie die Seite in einem anderen Browser oder nicht im privaten Modus. Wenn Sie trotzdem ' +
        'buchen, übergeben Sie, bevor Sie die Seite schließen.', ['Zurück', 'Trotzdem buchen']) === 1;
    return page.warned;
}
