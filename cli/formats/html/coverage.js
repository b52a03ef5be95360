// Ties the page of coverage together: filters, the chosen pair or component, the address.

const mostListed = 1000;

const grid = new CoverageGrid(byId('grid'), openPair);
const filters = { sourceText: '', dutText: '', switches: new Set(), kinds: new Set(), lost: null };
let shownCells; // what filteredCells() has told
let openedPair = null; // {source, dut}
let failing = -1; // the chosen component, a place in data.critical
let addressTimer;

function showHeader() {
    const pairs = data.sources.length * data.duts.length;
    const reached = pairs - (countOfSwitches.get(null) ?? 0);
    byId('summary').append(`${reached.toLocaleString('en')} of ${counted(pairs, 'pair', 'pairs')} of source and DUT pins ` +
        `have a route${data.asDrawn ? ' as drawn' : ''}.`, ...limitsText());
    showBoards();
}

// A button of a group, each of which lets cells through; none pressed lets all.
function addToggle(group, chosen, value, label, ...content) {
    const button = html('button', { type: 'button', 'aria-pressed': 'false', 'aria-label': label }, ...content);
    button.addEventListener('click', () => {
        if (!chosen.delete(value))
            chosen.add(value);
        applyFilters();
    });
    group.append(button);
    return () => button.setAttribute('aria-pressed', chosen.has(value));
}

function addToggles() {
    byId('switches').append('Switches ');
    byId('kinds').hidden = !data.compared;
    byId('kinds').append('Compared ');
    return [
        ...Array.from(countOfSwitches, ([switches, pairs]) => addToggle(byId('switches'), filters.switches, switches,
            `${switchesText(switches)}: ${counted(pairs, 'pair', 'pairs')}`,
            html('span', { class: `sample ${heatClass(switches)}` }, String(switches ?? 'none')),
            html('small', {}, pairs.toLocaleString('en')))),
        ...Object.entries(kindMarks).map(([kind, mark]) => addToggle(byId('kinds'), filters.kinds, kind,
            `${kind}: ${counted(comparedPairs(kind).length, 'pair', 'pairs')}`, `${mark} ${kind}`,
            html('small', {}, comparedPairs(kind).length.toLocaleString('en')))),
    ];
}

const showToggles = addToggles();

function applyFilters() {
    showToggles.forEach((show) => show());
    byId('source-filter').value = filters.sourceText;
    byId('dut-filter').value = filters.dutText;
    filters.lost = failing < 0 ? null : new Set(data.critical[failing].lost);
    shownCells = filteredCells(filters);
    const { rows, columns, cells } = shownCells;
    const all = data.sources.length * data.duts.length;
    byId('count').textContent = cells === 0 ? 'No pair passes these filters'
        : cells === all ? counted(all, 'pair', 'pairs')
            : `${cells.toLocaleString('en')} of ${counted(all, 'pair', 'pairs')}, ` +
                `${rows.length.toLocaleString('en')} x ${columns.length.toLocaleString('en')} pins`;
    byId('clear').hidden = cells === all;
    grid.show(shownCells);
    writeAddress();
}

function clearFilters() {
    Object.assign(filters, { sourceText: '', dutText: '' });
    filters.switches.clear();
    filters.kinds.clear();
    chooseCritical(-1);
    byId('grid').focus();
}

// What the panel below the matrix shows.
function showPanel(title, facts, route) {
    byId('title').replaceChildren(...title);
    byId('facts').replaceChildren(...facts);
    byId('close').hidden = !openedPair && failing < 0;
    byId('route').hidden = !route;
    if (route) {
        byId('route-summary').replaceChildren(...summaryOf(route));
        byId('steps').replaceChildren(...stepsOf(route));
        draw();
    }
    byId('shown').scrollTop = 0;
    writeAddress();
}

function draw() {
    const route = openedPair && routeOf(openedPair.source, openedPair.dut);
    if (route)
        byId('drawing').replaceChildren(drawRoute(route, byId('drawing').clientWidth));
}

function line(...content) {
    return html('p', {}, ...content);
}

// All of it, unless it is very long; then it says how much more there is.
function longList(items, element) {
    const rows = items.slice(0, mostListed).map((item) => html('li', {}, ...element(item)));
    if (items.length > mostListed)
        rows.push(html('li', {}, `and ${(items.length - mostListed).toLocaleString('en')} more`));
    return html('ul', {}, ...rows);
}

function folded(title, items, element) {
    return items.length === 0 ? [] : [html('details', {}, html('summary', {}, title), longList(items, element))];
}

function pairButton(source, dut) {
    const button = html('button', { type: 'button', class: 'pair' }, named(data.sources[source].text), ' to ',
        named(data.duts[dut].text));
    button.addEventListener('click', () => {
        if (!grid.lineOf.has(source) || !grid.columnOf.has(dut))
            clearFilters();
        grid.moveTo(source, dut);
        openPair({ source, dut });
    });
    return button;
}

