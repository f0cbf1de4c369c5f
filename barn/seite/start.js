// The page: what it shows, whose data it shows, and what the browser still holds.

const page = {store: null, herd: null, allBookings: [], draft: null, lastDay: null, query: '', before: 'heute', entry: null,
    deskFarm: undefined};
const KeptAfterArrival = 60 * DayLength;

const Views = {
    heute: viewToday,
    herde: viewHerd,
    tier: viewAnimal,
    buchen: (kind, number) => kind ? viewEntry(kind, number) : viewKinds(),
    aendern: viewChange,
    uebergabe: viewHandover
};

function route() {
    const parts = location.hash.slice(1).split('/').map(decodeURIComponent);
    return parts[0] in Views ? parts : ['heute'];
}

function currentView() {
    const [name, kind] = route();
    return name === 'buchen' && !kind ? 'arten' : name;
}

function showView() {
    page.entry?.keepDraft();
    page.entry = null;
    const [name, ...rest] = route();
    const parts = page.herd ? Views[name](...rest) : viewWelcome();
    if (page.herd && !page.entry) page.before = location.hash.slice(1) || 'heute';
    byId('inhalt').replaceChildren(storeWarning(), ...parts.filter((part) => part));
    showBar(name);
    if (showView.last !== location.hash) window.scrollTo(0, 0);
    showView.last = location.hash;
}

function storeWarning() {
    return page.store.keeps ? '' : el('p', {className: 'warnung', role: 'alert'}, 'Dieser Browser bewahrt nichts auf. Was Sie ' +
        'buchen, ist weg, sobald die Seite zugeht. Öffnen Sie sie in einem anderen Browser, oder nicht im privaten Modus.');
}

function showBar(name) {
    const bar = byId('leiste');
    bar.hidden = !page.herd;
    if (page.entry) {
        const entry = page.entry;
        return bar.replaceChildren(button('Abbrechen', () => entry.cancel()),
            button(entry.old ? 'Ändern' : 'Buchen', () => entry.book(), 'haupt'));
    }
    const open = page.herd?.open().length ?? 0;
    const items = [['heute', 'Heute'], ['herde', 'Herde'], ['buchen', 'Buchen'], ['uebergabe', 'Übergeben']];
    bar.replaceChildren(...items.map(([view, word]) => {
        const item = link('#' + view, '', sign(view), el('span', {}, word));
        if (view === 'uebergabe' && open > 0) item.append(el('b', {}, String(open)));
        if (view === name || (view === 'herde' && name === 'tier')) item.setAttribute('aria-current', 'page');
        return item;
    }));
}

function viewEntry(kindName, number) {
    const kind = kindOf(kindName);
    if (!kind) return viewKinds();
    const draft = page.draft?.kind === kindName && !page.draft.changes &&
        (!number || page.draft.typed.some(([name, text]) => name === 0 && text === number)) ? page.draft : null;
    return entryView(new Entry(kind, null, draft), draft ? '' : number);
}

function viewChange(id) {
    const booking = page.allBookings.find((one) => one.id === id);
    if (!booking || booking.handover) return [heading('Ändern'), el('p', {className: 'hinweis'},
        'Diese Buchung ist übergeben oder gelöscht. Ändern Sie sie am Rechner.')];
    return entryView(new Entry(kindOf(booking.kind), booking, page.draft?.booking === id ? page.draft : null), '');
}

function entryView(entry, number) {
    page.entry = entry;
    if (number) {
        entry.number.write(number);
        entry.left(0);
        clearTimeout(entry.timer);
        entry.touched = false;
    }
    return [heading(entry.kind.name), entry.element()];
}

function viewWelcome() {
    return [heading('KOBEN im Stall'), el('p', {}, 'Diese Seite zeigt die Arbeit von heute und die Herde, und nimmt Buchungen auf. ' +
        `Öffnen Sie die Datei ${FileToPage}, die „Export an Pocket-PC“ in KOBEN schreibt. Oder nehmen Sie gleich die Seite ` +
        'KOBEN-Stall.html, die daneben liegt: Sie bringt die Daten mit.'),
        openFileButton('Datei öffnen …'), ...otherFarms()];
}

// ------------------------------------------------------------------------------------------------------------ whose data

