// The matrix: a row for each source pin, a column for each DUT pin. Only what is in view are elements, so that it stays
// quick with any number of cells. Names stay at the edges, the sources' under a heading for each instrument.

const cellWidth = 34; // these as in the style sheet
const cellHeight = 24;
const bandHeight = 24; // of the names of DUTs, above those of their pins

// Behind the reference, which stands with the group.
function pinOfText(end) {
    return end.text.slice(componentOf(end).ref.length + 1);
}

// The room that the longest of the names takes, with something around it.
function nameSize(names, most) {
    return Math.ceil(names.reduce((widest, name) =>
        Math.min(Math.max(widest, textWidth(shortened(name, 60), chipStyle) + 20), most), 80));
}

// A band over so few columns has no room for the name of the DUT.
function isNarrow(columnCount) {
    return columnCount < 3;
}

// Neighbours that are pins of one component: [{component, places}].
function groupsOfEnds(ends, places) {
    const groups = [];
    for (const place of places) {
        if (groups.at(-1)?.component !== ends[place].component)
            groups.push({ component: ends[place].component, places: [] });
        groups.at(-1).places.push(place);
    }
    return groups;
}

function groupText(component) {
    return `${shortened(component.ref, 60)} ${shortened(component.value, 60)}`.trim();
}

// From the first to before the end, in steps, so that not every little movement draws anew.
function partInView(scrolled, size, itemSize, count) {
    const step = 8;
    const first = Math.max(Math.floor(scrolled / itemSize / step) - 1, 0) * step;
    const end = (Math.floor((scrolled + size) / itemSize / step) + 2) * step;
    return { first: Math.min(first, count), end: Math.min(end, count) };
}

class CoverageGrid {
    constructor(element, onOpen) {
        this.element = element;
        this.onOpen = onOpen;
        this.cursor = null; // {source, dut}
        this.lines = [];
        this.columns = [];
        this.space = html('div', { class: 'space', role: 'presentation' });
        this.bands = html('div', { class: 'bands', 'aria-hidden': 'true' });
        this.head = html('div', { class: 'head', role: 'row', 'aria-rowindex': 1 });
        element.append(this.space);
        this.nameWidth = nameSize(data.sources.map(pinOfText), 200);
        element.style.setProperty('--name-width', `${this.nameWidth}px`);
        element.addEventListener('scroll', () => this.draw());
        element.addEventListener('keydown', (event) => this.onKey(event));
        element.addEventListener('click', (event) => this.onClick(event));
        new ResizeObserver(() => this.draw()).observe(element);
    }

    // Rows and columns are places of pins; what does not pass is shown faded.
    show({ rows, columns, passes }) {
        this.lines = groupsOfEnds(data.sources, rows).flatMap(({ component, places }) =>
            [{ component }, ...places.map((source) => ({ component, source }))]);
        this.columns = columns;
        this.groups = groupsOfEnds(data.duts, columns);
        this.groupStarts = new Set(this.groups.map(({ places }) => places[0]));
        this.columnNames = new Map(this.groups.flatMap(({ places }) =>
            places.map((dut) => [dut, isNarrow(places.length) ? data.duts[dut].text : pinOfText(data.duts[dut])])));
        this.headHeight = bandHeight + nameSize([...this.columnNames.values()], 180);
        this.element.style.setProperty('--head-height', `${this.headHeight}px`);
        this.passes = passes;
        this.lineOf = new Map(this.lines.map(({ source }, line) => [source, line]));
        this.columnOf = new Map(columns.map((dut, column) => [dut, column]));
        this.space.style.width = `${this.nameWidth + columns.length * cellWidth}px`;
        this.space.style.height = `${this.headHeight + this.lines.length * cellHeight}px`;
        this.element.setAttribute('aria-rowcount', this.lines.length + 1);
        this.element.setAttribute('aria-colcount', columns.length + 1);
        this.element.hidden = rows.length === 0;
        this.drawn = new Map(); // the lines that are elements
        this.space.replaceChildren(this.head);
        this.part = null;
        if (!this.cursor || !this.lineOf.has(this.cursor.source) || !this.columnOf.has(this.cursor.dut))
            this.cursor = rows.length > 0 ? { source: rows[0], dut: columns[0] } : null;
        this.draw();
    }

