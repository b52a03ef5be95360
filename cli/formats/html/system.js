// The boards of a system with the relays that are set, and sets of pins by numbers and colours: data.pins are pins.

const colours = 8; // as many as the style sheet has

let chosenSet = -1;

function refOf(pin) {
    return componentOf(data.pins[pin]).ref;
}

// The elements with ", " between them; of very many the first ones.
function enumerated(elements) {
    const shown = elements.slice(0, mostShown).flatMap((element, i) => i > 0 ? [', ', element] : [element]);
    return elements.length > mostShown ? [...shown, ` and ${elements.length - mostShown} more`] : shown;
}

function pinNames(pins) {
    return enumerated(pins.map((pin) => named(data.pins[pin].text)));
}

function refs(places) {
    return enumerated(places.map((place) => named(data.components[place].ref)));
}

function relaysText(step) {
    return step.relays.length === 0 ? ['All relays at rest']
        : ['Relays set: ', ...enumerated(step.relays.map(({ setting }) => named(setting)))];
}

// A colour alone would not tell sets apart: each has its number too.
function coloured(element, set) {
    element.style.background = `var(--set-${set % colours})`;
    return element;
}

function setMark(set) {
    return coloured(html('span', { class: 'set', 'data-set': set, title: `tied together: ${set + 1}` },
        String(set + 1)), set);
}

function setButton(set) {
    const button = coloured(html('button', { type: 'button', class: 'set', 'aria-pressed': 'false', 'data-set': set,
        'aria-label': `Show ${set + 1} alone` }, String(set + 1)), set);
    button.addEventListener('click', () => showSet(chosenSet === set ? -1 : set));
    return button;
}

// The others fade; -1 shows all.
function showSet(set) {
    chosenSet = set;
    for (const mark of document.querySelectorAll('#shown [data-set]')) {
        const isOther = set >= 0 && Number(mark.dataset.set) !== set;
        (mark.closest('li') ?? mark).classList.toggle('faded', isOther);
        if (mark.matches('button'))
            mark.setAttribute('aria-pressed', Number(mark.dataset.set) === set);
    }
}

// Behind the reference, which the card has as its title.
function pinRow(pin, setOf) {
    const name = data.pins[pin].text.slice(refOf(pin).length + 1);
    return html('li', {}, ...setOf.has(pin) ? [setMark(setOf.get(pin)), ' '] : [], named(name));
}

function card(component, pins, setOf) {
    const tied = pins.filter((pin) => setOf.has(pin));
    const others = pins.filter((pin) => !setOf.has(pin));
    const box = html('div', { class: 'card' }, html('strong', {}, named(component.ref)),
        html('span', { class: 'about' }, aboutText(component, 120)),
        html('ul', {}, ...tied.map((pin) => pinRow(pin, setOf))));
    if (others.length > 0)
        box.append(html('details', {}, html('summary', {}, counted(others.length, 'other pin', 'other pins')),
            html('ul', {}, ...others.slice(0, mostShown).map((pin) => pinRow(pin, setOf)))));
    return box;
}

function relayChip({ setting, sets }) {
    return html('span', { class: 'chip' }, named(setting), ...sets.flatMap((set) => [' ', setMark(set)]));
}

// With cards of the components that have some of these pins, and the relays of the step.
function frame(board, pins, step, setOf) {
    const isHere = (place) => boardOf(data.components[place]) === board;
    const pinsOf = new Map(); // by component
    for (const pin of pins) {
        const { component } = data.pins[pin];
        if (isHere(component))
            pinsOf.set(component, [...pinsOf.get(component) ?? [], pin]);
    }
    const cards = Array.from(pinsOf, ([place, itsPins]) => card(data.components[place], itsPins, setOf));
    const relays = step.relays.filter(({ component }) => isHere(component));
    const chips = relays.slice(0, mostShown).map(relayChip);
    if (relays.length > mostShown)
        chips.push(`and ${relays.length - mostShown} more`);
    const element = html('section', { class: 'frame', 'aria-label': `Board ${board}` },
        html('h3', {}, `#${board} ${shortened(boardName(board), 60)}`),
        html('div', { class: 'cards' }, ...cards), html('div', { class: 'switches' }, ...chips));
    element.style.background = `var(--${boardColour(board)})`;
    element.style.borderColor = `var(--board-line-${(board - 1) % 10})`;
    element.hidden = cards.length + chips.length === 0;
    return element;
}
