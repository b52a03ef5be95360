// The page of plans: steps to choose from, what to set for the chosen one, and the ways that its connections take.

const badges = {
    optimal: '\u2713 optimal',
    feasible: '~ feasible',
    impossible: '\u2715 impossible',
    unknown: '? unknown',
};

function badge({ result }) {
    return html('span', { class: `badge ${result}` }, badges[result]);
}

function resultText(step) {
    const texts = { impossible: 'Proven: there is no plan', unknown: 'The time was up before a plan was found' };
    return step.cost ?? `${texts[step.result]}. The relays stay as they were.`;
}

function hasPlan(step) {
    return step.groups !== undefined;
}

function lineColour(set) {
    return `var(--group-${set % colours})`;
}

function connectionName({ from, to }) {
    return [...pinNames([from]), ' to ', ...pinNames([to])];
}

function placeOf({ place }) {
    return html('span', { class: 'place' }, shortened(place, 120));
}

// What moves, with the positions that are not told by the reference.
function changes(step) {
    const settings = new Map(step.relays.map(({ component, setting }) => [component, setting]));
    const lines = [
        ['To rest: ', step.toRest.map((place) => named(data.components[place].ref))],
        ['To set: ', step.toSet.map((place) => named(settings.get(place)))],
    ].filter(([, relays]) => relays.length > 0);
    return lines.length === 0 ? [html('li', {}, 'Nothing changes')]
        : lines.map(([title, relays]) => html('li', {}, title, ...enumerated(relays)));
}

// The elements of a list, of very many the first ones.
function items(all, toItem) {
    const shown = all.slice(0, mostShown).map(toItem);
    return all.length > mostShown ? [...shown, html('li', {}, `and ${all.length - mostShown} more`)] : shown;
}

function gangNames(gangs) {
    return enumerated(gangs.map((gang) => named(gang.map((place) => data.components[place].ref).join('+'))));
}

function transient({ isOnTheWayToRest, pins, gangs }) {
    const when = isOnTheWayToRest ? 'while relays go to rest' : 'while relays are set';
    return html('li', {}, html('span', { class: 'wrong' }, 'may touch'), ` ${when}: `, ...pinNames(pins), ' by ',
        ...gangNames(gangs));
}

// With the passive components that groups go through, and the lines that they reach on the board.
function planFrame(board, step, setOf) {
    const passives = step.groups.flatMap(({ through }, set) => through.map((component) =>
        ({ component, setting: `through ${data.components[component].ref}`, sets: [set] })));
    const element = frame(board, [...setOf.keys()], { relays: [...step.relays, ...passives] }, setOf);
    const lines = step.groups.map(({ nets }, set) => [set, nets.flatMap((net) => namesOn(data.nets[net], board))])
        .filter(([, names]) => names.length > 0);
    if (lines.length > 0) {
        element.append(html('ul', { class: 'lines', 'aria-label': 'Lines' }, ...items(lines, ([set, names]) =>
            html('li', {}, setMark(set), ' ', ...enumerated(names.map((name) => named(name)))))));
        element.hidden = false;
    }
    return element;
}

function wayOf(step, group, { connection, crossings }) {
    const { from, to } = step.wanted[connection];
    return { source: data.pins[from], destination: data.pins[to], crossings, connections: group.sideConnections };
}

function widthOfDrawings() {
    return byId('shown').clientWidth - 60;
}

function drawing(route) {
    return html('div', { class: 'drawing way-drawing', role: 'img', 'aria-label': wayText(route) },
        drawRoute(route, widthOfDrawings()));
}

function wayText(route) {
    const refs = shownCrossingsOf(route).map((crossing) => componentOf(crossing).ref + markOf(crossing));
    return inFull(refs.length === 0 ? 'directly, without a switch' : `over ${refs.join(', ')}`);
}

function netsText(group) {
    return html('details', { class: 'nets' }, html('summary', {},
        `Reaches ${counted(group.nets.length, 'net', 'nets')}`),
    ...enumerated(group.nets.map((net) => named(data.nets[net].name))));
}

// A group of several connections is told by its pins, and each connection above its drawing.
function groupItem(step, group, set) {
    const wantedBy = ({ connection }) => [...connectionName(step.wanted[connection]), ' ',
        placeOf(step.wanted[connection])];
    const isSingle = group.ways.length === 1;
    const item = html('li', {}, setButton(set), ' ', ...isSingle ? wantedBy(group.ways[0]) : pinNames(group.pins));
    item.style.setProperty('--wire', lineColour(set));
    if (group.through.length > 0)
        item.append('; through ', ...refs(group.through));
    if (group.sideConnections.length > 0)
        item.append('; also connects ', ...enumerated(group.sideConnections.map((place) =>
            sideMark(data.pins[place], ''))));
    for (const way of group.ways.slice(0, mostShown)) {
        if (!isSingle)
            item.append(html('p', { class: 'connection-title' }, ...wantedBy(way)));
        item.append(drawing(wayOf(step, group, way)));
    }
    if (group.ways.length > mostShown)
        item.append(`and ${group.ways.length - mostShown} more`);
    item.append(netsText(group));
    return item;
}