function cellButton(cell) {
    return pairButton(Math.floor(cell / data.duts.length), cell % data.duts.length);
}

function differenceLine(pair) {
    const cell = cellOfPair(pair);
    const what = cell === undefined ? [named(pair.source), ' to ', named(pair.dut), ' (not in both systems)']
        : [cellButton(cell)];
    return [...what, `: ${switchesText(pair.before)} before, ${switchesText(pair.now)} now`];
}

function comparison() {
    if (!data.compared)
        return [];
    const parts = Object.keys(kindMarks).map((kind) => `${comparedPairs(kind).length.toLocaleString('en')} ${kind}`);
    return [line('Compared with ', named(data.compared.file, 200), `: ${parts.join(', ')}`),
        ...Object.entries(kindMarks).flatMap(([kind, mark]) =>
            folded(`${mark} ${counted(comparedPairs(kind).length, 'pair', 'pairs')} ${kind}`, comparedPairs(kind),
                differenceLine))];
}

function showOverview() {
    openedPair = null;
    const counts = [...countOfSwitches].filter(([switches]) => switches !== null)
        .map(([switches, pairs]) => `${pairs.toLocaleString('en')} over ${counted(switches, 'switch', 'switches')}`);
    const ofEnds = (ends, isReached) => ends.filter((_, place) => !isReached(place));
    const lonelyDuts = ofEnds(data.duts, (dut) => data.switches.some((row) => row[dut] !== null));
    const lonelySources = ofEnds(data.sources, (source) => data.switches[source].some((each) => each !== null));
    const pinLine = (end) => [named(end.text)];
    showPanel(['Choose a cell to see its first route'], [
        ...counts.length > 0 ? [line(`Pairs with a route: ${counts.join(', ')}`)] : [line('No pair has a route')],
        ...comparison(),
        ...folded(`First routes cross relays as drawn whose positions are not known: ${data.unknownRelays.length}`,
            data.unknownRelays, (ref) => [named(ref)]),
        ...folded(`DUT pins that no source reaches: ${lonelyDuts.length}`, lonelyDuts, pinLine),
        ...folded(`Source pins that reach no DUT: ${lonelySources.length}`, lonelySources, pinLine),
    ]);
}

function routeCount({ count }) {
    return count >= data.mostRoutes ? `The first of ${count} or more routes`
        : count === 1 ? 'The only route' : `The first of ${counted(count, 'route', 'routes')}`;
}

function criticalFor(cell) {
    const critical = (data.critical ?? []).filter(({ lost }) => lost.includes(cell));
    return critical.length === 0 ? [] : [line('No route without: ', ...critical.flatMap((each, i) =>
        [i > 0 ? ', ' : '', named(componentOf(each).ref)]))];
}

function openPair({ source, dut }) {
    openedPair = { source, dut };
    const route = routeOf(source, dut);
    const before = differenceText(source, dut).slice(2);
    showPanel([named(data.sources[source].text), ' \u2192 ', named(data.duts[dut].text),
        `: ${switchesText(switchesOf(source, dut))}`], [
        line(route ? routeCount(route) : 'No route within the limits; velk routes tells why'),
        ...before ? [line(before)] : [],
        ...criticalFor(cellAt(source, dut)),
    ], route);
}

function showCritical() {
    openedPair = null;
    const { lost } = data.critical[failing];
    showPanel(['Without ', named(componentOf(data.critical[failing]).ref), ': ',
        `${counted(lost.length, 'pair', 'pairs')} lost`], [longList(lost, (cell) => [cellButton(cell)])]);
}

// -1 is none.
function chooseCritical(place) {
    failing = place;
    for (const row of byId('list').children)
        row.setAttribute('aria-selected', Number(row.dataset.critical) === place);
    const row = byId(`critical-${place}`);
    row?.scrollIntoView({ block: 'nearest' });
    byId('list').setAttribute('aria-activedescendant', row ? row.id : '');
    applyFilters();
    if (place < 0)
        showOverview();
    else
        showCritical();
}

function criticalRow(critical, place) {
    const component = componentOf(critical);
    const row = html('div', { id: `critical-${place}`, role: 'option', 'data-critical': place,
        'aria-selected': 'false' },
    html('span', { class: 'step-name' }, shownRef(component), ' ',
        html('span', { class: 'about' }, aboutText(component, 60))),
    html('span', { class: 'about' }, critical.lost.length.toLocaleString('en')));
    row.addEventListener('click', () => chooseCritical(failing === place ? -1 : place));
    return row;
}

