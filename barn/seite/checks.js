// What the desk would say about a booking, in short.

/// Findings {name, text} of the fields' own values. Name 0 is the animal's, 1 the day's.
function checkFields(kind, booking) {
    const found = [];
    const wrong = (name, text) => found.push({name, text});
    if (booking.fields[0] === '' && !kind.mother) wrong(0, 'Die Nummer der Sau fehlt.');
    if (!booking.fields[1]) wrong(1, 'Das Datum muß eingegeben werden.');
    else if (!/^\d\d\.\d\d\.(?!00)\d{4}$/.test(booking.fields[1])) wrong(1, 'So ein Jahr gibt es nicht.');
    kind.fields.forEach((field, at) => {
        const text = booking.fields[at + 2];
        if (field.type === 'count') checkCount(field, text, wrong);
        if (field.type === 'amount' || field.type === 'weight') checkDecimal(field, text, wrong);
    });
    (KindChecks[kind.name] ?? (() => {}))(booking, wrong, (name) => value(booking, name));
    return found;
}

function checkCount(field, text, wrong) {
    const number = wholeNumber(text);
    if (number === null) wrong(field.name, 'Hier muß eine ganze Zahl stehen.');
    else if (number < field.least) wrong(field.name, `Möglich ist mindestens ${field.least}.`);
    else if (number > field.most) wrong(field.name, `Zu groß. Möglich ist höchstens ${field.most}.`);
}

function checkDecimal(field, text, wrong) {
    const number = hundredths(text);
    const most = field.type === 'amount' ? MostAmount : MostWeight;
    if (number === null) wrong(field.name, 'Bitte mit einem Komma und ohne Tausenderpunkte eingeben, z. B. 1234,56.');
    else if (number > most || number < -most) wrong(field.name, 'Die Zahl ist zu groß.');
}

const KindChecks = {
    Ferkelung(booking, wrong, field) {
        if (countOf(field('Ferkel_Lebendig')) + countOf(field('Ferkel_Tot')) !== countOf(field('Ferkel_Gesamt')))
            wrong('Ferkel_Gesamt', 'Lebend und tot geborene müssen zusammen die Gesamtzahl sein.');
    },
    Absetzung(booking, wrong, field) {
        if (field('Box') && (booking.fields[0] + '-' + countOf(field('Anzahl_Ferkel'))).length > 20)
            wrong('Box', 'Die Nummer der Sau ist zu lang, um die Ferkel einzubuchen.');
    },
    Verschiebung(booking, wrong, field) {
        if (countOf(field('Anzahl_Ferkel')) === 0) wrong('Anzahl_Ferkel', 'Die Anzahl darf nicht 0 sein.');
        if (field('Zu_Saunr') === '') wrong('Zu_Saunr', 'Die Sau, zu der die Ferkel kommen, muß angegeben werden.');
        else if (field('Zu_Saunr').toLowerCase() === booking.fields[0].toLowerCase())
            wrong('Zu_Saunr', 'Eine Verschiebung muß immer zu einer anderen Sau erfolgen.');
    },
    Behandlung(booking, wrong, field) {
        if (field('Behandlungsart') === '') wrong('Behandlungsart', 'Die Behandlungsart muß eingetragen werden.');
        if (field('Medikament') && hundredths(field('Menge')) === 0n)
            wrong('Menge', 'Zu einem Medikament muß auch die Menge eingetragen werden.');
        const left = dayOf(booking.fields[1]) ? daysBetween(dayOf(booking.fields[1]), '9999-12-31') : 0;
        if (countOf(field('Wartezeit_Tage')) > left) wrong('Wartezeit_Tage', 'So eine lange Wartezeit gibt es nicht.');
    },
    Ferkelverkauf(booking, wrong, field) {
        const bought = countOf(field('Anzahl_Einkauf')), sold = countOf(field('Anzahl_Verkauf'));
        if (bought === 0 && sold === 0) wrong('Anzahl_Verkauf', 'Die Anzahl fehlt.');
        if (bought !== 0 && sold !== 0)
            wrong('Anzahl_Einkauf', 'Einkauf und Verkauf sind zwei Buchungen: Bitte eine der Anzahlen auf 0 setzen.');
    }
};

