// The two exchange files. The one from the desk is read whole or refused with the line; the one to the desk is made of
// bookings whose fields stand in its order already.

const FileToPage = 'KOBEN2_DATEN_ZU_POCKET.KO2', FileFromPage = 'KOBEN2_DATEN_VON_POCKET.KO2';
const AnimalFields = ['art', 'nummer', 'stall', 'gruppe', 'naechsteBelegung', 'naechsteFerkelung', 'geburt', 'belegungen',
    'ferkelungen', 'lebend'];
const ValueLists = 27;

function readExchangeFile(bytes) {
    const lines = decode(bytes).replace(/\x1a$/, '').split(/\r?\n/);
    if (lines.at(-1) === '') lines.pop();
    let at = 0;
    const damaged = (what) => new Error(`Das ist keine ${FileToPage}: Zeile ${at} ${what}.`);
    const section = (what) => {
        const text = lines[at++];
        if (text === undefined) throw damaged(`fehlt (Anzahl der Zeilen: ${what})`);
        if (!/^ *\d{1,9} *$/.test(text)) throw damaged(`sollte die Anzahl der Zeilen nennen (${what})`);
        const end = at + Number(text);
        if (end > lines.length) throw damaged(`nennt mehr Zeilen, als da sind (${what})`);
        const rows = lines.slice(at, end);
        at = end;
        return rows;
    };
    const animals = section('Tiere').map((line) => {
        const fields = line.split('\t');
        return Object.fromEntries(AnimalFields.map((name, i) => [name, fields[i] ?? '']));
    });
    const plan = section('Arbeitsplan');
    const bookings = Kinds.flatMap((kind) => section(kind.name).map((line) => {
        const fields = line.split('\t').slice(0, 2 + kind.fields.length - (kind.pen ? 1 : 0));
        return {kind: kind.name, fields, desk: true};
    }));
    const lists = [];
    for (let i = 0; i < ValueLists; ++i)
        lists.push(section('Auswahlliste').filter((text) => text !== '' && text !== 'Null'));
    if (at < lines.length) {
        ++at;
        throw damaged('ist zu viel');
    }
    return {animals, plan, bookings, lists};
}

/// Bookings of no animal go first: behind another of the day the desk would take them for doubled.
function composeFile(bookings) {
    let text = '';
    for (const kind of Kinds) {
        const own = bookings.filter((booking) => booking.kind === kind.name);
        own.sort((a, b) => Number(a.fields[0] !== '') - Number(b.fields[0] !== ''));
        text += own.length === 0 ? '0\r\n' : ` ${own.length} \r\n`;
        for (const booking of own) text += booking.fields.join('\t') + '\tN\r\n';
    }
    return encode(text);
}