function addCritical() {
    const critical = data.critical ?? [];
    const shown = critical.slice(0, mostListed);
    byId('critical-title').hidden = byId('list').hidden = !data.critical;
    byId('list').append(...shown.map(criticalRow));
    if (critical.length > shown.length)
        byId('list').append(line(`and ${(critical.length - shown.length).toLocaleString('en')} more, for fewer pairs`));
    if (critical.length === 0)
        byId('list').append(line('No component: no pair is lost by a single one'));
    byId('list').addEventListener('keydown', (event) => {
        const distances = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -Infinity, End: Infinity };
        const distance = distances[event.key];
        if (distance === undefined || event.ctrlKey || event.altKey || event.metaKey || shown.length === 0)
            return;
        event.preventDefault();
        chooseCritical(Math.min(Math.max(failing + distance, 0), shown.length - 1));
    });
}

// First the pair, then the component.
function close() {
    if (openedPair && failing >= 0)
        showCritical();
    else
        chooseCritical(-1);
}

// A little later, since browsers object to many changes at once.
function writeAddress() {
    clearTimeout(addressTimer);
    addressTimer = setTimeout(() => history.replaceState(null, '', `#${address()}`), 150);
}

function address() {
    const switches = [...filters.switches].map((each) => each ?? 'none').join(' ');
    const members = {
        pair: openedPair ? `${openedPair.source + 1} ${openedPair.dut + 1}` : '', sources: filters.sourceText,
        duts: filters.dutText, switches, compared: [...filters.kinds].join(' '),
        without: failing < 0 ? '' : data.critical[failing].component,
    };
    return new URLSearchParams(Object.entries(members).filter(([, value]) => value !== ''));
}

function readAddress() {
    const parameters = new URLSearchParams(location.hash.slice(1));
    const words = (name) => (parameters.get(name) ?? '').split(' ').filter(Boolean);
    const replace = (set, values) => {
        set.clear();
        values.forEach((value) => set.add(value));
    };
    filters.sourceText = parameters.get('sources') ?? '';
    filters.dutText = parameters.get('duts') ?? '';
    replace(filters.switches, words('switches').map((word) => word === 'none' ? null : Number(word)));
    replace(filters.kinds, words('compared'));
    const without = words('without').map(Number)[0];
    chooseCritical((data.critical ?? []).findIndex(({ component }) => component === without));
    const [source, dut] = words('pair').map((number) => Number(number) - 1);
    if (grid.lineOf.has(source) && grid.columnOf.has(dut)) {
        grid.moveTo(source, dut);
        openPair({ source, dut });
    }
}

// Paper does not scroll: the rows and columns that pass stand in tables of so many columns.
const mostOnPaper = 50000;
const columnsOnPaper = 22;

function printMatrix() {
    const { rows, columns } = shownCells;
    byId('printed').replaceChildren();
    if (rows.length * columns.length > mostOnPaper) {
        byId('printed').append(line(`The matrix has ${(rows.length * columns.length).toLocaleString('en')} cells: ` +
            'choose fewer pins to have it on paper'));
        return;
    }
    for (let first = 0; first < columns.length; first += columnsOnPaper)
        byId('printed').append(printedTable(rows, columns.slice(first, first + columnsOnPaper)));
}

function printedTable(rows, columns) {
    const name = (end) => html('th', {}, html('span', {}, shortened(end.text, 40)));
    return html('table', {}, html('thead', {}, html('tr', {}, html('th', {}, 'from \\ to'),
        ...columns.map((dut) => name(data.duts[dut])))),
    html('tbody', {}, ...rows.map((source) => html('tr', {}, name(data.sources[source]),
        ...columns.map((dut) => html('td', { class: shownCells.passes(source, dut)
            ? heatClass(switchesOf(source, dut)) : 'faded' }, cellText(source, dut)))))));
}

function addControls() {
    for (const [id, member] of [['source-filter', 'sourceText'], ['dut-filter', 'dutText']]) {
        byId(id).addEventListener('input', () => {
            filters[member] = byId(id).value;
            applyFilters();
        });
    }
    byId('filters').addEventListener('submit', (event) => {
        event.preventDefault();
        byId('grid').focus();
    });
    byId('clear').addEventListener('click', clearFilters);
    byId('close').addEventListener('click', close);
    byId('print').addEventListener('click', () => print());
    addEventListener('beforeprint', printMatrix);
    addEventListener('afterprint', () => byId('printed').replaceChildren());
    addEventListener('hashchange', readAddress);
    document.addEventListener('keydown', (event) => {
        const isInField = event.target.matches('input');
        if (event.key === '/' && !event.ctrlKey && !event.metaKey && !isInField) {
            event.preventDefault();
            byId('source-filter').select();
        } else if (event.key === 'Escape') {
            event.preventDefault();
            if (!isInField)
                close();
            byId('grid').focus();
        }
    });
    new ResizeObserver(draw).observe(byId('drawing'));
}

addTheme();
showHeader();
addCritical();
addControls();
readAddress();
byId('grid').focus({ preventScroll: true });
