// The eight kinds of bookings: their fields at the positions of the exchange files, 2 and on. Position 0 is the animal's
// number, 1 the day. `list` is the number of the field's list of choice in the file, `more` what is seldom needed.

const costs = {name: 'Kosten', label: 'Kosten (€)', type: 'amount', more: true};

function texts(comment, remark) {
    return [
        {name: 'Kommentar', label: 'Kommentar', type: 'text', width: 20, list: comment, more: true},
        {name: 'Bemerkung', label: 'Bemerkung', type: 'text', width: 20, list: remark, more: true}];
}

function count(name, label, preset, least, rest) {
    return {name, label, type: 'count', preset, least, most: MostShort, ...rest};
}

const Kinds = [
    {name: 'Belegung', fields: [
        {name: 'Ebernr', label: 'Ebernr', type: 'text', width: 15, list: 0},
        count('Deckanzahl', 'Deckanzahl', '1', 1, {most: MostLong}),
        {name: 'Belegungsart', label: 'Belegungsart', type: 'choice',
            items: [['K', 'künstlich'], ['N', 'natürlich']]},
        {name: 'Belegungsstation', label: 'Besamungsstation', type: 'text', width: 20, list: 1},
        costs, ...texts(2, 3)]},
    {name: 'Ferkelung', fields: [
        count('Ferkel_Gesamt', 'Ferkel gesamt', '1', 1),
        count('Ferkel_Lebendig', 'davon lebend geboren', '1', 0),
        count('Ferkel_Tot', 'davon tot geboren', '0', 0),
        {name: 'Stück_Gewicht_kg', label: 'Gewicht je Stück (kg)', type: 'weight', more: true},
        costs, ...texts(4, 5)]},
    {name: 'Absetzung', pen: true, fields: [
        count('Anzahl_Ferkel', 'Anzahl Ferkel', '0', 0),
        // the desk reads this one up to a comma, but takes a point
        {name: 'Stück_Gewicht_kg', label: 'Gewicht je Stück (kg)', type: 'weight', point: true},
        ...texts(6, 7),
        {name: 'Box', label: 'Einbuchen in Box', type: 'text', width: 10, list: 8}]},
    {name: 'Trächtigkeit', fields: [
        {name: 'Trächtig', label: 'Trächtig', type: 'choice', items: [['J', 'ja'], ['N', 'nein']]},
        costs, ...texts(9, 10)]},
    {name: 'Verluste', mother: true, fields: [
        count('Anzahl_Ferkel', 'Anzahl Ferkel', '1', 1),
        {name: 'Grund', label: 'Grund des Verlustes', type: 'text', width: 20, list: 11,
            before: ['Verhungert', 'Totgelegen', 'Grätscher', 'Sonstiges']},
        {...costs, label: 'Kosten (Wert der Ferkel, €)'}, ...texts(13, 14)]},
    {name: 'Verschiebung', fields: [
        count('Anzahl_Ferkel', 'Anzahl Ferkel', '1', -MostShort),
        {name: 'Zu_Saunr', label: 'Zu Sau-Nummer', type: 'text', width: 15, list: 12},
        ...texts(15, 16)]},
    {name: 'Behandlung', fields: [
        {name: 'Behandlungsart', label: 'Art der Behandlung', type: 'text', width: 20, list: 17},
        {name: 'Medikament', label: 'Medikament', type: 'text', width: 20, list: 18},
        {name: 'Menge', label: 'Menge', type: 'weight'},
        {name: 'Einheit', label: 'Einheit', type: 'choice',
            items: ['', 'l', 'ml', 'kg', 'g', 'mg', 'St'].map((unit) => [unit, unit || 'ohne'])},
        {name: 'Verabreichungsart', label: 'Verabreichungsart', type: 'text', width: 20, list: 20, more: true},
        count('Wartezeit_Tage', 'Wartezeit (Tage)', '0', 0, {most: MostLong}),
        {name: 'Wartezeit_Datum', label: 'Wartezeit bis', type: 'day'},
        {name: 'Tierarzt', label: 'Tierarzt', type: 'text', width: 20, list: 21, more: true},
        {name: 'Beleg_Nr', label: 'Beleg-Nummer', type: 'text', width: 20, list: 22, more: true},
        costs, ...texts(23, 24)]},
    {name: 'Ferkelverkauf', mother: true, fields: [
        {name: 'Preis_je_Stück', label: 'Preis je Stück (€)', type: 'amount'},
        count('Anzahl_Einkauf', 'Anzahl Einkauf', '0', 0, {more: true}),
        {name: 'Ausgaben', label: 'Ausgaben (€)', type: 'amount', more: true},
        count('Anzahl_Verkauf', 'Anzahl Verkauf', '1', 0, {first: true}),
        {name: 'Einnahmen', label: 'Einnahmen (€)', type: 'amount'},
        {name: 'Stück_Gewicht_kg', label: 'Gewicht je Stück (kg)', type: 'weight'},
        {name: 'Gesamtgewicht_kg', label: 'Gesamtgewicht (kg)', type: 'weight'},
        {name: 'Kunde', label: 'Kunde', type: 'text', width: 20, list: 25},
        texts(26)[0]]}];

function kindOf(name) {
    return Kinds.find((kind) => kind.name === name);
}

/// The position of a field in a line.
function placeOf(kind, name) {
    return kind.fields.findIndex((field) => field.name === name) + 2;
}

function value(booking, name) {
    return booking.fields[placeOf(kindOf(booking.kind), name)] ?? '';
}

/// A booking in one line, as lists show it.
function summary(booking) {
    const kind = kindOf(booking.kind);
    const parts = kind.fields.map((field, at) => {
        const text = (booking.fields[at + 2] ?? '').replace(field.point ? '.' : '\n', ',');
        if (text === '' || text === '0,00' || text === '0') return '';
        if (field.type === 'choice') return field.items.find(([key]) => key === text)?.[1] ?? text;
        return field.type === 'text' ? text : field.label.replace(/ \(.*/, '') + ' ' + text;
    });
    return parts.filter((part) => part !== '').join(', ');
}
