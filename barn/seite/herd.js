// The farm's data as they came, and the page's own bookings beside them.

class Herd {
    /// `file` is what readExchangeFile gives; `farm` names the farm: id, name, made, and what the desk's page adds.
    constructor(file, farm) {
        this.farm = farm;
        this.animals = file.animals;
        this.lists = file.lists;
        this.planLines = file.plan;
        this.byNumber = new Map();
        this.doubled = new Set();
        for (const animal of this.animals) {
            if (this.byNumber.has(animal.nummer)) this.doubled.add(animal.nummer);
            this.byNumber.set(animal.nummer, animal);
        }
        this.fromDesk = new Map();
        for (const booking of file.bookings) push(this.fromDesk, booking.fields[0], booking);
        this.setOwn([]);
    }

    /// The page's bookings of this farm, the oldest first.
    setOwn(bookings) {
        this.own = bookings;
        this.ofNumber = new Map();
        for (const booking of bookings) if (!booking.arrived) push(this.ofNumber, booking.fields[0], booking);
    }

    open() {
        return this.own.filter((booking) => !booking.handover);
    }

    /// Handed over, and not yet seen in the farm's data.
    underWay() {
        return this.own.filter((booking) => booking.handover && !booking.arrived);
    }

    /// All bookings of an animal, the latest first.
    bookingsOf(number) {
        const all = [...(this.fromDesk.get(number) ?? []), ...(this.ofNumber.get(number) ?? [])];
        return all.sort((a, b) => dayOf(b.fields[1]).localeCompare(dayOf(a.fields[1])));
    }

    /// Every booking but one of the page's own.
    *others(id) {
        for (const list of this.fromDesk.values()) yield* list;
        for (const list of this.ofNumber.values())
            for (const booking of list) if (booking.id !== id) yield booking;
    }

    /// The latest day of each kind for an animal; '' for none.
    lastDays(number, id) {
        const days = {};
        for (const kind of Kinds) days[kind.name] = '';
        for (const booking of this.bookingsOf(number)) {
            const day = dayOf(booking.fields[1]);
            if (booking.id !== id || !id) days[booking.kind] = day > days[booking.kind] ? day : days[booking.kind];
        }
        return days;
    }

    /// Piglets that a sow should have since her last litter; null where no litter is known.
    pigletsOf(number, id) {
        const since = this.lastDays(number, id).Ferkelung;
        if (!since) return null;
        const litter = this.bookingsOf(number).find((booking) => booking.kind === 'Ferkelung' &&
            dayOf(booking.fields[1]) === since);
        let left = countOf(value(litter, 'Ferkel_Lebendig'));
        let weaned = 0;
        for (const booking of this.others(id)) {
            if (dayOf(booking.fields[1]) < since) continue;
            const count = countOf(booking.fields[2]);
            const hers = booking.fields[0] === number;
            if (hers && (booking.kind === 'Verluste' || booking.kind === 'Verschiebung')) left -= count;
            if (booking.kind === 'Verschiebung' && value(booking, 'Zu_Saunr') === number) left += count;
            if (hers && booking.kind === 'Absetzung') weaned += count;
        }
        return {withher: left, unweaned: left - weaned};
    }

    /// The booking behind which the desk would take this one for doubled: it tells bookings by kind, animal and day, those
    /// of no animal by kind and day.
    twinOf(booking) {
        const [number, day] = booking.fields;
        for (const other of this.others(booking.id)) {
            if (other.kind !== booking.kind || other.fields[1] !== day) continue;
            if (other.fields[0] === number || (number === '' && other.desk)) return other;
            if (other.kind === 'Verschiebung' && value(other, 'Zu_Saunr') === number) return other;
        }
        return null;
    }

    /// Animals whose number holds the text: the same number, then those that begin with it, then the others.
    find(text) {
        const sought = text.trim().toLowerCase();
        const rank = (animal) => {
            const number = animal.nummer.toLowerCase();
            return number === sought ? 0 : number.startsWith(sought) ? 1 : 2;
        };
        const hits = this.animals.filter((animal) => animal.nummer.toLowerCase().includes(sought));
        return sought ? hits.sort((a, b) => rank(a) - rank(b)) : hits;
    }

    /// Choices for a field, those fixed before the ones in use.
    choices(field) {
        const inUse = (this.lists[field.list] ?? []).map(deskText);
        const place = ['Medikament', 'Behandlungsart'].indexOf(field.name);
        const medicines = place < 0 ? [] : (this.farm.medicines ?? []).map((medicine) => medicine[place]);
        return [...new Set([...(field.before ?? []), ...inUse, ...medicines])].filter((text) => text !== '');
    }

    countAtDesk(booking) {
        const twin = (other) => other.kind === booking.kind && other.fields[1] === booking.fields[1];
        return (this.fromDesk.get(booking.fields[0]) ?? []).filter(twin).length;
    }

    /// The page's bookings that have come into the data since they were made. Where it made several of a kind, animal and
    /// day, as many as have come.
    arrivals() {
        const taken = new Map();
        return this.underWay().filter((booking) => {
            const key = [booking.kind, booking.fields[0], booking.fields[1]].join('\t');
            const before = (taken.get(key) ?? 0) + (booking.twins ?? 0);
            if (this.countAtDesk(booking) <= before) return false;
            taken.set(key, (taken.get(key) ?? 0) + 1);
            return true;
        });
    }

    // ------------------------------------------------------------------------------------------------ today's work

    /// Rows {work, kind, number, pen, from, to, late, done}: what is open first, of what is due the soonest end, of what is
    /// late the latest.
    planOf(day) {
        const rows = this.farm.plan ? this.deskPlan() : this.filePlan();
        return rows.map((row) => ({...row, late: row.ends && row.to < day, done: this.isDone(row)}))
            .filter((row) => row.late || (row.from <= day && row.to >= day))
            .sort((a, b) => Number(a.done) - Number(b.done) || (a.late ? -1 : 1) * a.to.localeCompare(b.to));
    }

    deskPlan() {
        return this.farm.plan.map(([work, from, to, number, pen]) => {
            const [name, kind, ends] = this.farm.works[work];
            return {work: name, kind, ends, number, pen, from, to};
        });
    }

    /// The lines of the last plan that the desk listed: of number and pen it may have left out either.
    filePlan() {
        return this.planLines.map((line) => line.split('\t')).filter((fields) => dayOf(fields[0])).map((fields) => {
            const [from, to, work, first = '', second = ''] = fields;
            const number = this.byNumber.has(first) || second !== '' ? first : '';
            return {work, kind: '', ends: false, number, pen: number === first ? second : first, from: dayOf(from),
                to: dayOf(to)};
        });
    }

    /// Whether the page has booked what the work asks for.
    isDone(row) {
        return (this.ofNumber.get(row.number) ?? []).some((booking) => dayOf(booking.fields[1]) >= row.from &&
            (row.kind === 'Behandlung' ? booking.kind === row.kind && value(booking, 'Behandlungsart') === row.work
                                       : booking.kind === row.kind));
    }
}

function push(map, key, item) {
    if (map.has(key)) map.get(key).push(item);
    else map.set(key, [item]);
}