    draw() {
        const { scrollLeft, scrollTop, clientWidth, clientHeight } = this.element;
        const columns = partInView(scrollLeft, clientWidth - this.nameWidth, cellWidth, this.columns.length);
        const lines = partInView(scrollTop, clientHeight - this.headHeight, cellHeight, this.lines.length);
        const part = [columns.first, columns.end, lines.first, lines.end].join();
        if (part === this.part)
            return;
        this.part = part;
        this.drawHead(columns);
        for (const [line, row] of this.drawn) {
            if (line >= lines.first && line < lines.end)
                continue;
            row.element.remove();
            this.drawn.delete(line);
        }
        for (let line = lines.first; line < lines.end; ++line)
            this.drawLine(line, columns);
        this.markCursor();
    }

    drawHead({ first, end }) {
        const names = this.columns.slice(first, end).map((dut, i) => this.columnName(dut, first + i));
        this.head.replaceChildren(html('div', { class: 'corner', role: 'columnheader', 'aria-colindex': 1 },
            'from \\ to'), this.bands, this.gap(first), ...names);
        let column = 0;
        this.bands.replaceChildren();
        for (const { component, places } of this.groups) {
            if (column < end && column + places.length > first)
                this.bands.append(this.band(data.components[component], column, places.length));
            column += places.length;
        }
    }

    band(component, column, count) {
        const text = groupText(component);
        const band = html('div', { class: 'band', title: text }, html('span', {}, isNarrow(count) ? '' : text));
        band.style.left = `${column * cellWidth}px`;
        band.style.width = `${count * cellWidth}px`;
        return band;
    }

    columnName(dut, column) {
        const end = data.duts[dut];
        return html('div', { class: this.classes('column', dut), role: 'columnheader', 'aria-colindex': column + 2,
            'aria-label': shortened(end.text, 80), title: describeEnd(end), 'data-dut': dut },
        html('span', {}, shortened(this.columnNames.get(dut), 60)));
    }

    gap(first) {
        const gap = html('div', { class: 'gap', role: 'presentation' });
        gap.style.width = `${first * cellWidth}px`;
        return gap;
    }

    classes(name, dut) {
        return this.groupStarts.has(dut) ? `${name} starts` : name;
    }

    drawLine(line, columns) {
        if (!this.drawn.has(line))
            this.drawn.set(line, this.newLine(line));
        if (this.lines[line].source !== undefined)
            this.fillLine(this.drawn.get(line), this.lines[line].source, columns);
    }

    newLine(line) {
        const { component, source } = this.lines[line];
        const name = source === undefined ? groupName(data.components[component]) : sourceName(source);
        const gap = this.gap(0);
        const element = html('div', { class: 'line', role: 'row', 'aria-rowindex': line + 2 }, name, gap);
        element.style.top = `${this.headHeight + line * cellHeight}px`;
        const next = Math.min(...Array.from(this.drawn.keys()).filter((other) => other > line)); // in order, to be read
        this.space.insertBefore(element, this.drawn.get(next)?.element ?? null);
        return { element, gap, cells: new Map() };
    }

    // What stays in view keeps its elements, in their order.
    fillLine({ element, gap, cells }, source, { first, end }) {
        for (const [column, cell] of cells) {
            if (column >= first && column < end)
                continue;
            cell.remove();
            cells.delete(column);
        }
        const kept = Math.min(...cells.keys());
        const [before, behind] = [[], []];
        for (let column = first; column < end; ++column) {
            if (cells.has(column))
                continue;
            cells.set(column, this.cell(source, column));
            (column < kept ? before : behind).push(cells.get(column));
        }
        gap.style.width = `${first * cellWidth}px`;
        gap.after(...before);
        element.append(...behind);
    }

