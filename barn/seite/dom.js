// Pieces of the page. Texts are always set as texts, never as markup.

function el(tag, props = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, content] of Object.entries(props)) {
        if (name.startsWith('on')) element.addEventListener(name.slice(2), content);
        else if (name in element && name !== 'list') element[name] = content;
        else if (content !== false && content !== undefined) element.setAttribute(name, content === true ? '' : content);
    }
    element.append(...children.flat().filter((child) => child !== null && child !== undefined && child !== ''));
    return element;
}

function byId(id) {
    return document.getElementById(id);
}

function button(text, onclick, className = '') {
    return el('button', {type: 'button', className, onclick}, text);
}

function link(hash, className, ...children) {
    return el('a', {href: hash, className}, ...children);
}

/// A message at the bottom that goes by itself.
function toast(text) {
    const place = byId('meldung');
    place.textContent = text;
    place.hidden = false;
    clearTimeout(toast.timer);
    toast.timer = setTimeout(() => { place.hidden = true; }, 4000);
}

/// Asks; the answer is the position of the button, the first one where the question is closed otherwise.
function ask(text, buttons, primary = buttons.length - 1) {
    return new Promise((answer) => {
        const box = el('dialog', {}, ...String(text).split('\n').map((line) => el('p', {}, line)));
        const done = (choice) => {
            if (box.open) box.close();
            box.remove();
            answer(choice);
        };
        const row = el('div', {className: 'knoepfe'});
        buttons.forEach((caption, at) =>
            row.append(button(caption, () => done(at), at === primary ? 'haupt' : '')));
        box.addEventListener('cancel', () => done(0));
        box.append(row);
        document.body.append(box);
        box.showModal();
    });
}

function tell(text) {
    return ask(text, ['Verstanden']);
}

/// Signs that stand beside words, drawn in the text's colour.
const Signs = {
    heute: 'M4 5h16v15H4zM4 9h16M8 3v4M16 3v4M8 14l3 3 5-5',
    herde: 'M4 6h16M4 12h16M4 18h16',
    buchen: 'M12 4v16M4 12h16',
    uebergabe: 'M12 15V3M7 8l5-5 5 5M4 15v5h16v-5',
    zurueck: 'M15 4l-8 8 8 8',
    kamera: 'M4 8V4h4M16 4h4v4M20 16v4h-4M8 20H4v-4M8 8h3v3H8zM13 8h3v3h-3zM8 13h3v3H8zM14 14h2v2h-2z'
};

function sign(name) {
    const space = 'http://www.w3.org/2000/svg';
    const picture = document.createElementNS(space, 'svg');
    picture.setAttribute('viewBox', '0 0 24 24');
    picture.setAttribute('aria-hidden', 'true');
    const path = document.createElementNS(space, 'path');
    path.setAttribute('d', Signs[name]);
    picture.append(path);
    return picture;
}
