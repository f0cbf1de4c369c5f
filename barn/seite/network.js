// The way back to the desk that served the page: bookings go to the address they came from, and count as handed over once
// the desk has said that they are on its disk. A page that was opened as a file has no such way.

const SendPauses = [0, 1000, 3000];  // milliseconds before each try
const AnswerTime = 20000;            // milliseconds for the desk's answer

function servedByDesk() {
    return location.protocol === 'http:' || location.protocol === 'https:';
}

/// Only what belongs to the desk's own farm goes there.
function sendsToDesk() {
    return servedByDesk() && Boolean(page.herd) && page.herd.farm.id === page.deskFarm;
}

/// The desk's answer, or null where none came. The same bytes again are no harm: it keeps them once.
async function post(bytes) {
    for (const pause of SendPauses) {
        await new Promise((done) => setTimeout(done, pause));
        const patience = new AbortController();
        const timer = setTimeout(() => patience.abort(), AnswerTime);
        try {
            const answer = await fetch(location.pathname, {method: 'POST', body: bytes, cache: 'no-store', signal: patience.signal});
            return {status: answer.status, told: await answer.json().catch(() => null)};
        } catch {
            // the next try
        } finally {
            clearTimeout(timer);
        }
    }
    return null;
}

/// True once the desk has told how many bookings it has, and it is all of them.
async function send(bytes, count) {
    toast('Wird gesendet …');
    const answer = await post(bytes);
    if (answer?.status === 200 && (count === null || answer.told?.buchungen === count)) return true;
    const stay = 'Die Buchungen stehen noch hier.';
    if (!answer)
        await tell('Der Rechner antwortet nicht.\nIst dort das Fenster „Im Hausnetz anbieten“ offen, und ist das Telefon im ' +
            `selben WLAN? Dann senden Sie noch einmal, oder sichern Sie die Buchungen als Datei.\n${stay}`);
    else if (answer.status === 404)
        await tell('Diese Adresse gilt nicht mehr: Das Fenster „Im Hausnetz anbieten“ wurde am Rechner geschlossen.\nÖffnen Sie es ' +
            `dort und lesen Sie den neuen Code mit der Kamera. ${stay} Auf der neuen Seite sind sie auch.`);
    else
        await tell(`Der Rechner hat die Buchungen nicht angenommen.\n${answer.told?.grund ?? 'Fehler ' + answer.status}\n${stay}`);
    return false;
}

/// What a page that was kept as a file has written.
async function sendFile(file) {
    try {
        if (await send(new Uint8Array(await file.arrayBuffer()), null)) toast(`${file.name}: am Rechner empfangen.`);
    } catch (error) {
        await tell(`${file.name} lässt sich nicht lesen: ${error.message}`);
    }
}

/// Kept as a file the page opens without a network, and has none.
async function keepPage() {
    try {
        const text = await (await fetch(location.pathname, {cache: 'no-store'})).text();
        if (!text.includes('id="betrieb"')) throw new Error('die Adresse gilt nicht mehr');
        download(text.replace(" connect-src 'self';", ''), 'KOBEN-Stall.html', 'text/html');
    } catch (error) {
        await tell(`Die Seite lässt sich nicht sichern: ${error.message}.\nIst das Fenster „Im Hausnetz anbieten“ am Rechner noch offen?`);
    }
}

function deskParts() {
    return [el('p', {className: 'hinweis'}, 'Diese Seite kommt vom Rechner. Ohne dessen Netz lässt sie sich nicht neu laden: Ist im ' +
        'Stall keines, sichern Sie sie vorher auf dem Telefon, buchen in der gesicherten Seite, und senden deren Datei hier.'),
        el('div', {className: 'knoepfe'}, button('Seite für den Stall sichern', () => keepPage())),
        openFileButton('Datei an den Rechner senden …', sendFile)];
}

const Roads = {senden: send, teilen: share, laden: save};