/// What the desk has put into the page: the farm and its exchange file; null for a page as it is shipped.
function embedded() {
    const block = (id) => byId(id).textContent.trim();
    if (!block('betrieb')) return null;
    const farm = JSON.parse(new TextDecoder().decode(fromBase64(block('betrieb'))));
    return {farm, file: readExchangeFile(fromBase64(block('datei')))};
}

async function openFile(file) {
    let content, bytes;
    try {
        bytes = new Uint8Array(await file.arrayBuffer());
        content = readExchangeFile(bytes);
    } catch (error) {
        return tell(error.message + '\nEs wurde nichts geändert.');
    }
    const known = page.herd?.farm;
    const answer = known ? await ask(`Gehören die Daten in ${file.name} zum selben Betrieb${known.name ? ' ' + known.name : ''}?`,
        ['Nicht öffnen', 'Anderer Betrieb', 'Ja']) : 1;
    if (answer === 0) return;
    const farm = answer === 2 ? {id: known.id, name: known.name, made: file.lastModified}
        : {id: newId(), name: `Datei vom ${timeText(file.lastModified)}`, made: file.lastModified};
    await page.store.write([{...farm, farm: farm.id, id: 'farm:' + farm.id, type: 'farm', opened: Date.now(), bytes}])
        .catch(() => toast('Die Daten werden nicht aufbewahrt und müssen beim nächsten Mal wieder geöffnet werden.'));
    await show(content, farm);
}

/// The farm to begin with: the page's own, unless a later file of it was opened; otherwise the one opened last.
function beginning(own, farms) {
    const opened = farms.sort((a, b) => b.opened - a.opened);
    const last = own ? opened.find((record) => record.farm === own.farm.id && record.made > own.farm.made) : opened[0];
    if (!last) return own;
    return {farm: {id: last.farm, name: last.name, made: last.made}, file: readExchangeFile(last.bytes)};
}

async function show(file, farm) {
    page.herd = new Herd(file, farm);
    await reloadOwn();
    const arrived = page.herd.arrivals();
    if (arrived.length > 0) {
        await page.store.write(arrived.map((booking) => ({...booking, arrived: true})));
        await reloadOwn();
        toast(counted(arrived.length, 'Buchung ist', 'Buchungen sind') + ' am Rechner angekommen.');
    }
    showView();
}

async function reloadOwn() {
    const records = await page.store.all();
    page.allBookings = records.filter((record) => record.type === 'booking').sort((a, b) => a.made - b.made);
    if (!page.herd) return;
    const farm = page.herd.farm.id;
    page.herd.setOwn(page.allBookings.filter((booking) => booking.farm === farm));
    const draft = records.find((record) => record.id === 'draft:' + farm);
    const booked = page.allBookings.some((booking) => booking.id === draft?.booking);
    page.draft = draft && draft.changes === booked ? draft : null;  // of a booking that another tab has made or deleted
}

async function start() {
    page.store = await openStore();
    const records = await page.store.all();
    const old = records.filter((record) => record.arrived && record.handedAt < Date.now() - KeptAfterArrival);
    if (old.length > 0) await page.store.write([], old.map((record) => record.id));
    window.addEventListener('hashchange', showView);
    window.addEventListener('pagehide', () => page.entry?.keepDraft());
    window.addEventListener('beforeunload', (event) => {
        if (!page.store.keeps && page.herd?.open().length > 0) event.preventDefault();
    });
    document.addEventListener('visibilitychange', async () => {
        if (document.hidden) return page.entry?.keepDraft();
        await reloadOwn();
        if (!page.entry && !document.querySelector('dialog')) showView();
    });
    document.addEventListener('dragover', (event) => event.preventDefault());
    document.addEventListener('drop', (event) => {
        event.preventDefault();
        if (event.dataTransfer.files[0]) openFile(event.dataTransfer.files[0]);
    });
    await reloadOwn();
    let own = null;
    try {
        own = embedded();
    } catch (error) {
        tell(`Die Daten dieser Seite sind beschädigt: ${error.message}\nHolen Sie sie noch einmal vom Rechner. Was hier schon ` +
            'gebucht ist, bleibt erhalten.');
    }
    page.deskFarm = own?.farm.id;
    const first = beginning(own, await page.store.farms());
    if (first) await show(first.file, first.farm);
    else showView();
}

start().catch((error) => tell('Die Seite kann nicht anfangen: ' + error.message));
