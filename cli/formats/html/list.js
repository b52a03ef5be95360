// The list of routes. Only the rows in view are elements, so that it stays quick with any number of routes.

// Two lines of references, or three where routes are long.
const rowHeight = data.routes.some((route) => wayLength(route) > 60) ? 68 : 48;
const mostRows = Math.floor(16000000 / rowHeight); // browsers draw nothing beyond some 17 million pixels

function wayLength(route) {
    return shownCrossingsOf(route)
        .reduce((sum, crossing) => sum + Math.min(componentOf(crossing).ref.length, 20) + 3, 0);
}

class RouteList {
    constructor(element, onChoice) {
        this.element = element;
        this.onChoice = onChoice;
        this.rows = html('div', { class: 'rows', role: 'presentation' });
        element.append(this.rows);
        this.places = [];
        this.chosen = -1; // a place in places
        this.drawn = new Map(); // the rows that are elements
        element.addEventListener('scroll', () => this.drawRows());
        element.addEventListener('keydown', (event) => this.onKey(event));
        element.addEventListener('mousedown', (event) => this.onClick(event));
        new ResizeObserver(() => this.resize()).observe(element);
    }

    show(places, route) {
        this.places = places.slice(0, mostRows);
        this.rows.style.height = `${this.places.length * rowHeight}px`;
        this.drawn.clear();
        this.rows.replaceChildren();
        const known = this.places.indexOf(route);
        this.choose(known < 0 && this.places.length > 0 ? 0 : known);
    }

    // Another width has room for more references or fewer.
    resize() {
        if (this.width !== this.element.clientWidth) {
            this.drawn.clear();
            this.rows.replaceChildren();
        }
        this.width = this.element.clientWidth;
        this.reveal();
    }

    choose(index) {
        this.chosen = index;
        this.reveal();
        this.onChoice(index < 0 ? -1 : this.places[index]);
    }

    reveal() {
        const top = this.chosen * rowHeight;
        const page = this.element.clientHeight;
        if (this.chosen >= 0 && top < this.element.scrollTop)
            this.element.scrollTop = top;
        else if (this.chosen >= 0 && top + rowHeight > this.element.scrollTop + page)
            this.element.scrollTop = top + rowHeight - page;
        this.drawRows();
    }

    step(distance) {
        if (this.places.length > 0)
            this.choose(Math.min(Math.max(this.chosen + distance, 0), this.places.length - 1));
    }

    onKey(event) {
        const page = Math.max(Math.floor(this.element.clientHeight / rowHeight) - 1, 1);
        const distances = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
        const distance = distances[event.key];
        if (distance === undefined || event.ctrlKey || event.altKey || event.metaKey)
            return;
        event.preventDefault();
        this.step(distance);
    }

    onClick(event) {
        const row = event.target.closest('[role=option]');
        if (row)
            this.choose(Number(row.dataset.index));
    }

    drawRows() {
        const first = Math.max(Math.floor(this.element.scrollTop / rowHeight) - 3, 0);
        const end = Math.min(first + Math.ceil(this.element.clientHeight / rowHeight) + 7, this.places.length);
        const wanted = new Set(this.chosen < 0 ? [] : [this.chosen]); // the active option must exist
        for (let index = first; index < end; ++index)
            wanted.add(index);
        for (const [index, row] of this.drawn) {
            if (wanted.has(index))
                continue;
            row.remove();
            this.drawn.delete(index);
        }
        const added = [...wanted].filter((index) => !this.drawn.has(index));
        for (const index of added)
            this.drawn.set(index, this.rows.appendChild(this.row(index)));
        shortenWays(added.map((index) => this.drawn.get(index).querySelector('.way')));
        for (const index of wanted)
            this.drawn.get(index).setAttribute('aria-selected', index === this.chosen);
        if (this.chosen < 0)
            this.element.removeAttribute('aria-activedescendant');
        else
            this.element.setAttribute('aria-activedescendant', this.drawn.get(this.chosen).id);
    }

    row(index) {
        const place = this.places[index];
        const route = data.routes[place];
        const row = html('div', {
            id: `route-${place + 1}`, role: 'option', 'aria-posinset': index + 1, 'aria-setsize': this.places.length,
            'aria-label': rowLabel(place), 'data-index': index,
        }, html('span', { class: 'number' }, String(place + 1)), html('span', { class: 'way' }, ...wayOf(route)));
        const numbers = html('span', { class: 'numbers' },
            html('span', { class: 'switches', title: switchCount(route) }, String(route.crossings.length)));
        if (route.connections.length > 0)
            numbers.append(html('span', { class: 'side', title: sideText(route) },
                `\u25c6 ${route.connections.length}`));
        row.append(numbers);
        row.style.top = `${index * rowHeight}px`;
        row.style.height = `${rowHeight}px`;
        return row;
    }
}

const mostInRow = 16;
const mostInLabel = 40;

// Routes that begin alike are told apart by their ends.
function wayOf(route) {
    const { crossings } = route;
    if (crossings.length === 0)
        return [html('em', {}, 'directly, without a switch')];
    const isCut = crossings.length > mostInRow;
    const shown = isCut ? [...crossings.slice(0, mostInRow / 2), ...crossings.slice(-mostInRow / 2)] : crossings;
    const steps = crossingsOf({ crossings: shown }).map((crossing, i) => wayStep(crossing, i < shown.length - 1));
    if (isCut)
        steps.splice(mostInRow / 2, 0, wayGap());
    return steps;
}

// A line is broken behind the arrow.
function wayStep(crossing, hasNext) {
    const component = componentOf(crossing);
    return html('span', { class: 'step' },
        html('bdi', { title: aboutText(component, 200) }, shortened(withoutBoard(component.ref), 60)),
        html('small', {}, `#${boardOf(component)}${shortened(markOf(crossing), 30)}`),
        hasNext ? html('i', {}, '\u2192') : '');
}

function wayGap() {
    return html('span', { class: 'gap', title: 'more in between' }, '\u2026', html('i', {}, '\u2192'));
}

// Leaves out steps in the middle of each way until it fits. All ways lose one at a time: to measure is slow, unless
// nothing changes in between.
function shortenWays(ways) {
    let tooLong = ways;
    do {
        tooLong = tooLong.filter((way) => way.scrollHeight > way.clientHeight + 1 &&
            way.querySelectorAll('.step').length > 2);
        tooLong.forEach(leaveOutOne);
    } while (tooLong.length > 0);
}

function leaveOutOne(way) {
    const steps = way.querySelectorAll('.step');
    const middle = steps[Math.floor(steps.length / 2)];
    if (way.querySelector('.gap'))
        middle.remove();
    else
        middle.replaceWith(wayGap());
}

function sideText(route) {
    return 'also connects ' + connectionsOf(route).map(({ text }) => shortened(text, 60)).join(', ');
}

function rowLabel(place) {
    const route = data.routes[place];
    const refs = crossingsOf({ crossings: route.crossings.slice(0, mostInLabel) })
        .map((crossing) => shortened(componentOf(crossing).ref + markOf(crossing), 60));
    const texts = [`Route ${place + 1}`, switchCount(route)];
    if (refs.length > 0)
        texts.push(refs.join(', '));
    return (route.connections.length > 0 ? [...texts, sideText(route)] : texts).join('; ');
}
