// Ties it all together: header, filters, the chosen route, the address.

const list = new RouteList(byId('list'), showRoute);
const filters = { text: '', switches: new Set(), alone: false };
let chosenRoute = -1;
let describedRoute = -1;
let addressTimer;

function showHeader() {
    const end = (each) => html('bdi', { title: describeEnd(each) }, shortened(each.text, 80));
    byId('heading').replaceChildren(end(data.source), ' \u2192 ', end(data.destination));
    document.title = `${shortened(data.source.text, 40)} \u2192 ${shortened(data.destination.text, 40)}`;
    const remarks = [data.asDrawn ? ' as drawn' : '', data.more ? '; there are more' : '',
        data.leftOut ? `; ${data.leftOut}` : ''];
    byId('summary').append(counted(data.routes.length, 'route', 'routes'), ...remarks, '.', ...limitsText());
    showBoards();
}

function showNone() {
    document.querySelector('main').classList.add('empty');
    byId('choice').hidden = byId('shown').hidden = true;
    byId('none').hidden = false;
    byId('none').append(html('h2', {}, 'No route within the limits'),
        html('ul', {}, ...data.reason.map((reason) => html('li', {}, inFull(reason)))));
}

function addSwitchCounts() {
    const counts = new Map();
    for (const route of data.routes)
        counts.set(route.crossings.length, (counts.get(route.crossings.length) ?? 0) + 1);
    byId('switches').append('Switches ', ...Array.from(counts, ([switches, routes]) => {
        const button = html('button', { type: 'button', 'aria-pressed': 'false', 'data-switches': switches,
            'aria-label': `${switches}: ${counted(routes, 'route', 'routes')}` },
        String(switches), html('small', {}, routes.toLocaleString('en')));
        button.addEventListener('click', () => {
            if (!filters.switches.delete(switches))
                filters.switches.add(switches);
            applyFilters();
        });
        return button;
    }));
    byId('switches').hidden = counts.size < 2;
    byId('alone-label').hidden = data.pins.length === 0;
}

function applyFilters() {
    for (const button of byId('switches').querySelectorAll('button'))
        button.setAttribute('aria-pressed', filters.switches.has(Number(button.dataset.switches)));
    byId('filter').value = filters.text;
    byId('alone').checked = filters.alone;
    const places = filtered(filters);
    const isAll = places.length === data.routes.length;
    byId('count').textContent = places.length === 0 ? 'No route passes these filters'
        : isAll ? counted(places.length, 'route', 'routes')
            : `${places.length.toLocaleString('en')} of ${counted(data.routes.length, 'route', 'routes')}`;
    if (places.length > mostRows)
        byId('count').textContent += `, the first ${mostRows.toLocaleString('en')} listed`;
    byId('clear').hidden = isAll;
    list.show(places, chosenRoute);
}

function addFilterWord(word) {
    filters.text = `${filters.text} ${word}`.trim();
    applyFilters();
}

function showRoute(place) {
    byId('shown').hidden = place < 0;
    if (place >= 0)
        chosenRoute = place;
    if (place >= 0 && place !== describedRoute) {
        const route = data.routes[place];
        describedRoute = place;
        byId('title').textContent = `Route ${place + 1}: ${switchCount(route)}`;
        byId('route-summary').replaceChildren(...summaryOf(route));
        byId('copy-set').hidden = crossingsWith('set', route).length === 0;
        byId('copy-set').textContent = `Copy ${kindToSet(route)}`;
        byId('copied').textContent = '';
        byId('steps').replaceChildren(...stepsOf(route, addFilterWord));
        draw();
    }
    writeAddress();
}

function draw() {
    if (chosenRoute >= 0)
        byId('drawing').replaceChildren(drawRoute(data.routes[chosenRoute], byId('drawing').clientWidth));
}

// A little later, since browsers object to many changes at once.
function writeAddress() {
    clearTimeout(addressTimer);
    addressTimer = setTimeout(() => history.replaceState(null, '', `#${address()}`), 150);
}

function address() {
    const parameters = new URLSearchParams({ route: chosenRoute + 1 });
    if (filters.text !== '')
        parameters.set('filter', filters.text);
    if (filters.switches.size > 0)
        parameters.set('switches', [...filters.switches].join(' '));
    if (filters.alone)
        parameters.set('alone', '1');
    return parameters;
}

function readAddress() {
    const parameters = new URLSearchParams(location.hash.slice(1));
    const place = Number(parameters.get('route')) - 1;
    chosenRoute = data.routes[place] ? place : 0;
    filters.text = parameters.get('filter') ?? '';
    filters.switches = new Set((parameters.get('switches') ?? '').split(' ').filter(Boolean).map(Number));
    filters.alone = parameters.get('alone') === '1';
    applyFilters();
}

async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
    } catch { // not every browser lets a page from the disk
        const area = html('textarea', { readonly: '' });
        area.value = text;
        document.body.append(area);
        area.select();
        document.execCommand('copy');
        area.remove();
    }
    byId('copied').textContent = 'Copied';
}

function addControls() {
    byId('print').addEventListener('click', () => print());
    byId('previous').addEventListener('click', () => list.step(-1));
    byId('next').addEventListener('click', () => list.step(1));
    byId('copy-set').addEventListener('click', () => copy(crossingsWith('set', data.routes[chosenRoute])
        .map((crossing) => visible(componentOf(crossing).ref + markOf(crossing))).join(', ')));
    byId('copy-text').addEventListener('click', () => copy(textOf(chosenRoute)));
    byId('filters').addEventListener('submit', (event) => event.preventDefault());
    byId('filter').addEventListener('input', () => {
        filters.text = byId('filter').value;
        applyFilters();
    });
    byId('alone').addEventListener('change', () => {
        filters.alone = byId('alone').checked;
        applyFilters();
    });
    byId('clear').addEventListener('click', () => {
        Object.assign(filters, { text: '', switches: new Set(), alone: false });
        applyFilters();
        byId('list').focus();
    });
    byId('filter').addEventListener('keydown', (event) => {
        if (['ArrowDown', 'Enter', 'Escape'].includes(event.key)) {
            event.preventDefault();
            byId('list').focus();
        }
    });
    document.addEventListener('keydown', (event) => {
        if (event.key === '/' && !event.ctrlKey && !event.metaKey && event.target !== byId('filter')) {
            event.preventDefault();
            byId('filter').select();
        }
    });
    addEventListener('hashchange', readAddress);
    new ResizeObserver(draw).observe(byId('drawing'));
}

addTheme();
showHeader();
for (const route of data.routes)
    Object.assign(route, { source: data.source, destination: data.destination });
if (data.routes.length === 0) {
    showNone();
    byId('print').hidden = true;
} else {
    addSwitchCounts();
    addControls();
    readAddress();
    byId('list').focus({ preventScroll: true });
}
