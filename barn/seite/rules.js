// Fields that follow each other while one types, as in the desk's windows. Called with the name of the field that was left;
// `get` and `set` work the form's fields by name.

const FieldRules = {
    Belegung(name, get, set, form) {
        if (name !== 0) return;
        const last = form.herd.bookingsOf(get(0)).find((booking) => booking.kind === 'Belegung' && booking.desk);
        if (last) set('Belegungsart', value(last, 'Belegungsart').startsWith('N') ? 'N' : 'K');
    },

    Ferkelung(name, get, set) {
        const [all, alive, dead] = ['Ferkel_Gesamt', 'Ferkel_Lebendig', 'Ferkel_Tot'];
        if (name === alive) set(all, countOf(get(alive)) + countOf(get(dead)));
        if (name === all || name === dead) set(alive, Math.max(countOf(get(all)) - countOf(get(dead)), 0));
    },

    Absetzung(name, get, set, form) {
        if (name !== 0) return;
        const piglets = form.herd.pigletsOf(get(0), form.id);
        if (piglets) set('Anzahl_Ferkel', Math.max(piglets.withher, 0));
    },

    Ferkelverkauf(name, get, set) {
        const [price, weight, total] = ['Preis_je_Stück', 'Stück_Gewicht_kg', 'Gesamtgewicht_kg'];
        const bought = BigInt(countOf(get('Anzahl_Einkauf'))), sold = BigInt(countOf(get('Anzahl_Verkauf')));
        const pieces = bought !== 0n ? bought : sold;
        const number = (field) => hundredths(get(field)) ?? 0n;
        const show = (field, amount) => set(field, decimalText(amount));
        if (name === 'Anzahl_Einkauf' && bought !== 0n) {
            set('Anzahl_Verkauf', 0);
            show('Einnahmen', 0n);
        }
        if (name === 'Anzahl_Verkauf' && sold !== 0n) {
            set('Anzahl_Einkauf', 0);
            show('Ausgaben', 0n);
        }
        if (name === total && pieces !== 0n) show(weight, rounded(number(total), pieces));
        if (name === weight) show(total, number(weight) * pieces);
        if (name === 'Ausgaben' && bought !== 0n && number(name) !== 0n) show(price, rounded(number(name), bought));
        if (name === 'Einnahmen' && sold !== 0n && number(name) !== 0n) show(price, rounded(number(name), sold));
        if (name !== price && !String(name).startsWith('Anzahl')) return;
        const last = name === 'Anzahl_Verkauf' ? [0n, sold] : name === 'Anzahl_Einkauf' && bought ? [bought, 0n] : [bought, sold];
        show('Ausgaben', number(price) * last[0]);
        show('Einnahmen', number(price) * last[1]);
        show(total, number(weight) * pieces);
    },

    Behandlung(name, get, set, form) {
        if (name === 'Behandlungsart' && get(name)) {
            const known = medicinesOf(form.herd, (medicine) => same(medicine.kind, get(name)));
            if (known.length === 1) {
                set('Medikament', known[0].name);
                propose(known[0], get, set);
            }
        }
        if (name === 'Medikament') {
            const known = medicinesOf(form.herd, (medicine) => same(medicine.name, get(name)))[0];
            if (known) propose(known, get, set);
        }
        if (name === 'Menge') {
            const before = form.dose ?? 0n, now = hundredths(get('Menge')) ?? 0n, cost = hundredths(get('Kosten'));
            if (before !== 0n && now !== before && cost) set('Kosten', decimalText(rounded(cost * now, before)));
        }
        form.dose = hundredths(get('Menge')) ?? 0n;
        const day = get(1), until = get('Wartezeit_Datum');
        if (name === 'Wartezeit_Datum' && day && until)
            set('Wartezeit_Tage', Math.max(daysBetween(day, until), 0));
        const days = countOf(get('Wartezeit_Tage'));
        set('Wartezeit_Datum', day && days > 0 && days <= daysBetween(day, '9999-12-31') ? addDays(day, days) : '');
    }
};

function same(one, other) {
    return one.toLowerCase() === other.toLowerCase();
}

/// The desk's list of medicines where it came along, otherwise those of past treatments, the latest first.
function medicinesOf(herd, fits) {
    if (herd.farm.medicines)
        return herd.farm.medicines
            .map(([name, kind, dose, unit, way, days, cost]) => ({name, kind, dose, unit, way, days, cost})).filter(fits);
    const past = herd.animals.flatMap((animal) => herd.bookingsOf(animal.nummer))
        .filter((booking) => booking.kind === 'Behandlung')
        .sort((a, b) => dayOf(b.fields[1]).localeCompare(dayOf(a.fields[1])));
    const known = new Map();
    for (const booking of past) {
        const [, , kind, name, dose, unit, way, days, , , , cost] = booking.fields;
        if (name && !known.has(name)) known.set(name, {name, kind, dose, unit, way, days, cost});
    }
    return [...known.values()].filter(fits);
}

function propose(medicine, get, set) {
    if (!get('Behandlungsart')) set('Behandlungsart', medicine.kind);
    set('Menge', decimalText(hundredths(medicine.dose) ?? 0n));
    set('Einheit', medicine.unit);
    set('Verabreichungsart', medicine.way);
    set('Kosten', decimalText(hundredths(medicine.cost) ?? 0n));
    set('Wartezeit_Tage', countOf(medicine.days));
}
