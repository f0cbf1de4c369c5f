// The controls of an entry: each shows a field of a booking, takes only what the file can hold, and shows what is wrong with
// it where it stands.

/// {element, read(), write(text), wrong(text), note(text)} for a field. Of the context `left` is called when the user has left
/// it, `typed` at each key.
function control(field, context) {
    const input = makeInput(field, context);
    const fault = el('p', {className: 'falsch', hidden: true, role: 'alert'});
    const note = el('p', {className: 'merke', hidden: true, role: 'status'});
    const show = (place, text) => {
        place.textContent = text;
        place.hidden = !text;
    };
    const head = el('label', {htmlFor: input.element.id, id: 'l-' + field.name}, field.label);
    const element = el('div', {className: 'feld', 'data-feld': field.name}, head, input.shown ?? input.element, note, fault);
    return {
        field,
        element,
        read: input.read,
        write: input.write,
        wrong(text) {
            show(fault, text);
            input.element.setAttribute('aria-invalid', text ? 'true' : 'false');
            if (text) input.element.closest('details')?.setAttribute('open', '');
        },
        note: (text) => show(note, text),
        focus: () => input.element.focus()
    };
}

function makeInput(field, context) {
    if (field.type === 'choice') return choiceInput(field, context);
    const element = el('input', {id: 'f-' + field.name, name: String(field.name), autocomplete: 'off', type: 'text',
        enterKeyHint: 'next'});
    const plain = {element, read: () => element.value.trim(), write: (text) => { element.value = text; }};
    element.addEventListener('change', () => context.left(field.name));
    if (field.type === 'day') {
        Object.assign(element, {type: 'date', min: '0100-01-01', max: '9999-12-31'});
        element.addEventListener('input', context.typed);
        return plain;
    }
    if (field.type === 'text') return textInput(field, element, plain, context);
    element.addEventListener('input', context.typed);
    element.addEventListener('focus', () => element.select());
    if (field.type === 'count') return countInput(field, element, plain, context);
    element.inputMode = 'decimal';
    element.addEventListener('change', () => {
        const number = hundredths(element.value);
        if (number !== null) element.value = decimalText(number);
    });
    return plain;
}

/// A whole number with arrows that a thumb hits.
function countInput(field, element, plain, context) {
    element.inputMode = field.least < 0 ? 'text' : 'numeric';
    const step = (by) => {
        const number = countOf(element.value) + by;
        element.value = Math.min(Math.max(number, field.least), field.most);
        context.typed();
        context.left(field.name);
    };
    const arrow = (text, by, words) => {
        const arrowButton = button(text, () => step(by), 'pfeil');
        arrowButton.setAttribute('aria-label', field.label + ' ' + words);
        return arrowButton;
    };
    return {...plain, shown: el('div', {className: 'zahl'}, arrow('−', -1, 'weniger'), element, arrow('+', 1, 'mehr'))};
}

/// A few fixed values, as buttons of which one is pressed.
function choiceInput(field, context) {
    const row = el('div', {className: 'wahl', role: 'radiogroup', id: 'f-' + field.name, tabIndex: -1,
        'aria-labelledby': 'l-' + field.name});
    const show = (key) => {
        for (const item of row.children) item.setAttribute('aria-checked', String(item.dataset.wert === key));
    };
    for (const [key, caption] of field.items) {
        const item = button(caption, () => {
            show(key);
            context.typed();
            context.left(field.name);
        });
        item.dataset.wert = key;
        item.setAttribute('role', 'radio');
        row.append(item);
    }
    show(field.items[0][0]);
    return {
        element: row,
        read: () => [...row.children].find((item) => item.getAttribute('aria-checked') === 'true')?.dataset.wert ?? '',
        write: (text) => {
            if (field.items.some(([key]) => key === text)) show(text);
        }
    };
}

/// A text with the values in use below it while it is typed.
function textInput(field, element, plain, context) {
    element.maxLength = field.width;
    const most = 6;
    const list = el('div', {className: 'vorschlag', hidden: true});
    const offer = () => {
        const sought = element.value.trim().toLowerCase();
        const begins = (text) => text.toLowerCase().startsWith(sought);
        const fitting = context.choices(field).filter((text) => text.toLowerCase().includes(sought) && text !== element.value);
        fitting.sort((a, b) => Number(begins(b)) - Number(begins(a)));
        list.replaceChildren(...fitting.slice(0, most).map((text) => button(text, () => {
            element.value = text.slice(0, field.width);
            list.hidden = true;
            context.typed();
            context.left(field.name);
        })));
        list.hidden = fitting.length === 0;
    };
    element.addEventListener('focus', offer);
    element.addEventListener('blur', () => { list.hidden = true; });
    list.addEventListener('mousedown', (event) => event.preventDefault());
    element.addEventListener('input', (event) => {
        if (event.isComposing) return;
        const {text, left} = typeable(element.value);
        if (text !== element.value) element.value = text;
        context.note(field.name, left.length === 0 ? '' :
            `Weggelassen: ${left.join(' ')} – das kann KOBEN nicht speichern.`);
        offer();
        context.typed();
    });
    element.addEventListener('compositionend', () => element.dispatchEvent(new Event('input')));
    const shown = el('div', {className: 'mitvorschlag'}, element, list);
    return {...plain, shown, read: () => deskText(typeable(element.value).text.slice(0, field.width))};
}
