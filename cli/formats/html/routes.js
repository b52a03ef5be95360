// The data of the page, and which of its routes a filter lets through.

const data = JSON.parse(byId('data').textContent);

function crossingsOf(route) {
    return route.crossings.map((place) => data.crossings[place]);
}

// Routes may have any number of switches; people look at the first ones.
const mostShown = 300;

function shownCrossingsOf(route) {
    return crossingsOf({ crossings: route.crossings.slice(0, mostShown) });
}

function connectionsOf(route) {
    return route.connections.map((place) => data.connections[place]);
}

function componentOf(place) {
    return data.components[place.component];
}

function typeOf(component) {
    return component.properties.CompType ?? '';
}

function isOfType(component, type) {
    return typeOf(component).toLowerCase() === type;
}

function isResistor(component) {
    return isOfType(component, 'resistor');
}

// What a route asks of what it crosses: 'set', 'rest', 'unknown' or 'none'. As drawn, all but resistors is set.
function taskOf(crossing) {
    if (data.asDrawn)
        return isResistor(componentOf(crossing)) ? 'none' : 'set';
    if (crossing.position === null)
        return crossing.isUnknown ? 'unknown' : 'none';
    return crossing.position === 0 ? 'rest' : 'set';
}

// Each component once, with the crossing that tells its position.
function crossingsWith(task, route) {
    const found = crossingsOf(route).filter((crossing) => taskOf(crossing) === task);
    return [...new Map(found.map((crossing) => [crossing.component, crossing])).values()];
}

// Behind a reference, what setting it does not tell.
function markOf(crossing) {
    const marks = { set: crossing.positionText ? `=${crossing.positionText}` : '', rest: ' (rest)', unknown: ' (?)' };
    return marks[taskOf(crossing)] ?? '';
}

function kindToSet(route) {
    return crossingsWith('set', route).every((crossing) => isOfType(componentOf(crossing), 'relay')) ? 'relays'
        : 'switches';
}

// "Relay reed 1 A"
function aboutText(component, longest) {
    return shortened([typeOf(component), component.value].filter((text) => text !== '').join(' '), longest);
}

function pinText(pin) {
    return pin.name && pin.name !== '~' && pin.name !== pin.number ? `${pin.number} (${pin.name})` : pin.number;
}

// The boards from one to the other along the joints of the net, with the joints between each two.
function hops(net, from, to) {
    const before = new Map([[from, null]]);
    for (const [board] of before) {
        for (const joint of net.joints) {
            const plugs = joint.components.map((place) => data.components[place]);
            const here = plugs.find((plug) => boardOf(plug) === board);
            for (const there of here ? plugs : []) {
                if (!before.has(boardOf(there)))
                    before.set(boardOf(there), { from: board, to: boardOf(there), plugs: [here, there], joint });
            }
        }
    }
    if (!before.has(to))
        return [{ from, to, plugs: [], joint: null }];
    const way = [];
    for (let hop = before.get(to); hop; hop = before.get(hop.from))
        way.unshift(hop);
    return way;
}

// "K1 -R3 "K 7"": a word for each component, which may hold stars; those after a minus must not be on a route.
function wordsOf(filterText) {
    return Array.from(filterText.matchAll(/(-?)(?:"([^"]*)"?|(\S+))/g), ([, minus, quoted, plain]) => {
        const text = quoted ?? plain;
        return { isWanted: minus === '', text, pieces: withoutCase(text).split('*') };
    }).filter(({ text }) => text !== '' && text !== '-');
}

// Each character on its own, so that no character changes with those beside it.
function withoutCase(text) {
    return Array.from(text, (c) => c.toUpperCase().toLowerCase()).join('');
}

// The pieces are what stands between the stars; it is enough to look for the first place of each, so that no number of
// stars takes long.
function fits(pieces, text) {
    const [first, last] = [pieces[0], pieces.at(-1)];
    if (pieces.length === 1)
        return text === first;
    const end = text.length - last.length;
    if (first.length > end || !text.startsWith(first) || !text.endsWith(last))
        return false;
    let place = first.length;
    for (const piece of pieces.slice(1, -1)) {
        const found = text.indexOf(piece, place);
        if (found < 0)
            return false;
        place = found + piece.length;
    }
    return place <= end;
}

function asWord(ref) {
    if (ref.length > 200)
        return asWord(ref.slice(0, 200)) + '*';
    return /[\s"]/.test(ref) || ref.startsWith('-') ? `"${ref.replaceAll('"', '*')}"` : ref;
}

const refsWithoutCase = data.components.map(({ ref }) => withoutCase(ref));

// The places of the routes that pass. No number of switches chosen means any.
function filtered({ text, switches, alone }) {
    const words = wordsOf(text).map(({ isWanted, pieces }) => ({
        isWanted,
        isFitting: refsWithoutCase.map((ref) => fits(pieces, ref) || fits(pieces, withoutBoard(ref))),
    }));
    const passes = (route) =>
        (switches.size === 0 || switches.has(route.crossings.length)) &&
        (!alone || route.connections.length === 0) &&
        words.every(({ isWanted, isFitting }) =>
            route.crossings.some((place) => isFitting[data.crossings[place].component]) === isWanted);
    const places = [];
    data.routes.forEach((route, place) => {
        if (passes(route))
            places.push(place);
    });
    return places;
}