function remarks(step) {
    const coupling = ({ groups, pins, passives }) => html('li', {}, 'coupled: ', ...enumerated(groups.map(setMark)),
        ...pins.length > 0 ? [' ', ...pinNames(pins)] : [], ' by ', ...refs(passives));
    return [
        ...items(step.couplings, coupling),
        ...items(step.alsoConnected, (pins) => html('li', {}, 'also connected: ', ...pinNames(pins))),
        ...step.unknown.length === 0 ? []
            : [html('li', {}, 'in touch, though their positions are not known: ', ...refs(step.unknown))],
    ];
}

function showPlan(step) {
    const setOf = new Map(step.groups.flatMap(({ pins, sideConnections }, set) =>
        [...pins, ...sideConnections].map((pin) => [pin, set])));
    byId('relays').replaceChildren(...relaysText(step));
    byId('change').replaceChildren(...changes(step));
    byId('transients').replaceChildren(...items(step.transients, transient));
    byId('system').replaceChildren(...data.boards.map((_, i) => planFrame(i + 1, step, setOf)));
    byId('sets').replaceChildren(...step.groups.length === 0 ? [html('li', {}, 'Nothing')]
        : items(step.groups, (group, set) => groupItem(step, group, set)));
    const found = remarks(step);
    byId('remarks-title').hidden = found.length === 0;
    byId('remarks').replaceChildren(...found);
}

const boxHeight = 30;

// A group with its connections, and its claim on what is scarce.
function claimant(set, text, width, y) {
    const mark = svg('rect', { x: 2, y: y - 11, width: 28, height: 22, rx: 6 });
    mark.style.fill = `var(--set-${set % colours})`;
    const group = svg('g', {}, svg('title', {}, inFull(text)),
        svg('rect', { x: 2, y: y - 11, width, height: 22, rx: 6, class: 'claimant' }), mark,
        label(16, y + 4, String(set + 1), 'mark'),
        label(36, y + 4, fitted(text, width - 42, smallStyle), 'about', 'start'));
    group.style.setProperty('--wire', lineColour(set));
    return group;
}

function curve(className, x, y, toX, toY) {
    const middle = (x + toX) / 2;
    return svg('path', { class: className, d: `M${x},${y}C${middle},${y} ${middle},${toY} ${toX},${toY}` });
}

// The groups on the left, each in its colour, and on the right the lines of which there are not enough for them.
function drawBottleneck(step, width) {
    const groups = step.conflict.slice(0, mostShown);
    const nets = step.bottleneck.slice(0, mostShown);
    const boxWidth = Math.min(Math.max(width * 0.42, 160), 420);
    const [neck, end] = [boxWidth + 80, boxWidth + 150];
    const height = (Math.max(groups.length, nets.length) + 1) * boxHeight;
    const yOf = (i, { length }) => (height + boxHeight) / 2 + (i - (length - 1) / 2) * boxHeight;
    const textOfGroup = (connections) => connections.map((place) => step.wanted[place])
        .map(({ from, to }) => `${data.pins[from].text} to ${data.pins[to].text}`).join(', ');
    const netName = (places) => places.map((place) => data.nets[place].name).join('+');
    return svg('svg', { width, height, viewBox: `0 0 ${width} ${height}`, 'aria-hidden': 'true' },
        label(10, 20, shortageText(step), 'shortage', 'start'),
        ...groups.flatMap((connections, set) => {
            const claim = curve('claim', boxWidth + 2, yOf(set, groups), neck, yOf(0, [0]));
            claim.style.stroke = lineColour(set);
            return [claim, claimant(set, textOfGroup(connections), boxWidth, yOf(set, groups))];
        }),
        ...nets.flatMap((places, i) => [
            curve('scarce', neck, yOf(0, [0]), end, yOf(i, nets)),
            label(end + 10, yOf(i, nets) + 4, fitted(netName(places), width - end - 14, smallStyle), 'name', 'start'),
        ]));
}

function shortageText({ conflict, bottleneck }) {
    const needy = bottleneck.length + 1;
    const groups = needy === conflict.length ? `${needy} groups` : `At least ${needy} of ${conflict.length} groups`;
    return `${groups} need a line of their own, but there ` + (needy === 2 ? 'is only one:' : `are only ${needy - 1}:`);
}

