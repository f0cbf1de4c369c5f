// The code of a sow card: it holds her number.

const LookPause = 150;  // milliseconds between two looks

async function readCode() {
    const why = await cameraMissing();
    if (why) return tell(why + '\nDie Kamera-App des Telefons liest den Code auch: Sie zeigt die Nummer der Sau an. Tippen Sie sie ' +
        'hier ins Suchfeld.');
    let stream;
    try {
        stream = await navigator.mediaDevices.getUserMedia({video: {facingMode: 'environment'}, audio: false});
    } catch (error) {
        return tell(error.name === 'NotAllowedError'
            ? 'Der Browser darf die Kamera nicht benutzen. Erlauben Sie es in den Einstellungen der Seite, oder tippen Sie die Nummer.'
            : 'Die Kamera antwortet nicht. Vielleicht benutzt sie gerade eine andere App. Tippen Sie die Nummer.');
    }
    const number = await look(stream);
    stream.getTracks().forEach((track) => track.stop());
    if (number === null) return;
    page.query = number;
    if (page.herd.byNumber.has(number)) location.hash = 'tier/' + encodeURIComponent(number);
    else {
        toast(`${number} steht nicht in den Daten.`);
        showView();
    }
}

/// Why this browser reads no codes; '' where it does.
async function cameraMissing() {
    if (!navigator.mediaDevices?.getUserMedia) return 'Dieser Browser gibt der Seite keine Kamera.';
    if (!('BarcodeDetector' in window)) return 'Dieser Browser kann keine QR-Codes lesen.';
    const formats = await BarcodeDetector.getSupportedFormats().catch(() => []);
    return formats.includes('qr_code') ? '' : 'Dieser Browser kann keine QR-Codes lesen.';
}

/// Shows the camera until a code is seen; null where the user has had enough.
function look(stream) {
    return new Promise((answer) => {
        const detector = new BarcodeDetector({formats: ['qr_code']});
        const video = el('video', {autoplay: true, muted: true, playsInline: true, srcObject: stream});
        const box = el('dialog', {className: 'kamera'}, video, el('p', {}, 'Den Code der Sauenkarte ins Bild halten.'));
        const done = (text) => {
            clearInterval(timer);
            box.remove();
            answer(text === null ? null : deskText(text));
        };
        const timer = setInterval(async () => {
            const codes = await detector.detect(video).catch(() => []);
            if (codes.length > 0) done(codes[0].rawValue);
        }, LookPause);
        box.addEventListener('cancel', () => done(null));
        box.append(el('div', {className: 'knoepfe'}, button('Abbrechen', () => done(null))));
        document.body.append(box);
        box.showModal();
    });
}
