// The steps to choose from. The address knows which one is shown.

class StepList {
    // notesOf(step) are the elements behind its name, isWrong(step) tells which remain where only those are asked for,
    // show(step) shows one.
    constructor({ notesOf, isWrong, show }) {
        Object.assign(this, { notesOf, isWrong, show });
        this.places = []; // of the steps that are listed
        this.chosen = 0;
        byId('previous').addEventListener('click', () => this.moveBy(-1));
        byId('next').addEventListener('click', () => this.moveBy(1));
        byId('wrong').addEventListener('change', () => this.list());
        byId('list').addEventListener('keydown', (event) => this.onKey(event));
        addEventListener('hashchange', () => this.readAddress());
        this.readAddress();
        byId('list').focus({ preventScroll: true });
    }

    readAddress() {
        const place = Number(new URLSearchParams(location.hash.slice(1)).get('step')) - 1;
        this.chosen = data.steps[place] ? place : 0;
        this.list();
    }

    list() {
        this.places = data.steps.map((_, place) => place)
            .filter((place) => !byId('wrong').checked || this.isWrong(data.steps[place]));
        byId('list').replaceChildren(...this.places.map((place) => this.row(place)));
        byId('count').textContent = counted(this.places.length, 'step', 'steps');
        if (this.places.length > 0)
            this.choose(this.places.includes(this.chosen) ? this.chosen : this.places[0]);
    }

    row(place) {
        const step = data.steps[place];
        const row = html('div', { id: `step-${place}`, role: 'option', 'data-step': place },
            html('span', { class: 'step-name' }, named(step.name, 100)), ...this.notesOf(step));
        row.addEventListener('mousedown', () => this.choose(place));
        return row;
    }

    choose(place) {
        this.chosen = place;
        byId('title').replaceChildren('Step ', named(data.steps[place].name, 200));
        this.show(data.steps[place]);
        for (const row of byId('list').children)
            row.setAttribute('aria-selected', Number(row.dataset.step) === place);
        const row = byId(`step-${place}`);
        if (row) {
            byId('list').setAttribute('aria-activedescendant', row.id);
            row.scrollIntoView({ block: 'nearest' });
        }
        history.replaceState(null, '', `#step=${place + 1}`);
    }

    moveBy(distance) {
        const place = Math.min(Math.max(this.places.indexOf(this.chosen) + distance, 0), this.places.length - 1);
        if (this.places.length > 0)
            this.choose(this.places[place]);
    }

    onKey(event) {
        const distances = { ArrowDown: 1, ArrowUp: -1, PageDown: 10, PageUp: -10, Home: -Infinity, End: Infinity };
        const distance = distances[event.key];
        if (distance === undefined || event.ctrlKey || event.altKey || event.metaKey)
            return;
        event.preventDefault();
        this.moveBy(distance);
    }
}
