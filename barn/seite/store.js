// What the browser keeps: one table of records, each with an id and a type (booking, draft, farm). A write puts and removes
// records, all or none, and is done when it is on the disk. `all` leaves out the farms' data, which are large. Where the browser refuses one road the next is taken; where it refuses all, nothing is kept and
// the page says so.

const StoreName = 'koben-stall';
const OpenTime = 5000;  // milliseconds until a browser that does not answer counts as refusing

function settled(request) {
    return new Promise((done, failed) => {
        request.onsuccess = () => done(request.result);
        request.onerror = request.onblocked = () => failed(request.error);
    });
}

/// The database of the browser.
async function openDatabase() {
    const request = indexedDB.open(StoreName, 1);
    request.onupgradeneeded = () => request.result.createObjectStore('records', {keyPath: 'id'});
    const late = new Promise((_, failed) => setTimeout(() => failed(new Error('keine Antwort')), OpenTime));
    const database = await Promise.race([settled(request), late]);
    const write = (records, removed = []) => new Promise((done, failed) => {
        const transaction = database.transaction('records', 'readwrite', {durability: 'strict'});
        transaction.oncomplete = () => done();
        transaction.onerror = transaction.onabort = () => failed(transaction.error);
        const table = transaction.objectStore('records');
        for (const record of records) table.put(record);
        for (const id of removed) table.delete(id);
    });
    await write([{id: 'probe', type: 'probe'}]);
    const read = (range) => settled(database.transaction('records').objectStore('records').getAll(range));
    return {
        keeps: true,
        write,
        all: async () => [...await read(IDBKeyRange.upperBound('farm:')), ...await read(IDBKeyRange.lowerBound('farm;'))],
        farms: () => read(IDBKeyRange.bound('farm:', 'farm;'))
    };
}

/// One text of the older store, written whole each time. A farm's data is too large for it.
function openLocal() {
    const read = () => new Map(JSON.parse(localStorage.getItem(StoreName) ?? '[]'));
    const write = (records) => localStorage.setItem(StoreName, JSON.stringify([...records]));
    write(read());
    return {
        keeps: true,
        all: async () => [...read().values()],
        farms: async () => [],
        write: async (records, removed = []) => {
            const all = read();
            for (const record of records) {
                if (record.type === 'farm') throw new Error('kein Platz für die Daten');
                all.set(record.id, record);
            }
            for (const id of removed) all.delete(id);
            write(all);
        }
    };
}

function openMemory() {
    const records = new Map();
    return {
        keeps: false,
        all: async () => [...records.values()],
        farms: async () => [],
        write: async (list, removed = []) => {
            for (const record of list) records.set(record.id, record);
            for (const id of removed) records.delete(id);
        }
    };
}

async function openStore() {
    for (const open of [openDatabase, openLocal]) {
        try {
            const store = await open();
            navigator.storage?.persist?.().catch(() => {});
            return store;
        } catch {
            // the next road
        }
    }
    return openMemory();
}

/// No two alike, also where the browser has no better source.
function newId() {
    const random = crypto.getRandomValues(new Uint32Array(4));
    return Date.now().toString(36) + '-' + [...random].map((part) => part.toString(36)).join('');
}