/// Questions to be answered with yes before the booking is kept.
function questionsOf(booking, herd) {
    const [number, day] = booking.fields;
    const questions = [];
    if (number !== '' && !herd.byNumber.has(number))
        questions.push(`Eine Sau mit der Nummer ${number} steht nicht in den Daten. Der Rechner fragt beim Einlesen, ob ` +
            'sie eingetragen werden soll. Trotzdem buchen?');
    const partner = booking.kind === 'Verschiebung' ? value(booking, 'Zu_Saunr') : '';
    if (partner !== '' && !herd.byNumber.has(partner))
        questions.push(`Eine Sau mit der Nummer ${partner} steht nicht in den Daten. Trotzdem buchen?`);
    if (herd.twinOf(booking))
        questions.push(`${number ? 'Für ' + number : 'Ohne Sau'} ist am ${day} schon eine Buchung der Art ` +
            `${booking.kind} da. Beim Einlesen nimmt der Rechner je Tier und Tag nur eine an, solange dort „Je ` +
            'Maßnahme, Tag und Tier nur eine Buchung zulassen“ angehakt ist. Trotzdem buchen?');
    const piglets = booking.kind === 'Absetzung' ? herd.pigletsOf(number, booking.id) : null;
    const left = piglets ? piglets.unweaned - countOf(value(booking, 'Anzahl_Ferkel')) : 0;
    if (left < 0)
        questions.push(`Seit der letzten Ferkelung wären es bei der Sau ${number} dann ${left} Ferkel (also unter 0). ` +
            'Trotzdem buchen?');
    return questions;
}

/// Cycle dates whose distance is out of the farm's tolerance, or that have nothing before them.
function hintsOf(booking, herd) {
    const spans = herd.farm.spans;
    const hints = [];
    const [number] = booking.fields;
    const day = dayOf(booking.fields[1]);
    const days = {...herd.lastDays(number, booking.id), [booking.kind]: day};
    const {Belegung: service, Ferkelung: litter, Absetzung: weaning, Trächtigkeit: check} = days;
    const animal = herd.byNumber.get(number);
    const distance = (from, to, wanted, names) => {
        const between = daysBetween(from, to);
        if (Math.abs(between - wanted) > spans.tolerance) hints.push(`Differenz ${names} ${between} Tage?`);
    };
    const booked = (name) => booking.kind === name;
    if (!spans || spans.cycle) {
        const served = service || Number(animal?.belegungen) > 0, littered = litter || Number(animal?.ferkelungen) > 0;
        if (booked('Trächtigkeit') && !served) hints.push('Trächtigkeitsfeststellung ohne vorherige Belegung.');
        if (booked('Ferkelung') && !served) hints.push('Ferkelung ohne vorherige Belegung.');
        if (booked('Absetzung') && !littered) hints.push('Absetzung ohne vorherige Ferkelung.');
    }
    if (spans?.cycle) {
        if (booked('Ferkelung') && service && service < litter)
            distance(service, litter, spans.serviceLitter, 'Belegung - Ferkelung');
        if (booked('Belegung') && litter && service >= litter)
            distance(litter, service, spans.litterService, 'Ferkelung - Belegung');
        if (booked('Absetzung') && litter && weaning >= litter)
            distance(litter, weaning, spans.litterWeaning, 'Ferkelung - Absetzung');
        if (booked('Absetzung') && service && service >= weaning)
            distance(weaning, service, spans.weaningService, 'Absetzung - Belegung');
        if (booked('Trächtigkeit') && service && check >= service)
            distance(check, service, spans.serviceCheck, 'Belegung - Trächtigkeitsfeststellung');
    }
    hints.push(...filledAtDesk(booking, herd));
    const birth = dayOf(animal?.geburt);
    if (spans?.birth && booked('Belegung') && birth)
        distance(birth, service, spans.birthService, 'Geburtsdatum - ERST-Belegung');
    return hints;
}

/// What the desk takes from its list of medicines where a treatment has nothing.
function filledAtDesk(booking, herd) {
    const known = booking.kind === 'Behandlung' &&
        medicinesOf(herd, (medicine) => same(medicine.name, value(booking, 'Medikament')))[0];
    if (!known) return [];
    const cost = hundredths(known.cost) ?? 0n, days = countOf(known.days);
    const hints = [];
    if (hundredths(value(booking, 'Kosten')) === 0n && cost !== 0n)
        hints.push(`Ohne Kosten setzt der Rechner beim Einlesen die des Medikaments ein: ${decimalText(cost)} €.`);
    if (countOf(value(booking, 'Wartezeit_Tage')) === 0 && days > 0)
        hints.push(`Ohne Wartezeit setzt der Rechner beim Einlesen die Tage des Medikaments ein: ${days}.`);
    return hints;
}
