// The page of states: steps to choose from, and what the chosen one connects.

const data = JSON.parse(byId('data').textContent);
const mostShown = 300;
const colours = 8; // as many as the style sheet has

let shownSteps = []; // places in data.steps
let chosenStep = 0;
let chosenSet = -1; // of the step

function componentOf(pin) {
    return data.components[data.pins[pin].component];
}

function named(text, longest = 80) {
    return html('bdi', { title: inFull(text) }, shortened(text, longest));
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

function setsText(sets) {
    return sets.flatMap((pins, i) => i > 0 ? [html('strong', {}, ' | '), ...pinNames(pins)] : pinNames(pins));
}

function wrongCount(step) {
    return (step.missing ?? []).length + (step.shorts ?? []).length;
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
    const { text } = data.pins[pin];
    const name = text.slice(componentOf(pin).ref.length + 1);
    return html('li', {}, ...setOf.has(pin) ? [setMark(setOf.get(pin)), ' '] : [], named(name));
}

function aboutText(component) {
    return [component.properties.CompType ?? '', component.value].filter((text) => text !== '').join(' ');
}

function card(component, pins, setOf) {
    const tied = pins.filter((pin) => setOf.has(pin));
    const others = pins.filter((pin) => !setOf.has(pin));
    const box = html('div', { class: 'card' }, html('strong', {}, named(component.ref)),
        html('span', { class: 'about' }, shortened(aboutText(component), 120)),
        html('ul', {}, ...tied.map((pin) => pinRow(pin, setOf))));
    if (others.length > 0)
        box.append(html('details', {}, html('summary', {}, counted(others.length, 'other pin', 'other pins')),
            html('ul', {}, ...others.slice(0, mostShown).map((pin) => pinRow(pin, setOf)))));
    return box;
}

function relayChip({ setting, sets }) {
    return html('span', { class: 'chip' }, named(setting), ...sets.flatMap((set) => [' ', setMark(set)]));
}

// What was asked for of pins that are no interface's has no card.
const pinsOfInterfaces = new Map(); // by component
for (const pin of data.interfacePins) {
    const place = data.pins[pin].component;
    pinsOfInterfaces.set(place, [...pinsOfInterfaces.get(place) ?? [], pin]);
}

function frame(board, step, setOf) {
    const isHere = (place) => boardOf(data.components[place]) === board;
    const cards = Array.from(pinsOfInterfaces).filter(([place]) => isHere(place))
        .map(([place, pins]) => card(data.components[place], pins, setOf));
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

function problems(step) {
    const line = (word, ...what) => html('li', {}, html('span', { class: 'wrong' }, word), ' ', ...what);
    const between = ([from, to]) => [named(data.pins[from].text), ' to ', named(data.pins[to].text)];
    return [
        ...step.missing.map((pins) => line('missing', ...between(pins))),
        ...step.shorts.map(({ sets, relays }) => line('short', ...setsText(sets),
            ...relays.length > 0 ? [' by ', ...refs(relays)] : [])),
        ...step.through.map(({ pins, passives }) => html('li', {}, ...between(pins), ' through ', ...refs(passives))),
        ...wrongCount(step) === 0 ? [html('li', {}, `As expected: ${counted(step.expected, 'connection',
            'connections')}, and no short`)] : [],
    ];
}

function showStep(place) {
    chosenStep = place;
    const step = data.steps[place];
    const setOf = new Map(step.connected.flatMap((pins, set) => pins.map((pin) => [pin, set])));
    byId('title').replaceChildren('Step ', named(step.name, 200));
    byId('relays').replaceChildren(...step.relays.length === 0 ? ['All relays at rest']
        : ['Relays set: ', ...enumerated(step.relays.map(({ setting }) => named(setting)))]);
    byId('problems').replaceChildren(...step.missing ? problems(step) : []);
    byId('system').replaceChildren(...data.boards.map((_, i) => frame(i + 1, step, setOf)));
    byId('sets').replaceChildren(...step.connected.length === 0 ? [html('li', {}, 'Nothing')]
        : step.connected.map((pins, set) => html('li', {}, setButton(set), ' ', ...pinNames(pins))));
    byId('couplings-title').hidden = step.couplings.length === 0;
    byId('couplings').replaceChildren(...step.couplings.map(({ sets, passives }) =>
        html('li', {}, ...setsText(sets), ' by ', ...refs(passives))));
    showSet(-1);
    for (const row of byId('list').children)
        row.setAttribute('aria-selected', Number(row.dataset.step) === place);
    const row = byId(`step-${place}`);
    if (row) {
        byId('list').setAttribute('aria-activedescendant', row.id);
        row.scrollIntoView({ block: 'nearest' });
    }
    history.replaceState(null, '', `#step=${place + 1}`);
}

function stepRow(place) {
    const step = data.steps[place];
    const row = html('div', { id: `step-${place}`, role: 'option', 'data-step': place },
        html('span', { class: 'step-name' }, named(step.name, 100)),
        html('span', { class: 'about' }, counted(step.relays.length, 'relay', 'relays')));
    if (wrongCount(step) > 0)
        row.append(html('span', { class: 'wrong' }, `\u2715 ${wrongCount(step)}`));
    row.addEventListener('mousedown', () => showStep(place));
    return row;
}

function listSteps() {
    shownSteps = data.steps.map((_, place) => place)
        .filter((place) => !byId('wrong').checked || wrongCount(data.steps[place]) > 0);
    byId('list').replaceChildren(...shownSteps.map(stepRow));
    byId('count').textContent = counted(shownSteps.length, 'step', 'steps');
    if (shownSteps.length > 0)
        showStep(shownSteps.includes(chosenStep) ? chosenStep : shownSteps[0]);
}

function moveBy(distance) {
    const place = Math.min(Math.max(shownSteps.indexOf(chosenStep) + distance, 0), shownSteps.length - 1);
    if (shownSteps.length > 0)
        showStep(shownSteps[place]);
}

function onKey(event) {
    const distances = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -Infinity, End: Infinity };
    const distance = distances[event.key];
    if (distance === undefined || event.ctrlKey || event.altKey || event.metaKey)
        return;
    event.preventDefault();
    moveBy(distance);
}

function showHeader() {
    const wrong = data.steps.filter((step) => wrongCount(step) > 0).length;
    const isCompared = data.steps.some((step) => step.missing);
    byId('summary').append(counted(data.steps.length, 'step', 'steps'),
        isCompared ? `; ${wrong === 0 ? 'all as expected' : `${wrong} not as expected`}` : '');
    showBoards();
    byId('wrong-label').hidden = !isCompared;
    if (data.unknown.length > 0)
        byId('unknown').append('What these relays connect is not known: ', ...refs(data.unknown));
}

function readAddress() {
    const place = Number(new URLSearchParams(location.hash.slice(1)).get('step')) - 1;
    chosenStep = data.steps[place] ? place : 0;
    listSteps();
}

addTheme();
showHeader();
byId('print').addEventListener('click', () => print());
byId('previous').addEventListener('click', () => moveBy(-1));
byId('next').addEventListener('click', () => moveBy(1));
byId('wrong').addEventListener('change', listSteps);
byId('list').addEventListener('keydown', onKey);
addEventListener('hashchange', readAddress);
readAddress();
byId('list').focus({ preventScroll: true });
