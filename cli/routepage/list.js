// The list of routes. Only the rows in view are elements, so that it stays quick with any number of routes.

const rowHeight = 48; // as in the style sheet
const mostRows = 300000; // browsers draw nothing beyond some 17 million pixels

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
        new ResizeObserver(() => this.reveal()).observe(element);
    }

    show(places, route) {
        this.places = places.slice(0, mostRows);
        this.rows.style.height = `${this.places.length * rowHeight}px`;
        this.drawn.clear();
        this.rows.replaceChildren();
        const known = this.places.indexOf(route);
        this.choose(known < 0 && this.places.length > 0 ? 0 : known);
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
        for (const index of wanted) {
            if (!this.drawn.has(index))
                this.drawn.set(index, this.rows.appendChild(this.row(index)));
            this.drawn.get(index).setAttribute('aria-selected', index === this.chosen);
        }
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
        return row;
    }
}

const mostInRow = 40;

function wayOf(route) {
    if (route.crossings.length === 0)
        return [html('em', {}, 'directly, without a switch')];
    const components = crossingsOf({ crossings: route.crossings.slice(0, mostInRow) }).map(componentOf);
    return components.flatMap((component, i) => [
        i > 0 ? html('i', {}, '\u2192') : '',
        html('bdi', { title: aboutText(component, 200) }, shortened(withoutBoard(component.ref), 60),
            html('small', {}, `#${boardOf(component)}`)),
    ]);
}

function switchCount(route) {
    return route.crossings.length === 0 ? 'no switch' : counted(route.crossings.length, 'switch', 'switches');
}

function sideText(route) {
    return 'also connects ' + connectionsOf(route).map(({ text }) => shortened(text, 60)).join(', ');
}

function rowLabel(place) {
    const route = data.routes[place];
    const refs = crossingsOf({ crossings: route.crossings.slice(0, mostInRow) })
        .map((crossing) => shortened(componentOf(crossing).ref, 60));
    const texts = [`Route ${place + 1}`, switchCount(route)];
    if (refs.length > 0)
        texts.push(refs.join(', '));
    return (route.connections.length > 0 ? [...texts, sideText(route)] : texts).join('; ');
}