    cell(source, column) {
        const dut = this.columns[column];
        const isFaded = !this.passes(source, dut);
        const label = cellLabel(source, dut) + (isFaded ? '; filtered out' : '');
        const classes = [this.classes('cell', dut), heatClass(switchesOf(source, dut)),
            ...differences.has(cellAt(source, dut)) ? ['changed'] : [], ...isFaded ? ['faded'] : []];
        return html('div', { id: `cell-${source}-${dut}`, class: classes.join(' '), role: 'gridcell',
            'aria-colindex': column + 2, 'aria-label': label, title: label, 'data-source': source, 'data-dut': dut },
        cellText(source, dut));
    }

    markCursor() {
        for (const marked of this.space.querySelectorAll('.at'))
            marked.classList.remove('at');
        const id = this.cursor ? `cell-${this.cursor.source}-${this.cursor.dut}` : '';
        if (!byId(id)) {
            this.element.removeAttribute('aria-activedescendant'); // it is not in view
            return;
        }
        this.element.setAttribute('aria-activedescendant', id);
        const { source, dut } = this.cursor;
        for (const marked of this.space.querySelectorAll(
            `#${id}, .name[data-source='${source}'], .column[data-dut='${dut}']`))
            marked.classList.add('at');
    }

    moveTo(source, dut) {
        this.cursor = { source, dut };
        const [x, y] = [this.columnOf.get(dut) * cellWidth, this.lineOf.get(source) * cellHeight];
        const [width, height] = [this.element.clientWidth - this.nameWidth, this.element.clientHeight - this.headHeight];
        const inView = (scrolled, at, size, shown) => Math.max(Math.min(scrolled, at), at + size - shown);
        this.element.scrollLeft = inView(this.element.scrollLeft, x, cellWidth, width);
        this.element.scrollTop = inView(this.element.scrollTop, y, cellHeight, height);
        this.draw();
        this.markCursor();
    }

    // By so many rows and columns, past the headings.
    step(rows, columns) {
        const sources = this.lines.filter(({ source }) => source !== undefined).map(({ source }) => source);
        const moved = (places, place, by) => places[Math.min(Math.max(places.indexOf(place) + by, 0), places.length - 1)];
        this.moveTo(moved(sources, this.cursor.source, rows), moved(this.columns, this.cursor.dut, columns));
    }

    onKey(event) {
        if (!this.cursor || event.altKey || event.metaKey)
            return;
        const page = Math.max(Math.floor((this.element.clientHeight - this.headHeight) / cellHeight) - 1, 1);
        const far = event.ctrlKey ? Infinity : 0;
        const steps = { ArrowDown: [1, 0], ArrowUp: [-1, 0], ArrowRight: [0, 1], ArrowLeft: [0, -1],
            PageDown: [page, 0], PageUp: [-page, 0], Home: [-far, -Infinity], End: [far, Infinity] };
        if (event.key in steps)
            this.step(...steps[event.key]);
        else if (event.key === 'Enter' || event.key === ' ')
            this.onOpen(this.cursor);
        else
            return;
        event.preventDefault();
    }

    onClick(event) {
        const cell = event.target.closest('.cell');
        if (!cell)
            return;
        this.moveTo(Number(cell.dataset.source), Number(cell.dataset.dut));
        this.onOpen(this.cursor);
    }
}

function groupName(component) {
    return html('div', { class: 'group', role: 'rowheader', 'aria-colindex': 1, title: groupText(component) },
        html('strong', {}, shortened(component.ref, 60)), ' ', shortened(component.value, 60));
}

function sourceName(source) {
    const end = data.sources[source];
    return html('div', { class: 'name', role: 'rowheader', 'aria-colindex': 1, 'data-source': source,
        'aria-label': shortened(end.text, 80), title: describeEnd(end) }, shortened(pinOfText(end), 60));
}
