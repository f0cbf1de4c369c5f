// Windows-1252, the code page of the exchange files, both ways; and what may be typed at all.

/// The signs of the bytes 80h to 9Fh. The five bytes without a sign are control characters.
const HighSigns =
    '\u20ac\u0081\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\u008d\u017d\u008f' +
    '\u0090\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a\u0153\u009d\u017e\u0178';
const HighCodes = new Map([...HighSigns].map((sign, at) => [sign, 0x80 + at]));

function decode(bytes) {
    return new TextDecoder('windows-1252').decode(bytes);
}

/// The byte of a sign; undefined where the code page has none.
function byteOf(sign) {
    const code = sign.codePointAt(0);
    return code < 0x80 || (code >= 0xa0 && code <= 0xff) ? code : HighCodes.get(sign);
}

function encode(text) {
    return Uint8Array.from([...text].map((sign) => {
        const byte = byteOf(sign);
        if (byte === undefined) throw new Error('Das Zeichen ' + sign + ' passt nicht in die Datei.');
        return byte;
    }));
}

function isControl(sign) {
    const code = sign.codePointAt(0);
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

/// A typed text as the file can hold it: an accent written apart joins its letter, controls are blanks, what has no byte
/// is left out and named.
function typeable(text) {
    const left = new Set();
    let kept = '';
    for (const sign of text.normalize('NFC')) {
        if (isControl(sign)) kept += ' ';
        else if (byteOf(sign) === undefined) left.add(sign);
        else kept += sign;
    }
    return {text: kept, left: [...left]};
}

/// As the desk keeps a text: an apostrophe is a backtick, no blanks around it.
function deskText(text) {
    return text.trim().replaceAll("'", '`');
}

function fromBase64(text) {
    const signs = atob(text.trim());
    const bytes = new Uint8Array(signs.length);
    for (let i = 0; i < signs.length; ++i) bytes[i] = signs.charCodeAt(i);
    return bytes;
}
