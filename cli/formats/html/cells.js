// Each pair of a source pin and a DUT pin is a cell. What the data says of cells, and which a filter lets through.

const kindMarks = { lost: '\u2715', gained: '+', longer: '\u25b2', shorter: '\u25bc' };

// Source pin after source pin.
function cellAt(source, dut) {
    return source * data.duts.length + dut;
}

function switchesOf(source, dut) {
    return data.switches[source][dut];
}

function switchesText(switches) {
    return switches === null ? 'no route' : counted(switches, 'switch', 'switches').replace(/^0 /, 'no ');
}

// As a matrix that was saved has it.
function numberedName(end) {
    return `${componentOf(end).ref}.${end.pin.number}`;
}

function placesByName(ends) {
    return new Map(ends.map((end, place) => [numberedName(end), place]));
}

const sourcePlaces = placesByName(data.sources);
const dutPlaces = placesByName(data.duts);

// The cell of a pair that was compared; none where one of its pins is no longer there.
function cellOfPair({ source, dut }) {
    const places = [sourcePlaces.get(source), dutPlaces.get(dut)];
    return places.includes(undefined) ? undefined : cellAt(...places);
}

function comparedPairs(kind) {
    return (data.compared?.[kind] ?? []).map(([source, dut, before, now]) => ({ source, dut, before, now }));
}

const differences = new Map(Object.keys(kindMarks).flatMap((kind) =>
    comparedPairs(kind).map((pair) => [cellOfPair(pair), { kind, before: pair.before }])));

// Null where no route was found.
function routeOf(source, dut) {
    const cell = data.routes[source][dut];
    if (!cell)
        return null;
    const [count, crossings, connections] = cell;
    const start = crossings.length > 0 ? data.crossings[crossings[0]].from : data.sources[source].net;
    return { count, crossings, connections, source: { ...data.sources[source], net: start },
        destination: data.duts[dut] };
}

// What words of a filter may be part of.
function wordsFor(end) {
    const component = componentOf(end);
    return withoutCase([end.text, numberedName(end), component.value, ...Object.values(component.properties)]
        .join('\n'));
}

function placesThatFit(texts, filterText) {
    const words = wordsOf(filterText).map(({ isWanted, pieces }) => ({ isWanted, pieces: ['', ...pieces, ''] }));
    const [wanted, unwanted] = [true, false].map((isWanted) => words.filter((word) => word.isWanted === isWanted));
    const isIn = (text) => ({ pieces }) => fits(pieces, text);
    return texts.map((_, place) => place).filter((place) =>
        (wanted.length === 0 || wanted.some(isIn(texts[place]))) && !unwanted.some(isIn(texts[place])));
}

const sourceTexts = data.sources.map(wordsFor);
const dutTexts = data.duts.map(wordsFor);

// Whether a cell passes what is said of cells: numbers of switches, what has changed, the component that fails. Null
// where nothing is said.
function cellFilter({ switches, kinds, lost }) {
    if (switches.size === 0 && kinds.size === 0 && !lost)
        return null;
    return (source, dut) => (switches.size === 0 || switches.has(switchesOf(source, dut))) &&
        (kinds.size === 0 || kinds.has(differences.get(cellAt(source, dut))?.kind)) &&
        (!lost || lost.has(cellAt(source, dut)));
}

// The pins that pass, as rows and columns: those with a cell that passes.
function filteredCells(filters) {
    const sources = placesThatFit(sourceTexts, filters.sourceText);
    const duts = placesThatFit(dutTexts, filters.dutText);
    const passes = cellFilter(filters);
    if (!passes) {
        const cells = sources.length * duts.length;
        return { rows: cells > 0 ? sources : [], columns: duts, cells, passes: () => true };
    }
    const [rows, columns] = [new Set(), new Set()];
    let cells = 0;
    for (const source of sources) {
        for (const dut of duts) {
            if (!passes(source, dut))
                continue;
            rows.add(source);
            columns.add(dut);
            ++cells;
        }
    }
    return { rows: [...rows], columns: duts.filter((dut) => columns.has(dut)), cells, passes };
}

// How many pairs have how many switches; those without a route come first.
function pairCounts() {
    const counts = new Map();
    for (const row of data.switches) {
        for (const switches of row)
            counts.set(switches, (counts.get(switches) ?? 0) + 1);
    }
    return new Map([...counts].sort(([a], [b]) => (a ?? -1) - (b ?? -1)));
}

const countOfSwitches = pairCounts();

const heatSteps = 8; // as many as the style sheet has
const mostSwitches = Math.max(heatSteps - 1, ...countOfSwitches.keys());

// From pale to strong, the same for small numbers on any page; the number stands there too.
function heatClass(switches) {
    return switches === null ? 'unreached' : `heat-${Math.round(switches * (heatSteps - 1) / mostSwitches)}`;
}

function cellText(source, dut) {
    const switches = switchesOf(source, dut);
    const kind = differences.get(cellAt(source, dut))?.kind;
    return (kind ? kindMarks[kind] : '') + (switches ?? (kind ? '' : '\u00b7'));
}

function differenceText(source, dut) {
    const difference = differences.get(cellAt(source, dut));
    return difference ? `; ${difference.kind}, before: ${switchesText(difference.before)}` : '';
}

function cellLabel(source, dut) {
    return `${shortened(data.sources[source].text, 80)} to ${shortened(data.duts[dut].text, 80)}: ` +
        switchesText(switchesOf(source, dut)) + differenceText(source, dut);
}
