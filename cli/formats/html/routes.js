// What the data of the page says of routes. A route knows its ends: routes of one page may have others.

// With what the search kept out of.
function limitsText() {
    const enumeration = (names) => names.map((name) => shortened(name, 60)).join(', ');
    const { components, nets } = data.excluded;
    return [` Limits: --max-switches ${data.limits.switches}, --max-connections ${data.limits.connections}.`,
        components.length > 0 ? ` Without ${enumeration(components)}.` : '',
        nets.length > 0 ? ` Without the nets ${enumeration(nets)}.` : ''];
}

function crossingsOf(route) {
    return route.crossings.map((place) => data.crossings[place]);
}

function shownCrossingsOf(route) {
    return crossingsOf({ crossings: route.crossings.slice(0, mostShown) });
}

function connectionsOf(route) {
    return route.connections.map((place) => data.pins[place]);
}

function switchCount(route) {
    return route.crossings.length === 0 ? 'no switch' : counted(route.crossings.length, 'switch', 'switches');
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

function pinText(pin) {
    return pin.name && pin.name !== '~' && pin.name !== pin.number ? `${pin.number} (${pin.name})` : pin.number;
}

function describeEnd(end) {
    const component = componentOf(end);
    return `${aboutText(component, 2000)}, pin ${inFull(pinText(end.pin))}, ` +
        Object.entries(component.properties).map(([key, value]) => `${inFull(key)}=${inFull(value)}`).join(', ');
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