function showConflict(step) {
    byId('conflict-title').textContent = step.conflict.flat().length === 1
        ? 'There is no plan for this connection alone' : 'There is a plan without any one of these, but none for all';
    byId('bottleneck').hidden = step.bottleneck.length === 0;
    byId('bottleneck').replaceChildren(...step.bottleneck.length > 0 ? [drawBottleneck(step, widthOfDrawings())] : []);
    const conflicting = step.conflict.flatMap((connections, set) => connections.map((place) => [place, set]));
    byId('conflicting').replaceChildren(...items(conflicting, ([place, set]) => html('li', {}, setMark(set), ' ',
        ...connectionName(step.wanted[place]), ' ', placeOf(step.wanted[place]))));
}

const mostColumns = 100;

// What a relay is set to in a step: the groups that reach it, and its position where it has more than two.
function relayCell(relay) {
    const position = relay ? relay.setting.slice(data.components[relay.component].ref.length + 1) : '';
    // No marks that fade with the groups of the chosen step.
    const marks = relay?.sets.map((set) => coloured(html('span', { class: 'set' }, String(set + 1)), set)) ?? [];
    if (relay?.sets.length === 0)
        marks.push('\u25cf');
    return html('td', {}, ...marks.flatMap((mark) => [mark, ' ']), named(position));
}

function stepHeading(step, place) {
    const button = html('button', { type: 'button' }, named(step.name, 30));
    button.addEventListener('click', () => list.choose(place));
    return html('th', { scope: 'col', 'data-step': place }, button, html('br'), badge(step));
}

// A row for each relay that is away from rest in a step, a column for each step; only when somebody wants to see it.
function showSideBySide() {
    if (!byId('side-by-side').open || byId('relay-table').childElementCount > 0)
        return;
    const steps = data.steps.slice(0, mostColumns);
    const relaysOf = steps.map(({ relays = [] }) => new Map(relays.map((relay) => [relay.component, relay])));
    const all = [...new Set(relaysOf.flatMap((relays) => [...relays.keys()]))]
        .sort((a, b) => data.components[a].ref < data.components[b].ref ? -1 : 1);
    const shown = all.slice(0, mostShown);
    byId('relay-table').append(
        html('thead', {}, html('tr', {}, html('td'), ...steps.map(stepHeading))),
        html('tbody', {}, ...shown.map((component) => html('tr', {},
            html('th', { scope: 'row' }, named(data.components[component].ref)),
            ...relaysOf.map((relays) => relayCell(relays.get(component)))))));
    const left = [[all.length - shown.length, 'relays'], [data.steps.length - steps.length, 'steps']]
        .filter(([count]) => count > 0);
    if (left.length > 0)
        byId('relay-table').append(html('caption', {},
            `and ${left.map(([count, what]) => `${count} more ${what}`).join(', ')}`));
    markColumn();
}

function markColumn() {
    for (const heading of byId('relay-table').querySelectorAll('th[data-step]'))
        heading.toggleAttribute('data-chosen', Number(heading.dataset.step) === list.chosen);
}

let shownWidth = 0;

function show(step) {
    shownWidth = widthOfDrawings();
    byId('result').replaceChildren(badge(step), ` ${resultText(step)}`);
    byId('plan').hidden = !hasPlan(step);
    byId('conflict').hidden = !step.conflict?.length;
    if (hasPlan(step))
        showPlan(step);
    if (step.conflict?.length > 0)
        showConflict(step);
    showSet(-1);
    if (byId('relay-table').childElementCount > 0)
        markColumn();
}

function stepNotes(step) {
    const relays = hasPlan(step)
        ? [html('span', { class: 'about' }, counted(step.gangsAway, 'relay', 'relays'))] : [];
    return [...relays, badge(step)];
}

function showHeader() {
    const counts = Object.keys(badges)
        .map((result) => [data.steps.filter((step) => step.result === result).length, result])
        .filter(([count]) => count > 0);
    byId('summary').append([counted(data.steps.length, 'step', 'steps'),
        counts.map(([count, result]) => `${count} ${result}`).join(', ')].join(': '));
    showBoards();
    byId('wrong-label').hidden = data.steps.every(hasPlan);
}

addTheme();
showHeader();
byId('print').addEventListener('click', () => print());
const list = new StepList({ notesOf: stepNotes, isWrong: (step) => !hasPlan(step), show });
byId('side-by-side').addEventListener('toggle', showSideBySide);
new ResizeObserver(() => {
    if (shownWidth !== widthOfDrawings())
        show(data.steps[list.chosen]);
}).observe(byId('shown'));
