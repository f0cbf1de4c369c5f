// Handing over: bookings go out in one file, are noted as handed over before it leaves, and can go out again, byte for byte.
// They count as arrived when a newer page of the desk holds them.

function viewHandover() {
    const open = page.herd.open(), away = page.herd.underWay();
    return [heading('Übergeben', el('p', {className: 'leise'}, herdText())),
        openSection(open), awaySection(away), ...otherFarms(), dataSection()];
}

function ownRow(booking) {
    const row = bookingRow(booking);
    row.querySelector('strong').textContent = booking.fields[0] || 'ohne Sau';
    row.querySelector('span span, a span').textContent = booking.kind + ' ' + booking.fields[1];
    return row;
}

function openSection(open) {
    if (open.length === 0) return el('p', {className: 'hinweis'}, 'Es ist nichts zu übergeben.');
    return el('section', {}, el('h2', {}, counted(open.length, 'Buchung', 'Buchungen') + ' zu übergeben'),
        handoverButtons(open, sendsToDesk()), el('ul', {className: 'liste'}, open.map(ownRow)));
}

function awaySection(away) {
    if (away.length === 0) return null;
    const all = [...page.herd.open(), ...away];
    return el('section', {}, el('h2', {}, counted(away.length, 'Buchung', 'Buchungen') + ' unterwegs'),
        el('p', {className: 'hinweis'}, 'Übergeben, aber noch in keiner neuen Seite vom Rechner gesehen. Ist die Datei ' +
            'verloren gegangen, übergeben Sie sie noch einmal: Was der Rechner schon hat, nimmt er nicht doppelt an.'),
        el('div', {className: 'knoepfe'},
            button('Sind angekommen', () => markArrived(away)),
            button('Noch einmal übergeben', () => handOver(all, sendsToDesk() ? 'senden' : sharesFiles() ? 'teilen' : 'laden'))),
        el('ul', {className: 'liste'}, away.map(ownRow)));
}

function handoverButtons(bookings, sends = false) {
    const send = sends ? button('An den Rechner senden', () => handOver(bookings, 'senden'), 'haupt') : null;
    const share = sharesFiles() ? button('Teilen …', () => handOver(bookings, 'teilen'), send ? '' : 'haupt') : null;
    return el('div', {className: 'knoepfe'}, send, share,
        button('Als Datei sichern', () => handOver(bookings, 'laden'), send || share ? '' : 'haupt'));
}

// ------------------------------------------------------------------------------------------------------------ the file

/// Some browsers share files of few endings only; the desk's ending is then followed by one that they let pass.
function shareable(bytes) {
    const named = (name, type) => new File([bytes], name, {type});
    return [named(FileFromPage, 'application/octet-stream'), named(FileFromPage + '.txt', 'text/plain')]
        .find((file) => navigator.canShare?.({files: [file]}));
}

function sharesFiles() {
    return Boolean(navigator.share && shareable(new Uint8Array(1)));
}

async function handOver(bookings, road) {
    if (page.handing) return;
    page.handing = true;
    let done = false;
    try {
        const stored = new Map((await page.store.all()).map((record) => [record.id, record]));
        const current = bookings.map((booking) => stored.get(booking.id)).filter((booking) => booking);
        if (current.length === 0) return;
        const bytes = composeFile(current);
        const before = current.filter((booking) => !booking.handover);
        const handover = newId(), handedAt = Date.now();
        await page.store.write(before.map((booking) => ({...booking, handover, handedAt})));
        done = await Roads[road](bytes, current.length);
        if (!done) await page.store.write(before);
    } catch (error) {
        await tell(`Die Übergabe ist nicht gelungen: ${error?.message ?? error}.\nDie Buchungen stehen noch hier.`);
    } finally {
        page.handing = false;
        await reloadOwn();
        showView();
    }
    if (done) toast(road === 'senden' ? 'Am Rechner empfangen.' : 'Übergeben.');
}

async function share(bytes) {
    const file = shareable(bytes);
    try {
        await navigator.share({files: [file], title: FileFromPage});
    } catch (error) {
        if (error.name !== 'AbortError') await tell('Teilen geht gerade nicht. Sichern Sie die Buchungen als Datei.');
        return false;
    }
    if (file.name !== FileFromPage)
        await tell(`Die Datei heißt ${file.name}, weil dieser Browser andere nicht teilt. Am Rechner muß sie ${FileFromPage} ` +
            'heißen: Nehmen Sie dort das .txt am Ende weg.');
    return true;
}

function download(content, name, type) {
    const address = URL.createObjectURL(new Blob([content], {type}));
    const anchor = el('a', {href: address, download: name});
    document.body.append(anchor);
    anchor.click();
    anchor.remove();
    setTimeout(() => URL.revokeObjectURL(address), 60000);
}

/// The browser does not say what became of a download, so the user is asked.
async function save(bytes, count) {
    download(bytes, FileFromPage, 'application/octet-stream');
    const answer = await ask(`${counted(count, 'Buchung', 'Buchungen')} in ${FileFromPage}, im Ordner der Downloads.\n` +
        'Bringen Sie die Datei in den Datenordner von KOBEN (Kabel, Mail, Cloud) und lesen Sie sie mit „Import von Pocket-PC“, ' +
        'Schritt 2, ein, bevor Sie die nächste übergeben.\nIst die Datei gesichert?', ['Nein, nichts übergeben', 'Ja']);
    return answer === 1;
}

async function markArrived(bookings) {
    if (await ask(`${counted(bookings.length, 'Buchung', 'Buchungen')} als angekommen abhaken? Sie gehen dann in keine Datei ` +
        'mehr.', ['Zurück', 'Abhaken']) !== 1) return;
    await page.store.write(bookings.map((booking) => ({...booking, arrived: true})));
    await reloadOwn();
    showView();
}

// ------------------------------------------------------------------------------------------------ farms and their data

function otherFarms() {
    const others = new Map();
    for (const booking of page.allBookings)
        if (booking.farm !== page.herd?.farm.id && !booking.handover) push(others, booking.farm, booking);
    return [...others].map(([farm, bookings]) => el('section', {},
        el('h2', {}, 'Von einem anderen Betrieb: ' + (bookings[0].farmName || 'ohne Namen')),
        el('p', {className: 'warnung'}, `${counted(bookings.length, 'Buchung', 'Buchungen')} in diesem Browser, zu anderen Daten ` +
            'gemacht. Das geht in eine eigene Datei.'),
        handoverButtons(bookings), el('ul', {className: 'liste'}, bookings.map((booking) => {
            const row = ownRow({...booking, desk: true});
            row.dataset.betrieb = farm;
            return row;
        }))));
}

function dataSection() {
    const kept = page.store.keeps ? 'Gebuchtes bleibt in diesem Browser, bis es am Rechner ist.'
        : 'Dieser Browser bewahrt nichts auf. Übergeben Sie, bevor Sie die Seite schließen.';
    return el('section', {}, el('h2', {}, 'Daten'), el('p', {className: page.store.keeps ? 'hinweis' : 'warnung'}, kept),
        sendsToDesk() ? deskParts() : null, openFileButton('Andere Daten öffnen …'));
}

function openFileButton(caption, open = openFile) {
    const input = el('input', {type: 'file', className: 'verborgen', tabIndex: -1, onchange: () => {
        if (input.files[0]) open(input.files[0]);
        input.value = '';
    }});
    return el('div', {className: 'knoepfe'}, button(caption, () => input.click()), input);
}
