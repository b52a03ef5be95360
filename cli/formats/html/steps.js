// The chosen route in words: as a list on the page, and as text to copy.

function shownRef(component) {
    return named(component.ref, 80, 'ref');
}

// Without what KiCad adds for its own use.
function propertyList(component) {
    const entries = Object.entries(component.properties)
        .filter(([key, value]) => value !== '' && !/^(CompType|Sheetfile|ki_.*)$/.test(key));
    return html('ul', { class: 'properties', 'aria-label': 'Properties' }, ...entries.map(([key, value]) =>
        html('li', {}, html('span', {}, shortened(key, 40) + '='), named(value, 60))));
}

function sideMark(connection, words) {
    return html('span', { class: 'side', title: connectionTitle(connection) },
        `\u25c6 ${words}`, named(connection.text));
}

function connectionTitle(connection) {
    const about = aboutText(componentOf(connection), 2000);
    return `${inFull(connection.text)}: ${about}, pin ${inFull(pinText(connection.pin))}`;
}

function netLine(route, place) {
    const sides = connectionsOf(route).filter((connection) => connection.net === place);
    return html('p', { class: 'net' }, 'net ', named(data.nets[place].name, 300),
        ...sides.map((connection) => sideMark(connection, 'also connects ')));
}

function endStep(word, end, ...lines) {
    const component = componentOf(end);
    const about = `${aboutText(component, 120)}, pin ${shortened(pinText(end.pin), 80)}`;
    const what = html('span', { class: 'what' }, `${word} `, named(end.text, 80, 'ref'), ' ',
        html('span', { class: 'about' }, about));
    return html('li', { class: 'end' }, html('p', {}, what), propertyList(component), ...lines);
}

function filterButton(text, component, prefix, onFilter) {
    const button = html('button', { type: 'button', 'aria-label': `${text} ${shortened(component.ref, 80)}` }, text);
    button.addEventListener('click', () => onFilter(prefix + asWord(component.ref)));
    return button;
}

function switchStep(crossing, isAgain, onFilter, ...lines) {
    const component = componentOf(crossing);
    const [entry, exit] = [crossing.entry, crossing.exit].map((pin) => shortened(pinText(pin), 40));
    const about = `${aboutText(component, 120)}${taskText(crossing)}, pin ${entry} to ${exit}` +
        (isAgain ? ', once more' : '');
    const buttons = onFilter ? [html('span', { class: 'buttons' }, filterButton('Only with', component, '', onFilter),
        filterButton('Without', component, '-', onFilter))] : [];
    const what = html('span', { class: 'what' }, shownRef(component), ' ', html('span', { class: 'about' }, about));
    return html('li', {}, html('p', {}, what, ...buttons), propertyList(component), ...lines);
}

// Where there are routes to filter, onFilter takes a word for the filter.
function stepsOf(route, onFilter) {
    const earlier = new Set();
    const steps = [endStep('From', route.source, netLine(route, route.source.net))];
    for (const crossing of shownCrossingsOf(route)) {
        steps.push(switchStep(crossing, earlier.has(crossing.component), onFilter, netLine(route, crossing.to)));
        earlier.add(crossing.component);
    }
    if (route.crossings.length > mostShown)
        steps.push(html('li', {}, `and ${route.crossings.length - mostShown} more, in the text to copy`));
    return [...steps, endStep('To', route.destination)];
}

// ", set to CH2"; empty for what takes no position and for ways as drawn.
function taskText(crossing) {
    if (data.asDrawn)
        return '';
    const position = crossing.positionText ? ` to ${inFull(crossing.positionText)}` : '';
    const texts = { set: `, set${position}`, rest: ', stays at rest', unknown: ', positions not known' };
    return texts[taskOf(crossing)] ?? '';
}

function shownSetting(crossing) {
    const component = componentOf(crossing);
    const isPlain = isOfType(component, 'relay') || isResistor(component);
    const mark = taskOf(crossing) === 'set' ? shortened(markOf(crossing), 40) : '';
    return [shownRef(component), mark, ...isPlain ? [] : [' (', named(typeOf(component)), ')']];
}

function shownSettings(crossings) {
    const shown = crossings.slice(0, mostShown)
        .flatMap((crossing, i) => [i > 0 ? ', ' : '', ...shownSetting(crossing)]);
    return crossings.length > mostShown ? [...shown, ` and ${crossings.length - mostShown} more`] : shown;
}

// Above the drawing: what has to be set and what must not be, and what else is passed and connected.
function summaryOf(route) {
    const titles = {
        set: kindToSet(route) === 'relays' ? 'Relays to set: ' : 'Switches: ',
        rest: 'to stay at rest: ',
        unknown: 'crossed as drawn, since nobody knows the positions: ',
        none: 'also through ',
    };
    const line = crossingsWith('set', route).length > 0 ? [] : ['Nothing to set'];
    for (const [task, title] of Object.entries(titles)) {
        const crossings = crossingsWith(task, route);
        if (crossings.length > 0)
            line.push(line.length > 0 ? '; ' : '', title, ...shownSettings(crossings));
    }
    const sides = connectionsOf(route).slice(0, mostShown).map((connection) => sideMark(connection, ''));
    return sides.length > 0 ? [...line, html('br'), 'Also connects: ', ...sides] : line;
}

function textOf(place) {
    const route = data.routes[place];
    const lines = [`Route ${place + 1}: ${route.source.text} to ${route.destination.text}, ${switchCount(route)}`];
    const addNet = (net) => {
        lines.push(`   net ${data.nets[net].name}`);
        for (const connection of connectionsOf(route).filter((each) => each.net === net))
            lines.push(`      also connects ${connection.text}`);
    };
    lines.push(route.source.text);
    addNet(route.source.net);
    for (const crossing of crossingsOf(route)) {
        const component = componentOf(crossing);
        const pins = `pin ${pinText(crossing.entry)} to ${pinText(crossing.exit)}`;
        lines.push(`${component.ref}, ${typeOf(component)}${taskText(crossing)}, ${pins}`);
        addNet(crossing.to);
    }
    lines.push(route.destination.text);
    return lines.map(visible).join('\n') + '\n';
}
