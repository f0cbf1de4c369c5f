// Numbers with a decimal comma, reckoned exactly, and days.

const MostAmount = 92233720368547758n;  // hundredths, what the desk's amounts hold
const MostWeight = 34028234663852886n * 10n ** 24n;  // hundredths, what its weights hold
const MostShort = 32767, MostLong = 2147483647;

/// num / den, half away from zero.
function rounded(num, den) {
    if (den < 0n) [num, den] = [-num, -den];
    const half = (num < 0n ? -num : num) * 2n + den;
    return (num < 0n ? -1n : 1n) * (half / (den * 2n));
}

/// The hundredths of a typed number, with one point or comma; null where it is no number. Nothing is 0.
function hundredths(text) {
    const parts = /^([+-]?)(\d*)(?:[.,](\d*))?$/.exec(text.trim());
    if (!parts || (text.trim() !== '' && !/\d/.test(text))) return null;
    const decimals = parts[3] ?? '';
    const value = rounded(BigInt(parts[2] + decimals || '0') * 100n, 10n ** BigInt(decimals.length));
    return parts[1] === '-' ? -value : value;
}

/// 1234 is 12,34.
function decimalText(value) {
    const digits = String(value < 0n ? -value : value).padStart(3, '0');
    return (value < 0n ? '-' : '') + digits.slice(0, -2) + ',' + digits.slice(-2);
}

function wholeNumber(text) {
    return /^[+-]?\d+$/.test(text.trim()) ? Number(text) : null;
}

/// The number that a field of the file begins with, as counts are read.
function countOf(text) {
    return Number(/^\s*[+-]?\d+/.exec(text ?? '')?.[0] ?? 0);
}

// Days are texts like 2026-07-15: they sort, and a date field holds them.

const DayLength = 86400000;

function today() {
    const now = new Date();
    return isoDay(now.getFullYear(), now.getMonth() + 1, now.getDate());
}

function isoDay(year, month, day) {
    return String(year).padStart(4, '0') + '-' + String(month).padStart(2, '0') + '-' + String(day).padStart(2, '0');
}

/// Of dd.mm.yyyy; '' where it is no day.
function dayOf(text) {
    const parts = /^(\d\d)\.(\d\d)\.(\d{4})$/.exec((text ?? '').trim());
    return parts ? parts[3] + '-' + parts[2] + '-' + parts[1] : '';
}

function germanDay(day) {
    return day.split('-').reverse().join('.');
}

function daysBetween(from, to) {
    return Math.round((Date.parse(to) - Date.parse(from)) / DayLength);
}

function addDays(day, days) {
    return new Date(Date.parse(day) + days * DayLength).toISOString().slice(0, 10);
}

function weekday(day) {
    return new Date(day + 'T00:00:00Z').toLocaleDateString('de-DE', {weekday: 'long', timeZone: 'UTC'});
}

/// 22.11.2026, 14:05 of a time in milliseconds.
function timeText(time) {
    const when = new Date(time);
    return germanDay(isoDay(when.getFullYear(), when.getMonth() + 1, when.getDate())) + ', ' +
        String(when.getHours()).padStart(2, '0') + ':' + String(when.getMinutes()).padStart(2, '0');
}

function counted(count, one, many) {
    return count + ' ' + (count === 1 ? one : many);
}
