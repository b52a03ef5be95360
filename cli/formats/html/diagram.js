// The drawing of a route: from left to right and in rows, with a frame around what lies on one board.
// Its pieces follow one another along a line: ends, switches and plugs, with wires in between.

const lineHeight = 15;
const rowMargin = 26; // for the line that leads to the next row
const frameTitle = 26; // above what a frame holds
const chipHeight = 24;

const measuring = document.createElement('canvas').getContext('2d');

// As in the style sheet.
const refStyle = '600 14px system-ui, sans-serif';
const smallStyle = '400 12px system-ui, sans-serif';
const chipStyle = '600 12px system-ui, sans-serif';
const coilStyle = '600 10px system-ui, sans-serif';

const widths = new Map([refStyle, smallStyle, chipStyle, coilStyle].map((style) => [style, new Map()]));

function textWidth(text, style) {
    const known = widths.get(style);
    if (!known.has(text)) {
        measuring.font = style;
        known.set(text, measuring.measureText(text).width);
    }
    return known.get(text);
}

// As much of the text as fits.
function fitted(text, width, style) {
    let result = shortened(text, 100);
    for (let length = result.length; textWidth(result, style) > width && length > 1; --length)
        result = shortened(text, length - 1);
    return result;
}

function label(x, y, text, className, anchor = 'middle') {
    return svg('text', { x, y, class: className, 'text-anchor': anchor }, text);
}

function widthFor(texts, style, least, most) {
    const widest = Math.max(0, ...texts.map((text) => textWidth(shortened(text, 100), style)));
    return Math.min(Math.max(Math.ceil(widest) + 20, least), most);
}

function endPiece(end, word, isFirst) {
    const component = componentOf(end);
    const about = aboutText(component, 2000);
    const pin = `pin ${pinText(end.pin)}`;
    const width = Math.max(widthFor([end.text], refStyle, 110, 200), widthFor([about, pin], smallStyle, 110, 200));
    return {
        isStation: true, board: boardOf(component), width, above: 40, below: 40,
        draw: (x, y) => svg('g', { class: 'end' },
            svg('title', {}, `${word}: ${inFull(end.text)}, ${inFull(about)}, ${inFull(pin)}`),
            svg('rect', { x, y: y - 36, width, height: 72, rx: 10 }),
            label(x + width / 2, y - 10, fitted(end.text, width - 14, refStyle), 'ref'),
            label(x + width / 2, y + 8, fitted(about, width - 14, smallStyle), 'about'),
            label(x + width / 2, y + 24, fitted(pin, width - 14, smallStyle), 'about'),
            svg('circle', { cx: isFirst ? x + width : x, cy: y, r: 4, class: 'terminal' })),
    };
}

// Its text says what the coil has to do; of a way as drawn nobody knows.
function coilOf(crossing, middle, y) {
    const task = data.asDrawn ? 'drawn' : taskOf(crossing);
    const text = { set: crossing.positionText ?? 'set', rest: 'rest', unknown: '?' }[task] ?? '';
    const width = widthFor([text], coilStyle, 22, 70) - (text === '' ? 0 : 8);
    return [
        svg('rect', { x: middle - width / 2, y: y - 38, width, height: 14, rx: 1.5, class: `coil ${task}` }),
        label(middle, y - 27.5, fitted(text, width - 4, coilStyle), `task ${task}`),
    ];
}

// A contact on a route is closed, by its coil or at rest, where the blade lies on the contact that it leaves when it is
// set. It is drawn open where nobody knows how it gets closed.
function contactOf(crossing, middle, y) {
    const task = data.asDrawn ? 'drawn' : taskOf(crossing);
    const isClosed = task === 'set' || task === 'rest';
    const blade = isClosed ? `M${middle - 16},${y}H${middle + 16}` : `M${middle - 16},${y}L${middle + 15},${y - 15}`;
    return [
        svg('path', { d: `M${middle},${y - 24}V${isClosed ? y : y - 9}`, class: 'drive' }),
        svg('path', { d: blade, class: `symbol ${task}` }),
        ...task === 'rest' ? [svg('path', { d: `M${middle + 16},${y}v-11h-6`, class: 'symbol' })] : [],
        svg('path', { d: `M${middle - 26},${y}h10m32,0h10`, class: 'symbol' }),
        svg('circle', { cx: middle - 16, cy: y, r: 3.5, class: 'terminal' }),
        svg('circle', { cx: middle + 16, cy: y, r: 3.5, class: 'terminal' }),
    ];
}

function symbolOf(crossing, middle, y) {
    const component = componentOf(crossing);
    const type = typeOf(component).toLowerCase();
    if (type === 'relay')
        return [...coilOf(crossing, middle, y), ...contactOf(crossing, middle, y)];
    const name = type === 'resistor' ? [] : [label(middle, y + 4, fitted(typeOf(component), 48, smallStyle), 'about')];
    const height = type === 'resistor' ? 18 : 26;
    return [svg('rect', { x: middle - 26, y: y - height / 2, width: 52, height, rx: 2, class: 'symbol' }), ...name];
}

function switchPiece(crossing) {
    const component = componentOf(crossing);
    const pins = [crossing.entry, crossing.exit].map((pin) => pin.number);
    const pinsWidth = 60 + 2 * Math.max(...pins.map((pin) => Math.min(textWidth(shortened(pin, 20), smallStyle), 50)));
    const width = Math.max(widthFor([component.ref], refStyle, 84, 160),
        widthFor([component.value], smallStyle, 84, 160), Math.ceil(pinsWidth) + 8);
    const about = aboutText(component, 2000) + taskText(crossing);
    return {
        isStation: true, board: boardOf(component), width, above: 62, below: 40,
        draw: (x, y) => {
            const middle = x + width / 2;
            return svg('g', { class: 'switch' },
                svg('title', {}, `${inFull(component.ref)}: ${about}, pin ${pins.map(inFull).join(' to ')}`),
                svg('path', { d: `M${x},${y}H${middle - 26}M${middle + 26},${y}H${x + width}`, class: 'wire' }),
                ...symbolOf(crossing, middle, y),
                label(middle, y - 44, fitted(component.ref, width - 6, refStyle), 'ref'),
                label(middle - 28, y - 6, fitted(pins[0], 50, smallStyle), 'pin', 'end'),
                label(middle + 28, y - 6, fitted(pins[1], 50, smallStyle), 'pin', 'start'),
                label(middle, y + 28, fitted(component.value, width - 6, smallStyle), 'about'));
        },
    };
}

function plugPiece(hop) {
    const refs = hop.plugs.map((plug) => plug.ref);
    const pin = hop.joint ? `pin ${hop.joint.pin.number}` : '';
    const width = 2 * (widthFor([...refs, pin], smallStyle, 44, 110) - 6);
    return {
        board: hop.from, nextBoard: hop.to, width, above: 40, below: 40,
        draw: (x, y) => {
            const middle = x + width / 2;
            return svg('g', { class: 'plug' },
                svg('title', {}, `From board ${inFull(boardName(hop.from))} to ${inFull(boardName(hop.to))}` +
                    (hop.joint ? `: ${refs.map(inFull).join(' to ')}, ${inFull(pin)}` : '')),
                svg('path', { d: `M${x},${y}H${middle - 12}M${middle + 12},${y}H${x + width}`, class: 'wire' }),
                svg('path', { d: `M${middle - 2},${y - 9}h-5a9,9 0 0 0 0,18h5`, class: 'socket' }),
                svg('path', { d: `M${middle + 16},${y}H${middle - 5}`, class: 'pinline' }),
                ...refs.map((ref, i) => label(middle + (i === 0 ? -6 : 6), y + 28,
                    fitted(ref, width / 2 - 12, smallStyle), 'plugref', i === 0 ? 'end' : 'start')),
                label(middle - 6, y - 16, fitted(pin, width - 8, smallStyle), 'pin', 'end'));
        },
    };
}

// The names that the net has on the board, of those of which its name is made.
function namesOn(net, board) {
    const text = shortened(net.name, 3000);
    const names = net.joints.length > 0 ? text.split(/(?<=#\d+)\+/) : [text]; // "+" joins the names of joined nets
    return names.filter((name) => name.endsWith(`#${board}`)).map(withoutBoard);
}

const mostNames = 3;

function wirePiece(net, board, connections) {
    const names = namesOn(net, board);
    if (names.length > mostNames)
        names.splice(mostNames - 1, Infinity, `and ${names.length - mostNames + 1} more`);
    const chips = connections.map((connection) => ({ connection, text: `\u25c6 ${connection.text}` }));
    const width = Math.max(widthFor(names, smallStyle, 50, 180) - 4,
        chips.length > 0 ? widthFor(chips.map(({ text }) => text), chipStyle, 90, 200) + 28 : 0);
    return {
        board, width,
        above: 12 + lineHeight * names.length,
        below: chips.length > 0 ? 24 + chips.length * (chipHeight + 6) : 20,
        draw: (x, y) => svg('g', { class: 'net' },
            svg('title', {}, `Net ${inFull(net.name)}`),
            svg('path', { d: `M${x},${y}H${x + width}`, class: 'wire' }),
            ...names.map((name, i) => label(x + width / 2, y - 9 - lineHeight * (names.length - 1 - i),
                fitted(name, width - 8, smallStyle), 'name')),
            ...chipsUnder(chips, x, y, width)),
    };
}

function chipsUnder(chips, x, y, width) {
    if (chips.length === 0)
        return [];
    const top = (i) => y + 20 + i * (chipHeight + 6);
    return [
        svg('path', { d: `M${x + 14},${y}V${top(chips.length - 1) + chipHeight / 2}`, class: 'branch' }),
        ...chips.map(({ connection, text }, i) => svg('g', { class: 'connection' },
            svg('title', {}, `Also connects ${connectionTitle(connection)}`),
            svg('path', { d: `M${x + 14},${top(i) + chipHeight / 2}H${x + 22}`, class: 'branch' }),
            svg('rect', { x: x + 22, y: top(i), width: width - 28, height: chipHeight, rx: 6 }),
            label(x + 30, top(i) + 16, fitted(text, width - 42, chipStyle), 'chip', 'start'))),
        svg('circle', { cx: x + 14, cy: y, r: 4.5, class: 'junction' }),
    ];
}

// The wires and plugs of a net, from the board on which the route enters it to the one on which it leaves.
function netPieces(netPlace, from, to, route) {
    const net = data.nets[netPlace];
    const way = hops(net, from, to);
    const boards = [from, ...way.map((hop) => hop.to)];
    const connections = connectionsOf(route).filter((each) => each.net === netPlace);
    const boardFor = (connection) => {
        const board = boardOf(componentOf(connection));
        return boards.includes(board) ? board : from;
    };
    return boards.flatMap((board, i) => [
        ...(i > 0 ? [plugPiece(way[i - 1])] : []),
        wirePiece(net, board, connections.filter((connection) => boardFor(connection) === board)),
    ]);
}

function piecesOf(route) {
    const stations = [route.source, ...shownCrossingsOf(route)];
    if (route.crossings.length <= mostShown)
        stations.push(route.destination);
    const pieces = [endPiece(route.source, 'From', true)];
    for (let i = 1; i < stations.length; ++i) {
        const [before, after] = [stations[i - 1], stations[i]];
        const net = before.to ?? before.net;
        pieces.push(...netPieces(net, boardOf(componentOf(before)), boardOf(componentOf(after)), route));
        pieces.push(after === route.destination ? endPiece(after, 'To', false) : switchPiece(after));
    }
    return pieces;
}

// A row begins with an end or a switch; where there is little room also behind a plug.
function groupsOf(pieces, width) {
    const groups = [];
    for (const piece of pieces) {
        if (piece.isStation)
            groups.push([]);
        groups.at(-1).push(piece);
    }
    return groups.flatMap((group) => {
        if (widthOf(group) <= width)
            return [group];
        const parts = [[]];
        for (const piece of group) {
            parts.at(-1).push(piece);
            if (piece.nextBoard)
                parts.push([]);
        }
        return parts;
    });
}

function widthOf(pieces) {
    return pieces.reduce((sum, piece) => sum + piece.width, 0);
}

function rowsOf(pieces, width) {
    const rows = [[]];
    for (const group of groupsOf(pieces, width)) {
        if (rows.at(-1).length > 0 && widthOf(rows.at(-1)) + widthOf(group) > width)
            rows.push([]);
        rows.at(-1).push(...group);
    }
    return rows;
}

// From where to where the row lies on each board.
function framesOf(row, left) {
    const frames = [{ board: row[0].board, from: left - 10 }];
    let x = left;
    for (const piece of row) {
        if (piece.nextBoard) {
            frames.at(-1).to = x + piece.width / 2 - 4;
            frames.push({ board: piece.nextBoard, from: x + piece.width / 2 + 4 });
        }
        x += piece.width;
    }
    frames.at(-1).to = x + 10;
    return frames;
}

function drawFrame({ board, from, to }, y, height) {
    const name = `#${board} ${boardName(board)}`;
    return svg('g', { class: `board ${boardColour(board)}` },
        svg('title', {}, `Board ${inFull(name)}`),
        svg('rect', { x: from, y, width: to - from, height, rx: 8 }),
        label(from + 10, y + 18, fitted(name, to - from - 16, chipStyle), 'boardname', 'start'));
}

function drawRow(row, y) {
    const above = Math.max(...row.map((piece) => piece.above));
    const height = frameTitle + above + Math.max(...row.map((piece) => piece.below)) + 10;
    const baseline = y + frameTitle + above;
    const elements = framesOf(row, rowMargin).map((frame) => drawFrame(frame, y, height));
    let x = rowMargin;
    for (const piece of row) {
        elements.push(piece.draw(x, baseline));
        x += piece.width;
    }
    return { elements, baseline, end: x, bottom: y + height };
}

function drawTurn(before, after) {
    const [right, middle, left] = [before.end + rowMargin - 8, before.bottom + rowGap / 2, 8];
    return svg('path', {
        class: 'turn',
        d: `M${before.end},${before.baseline}H${right - 8}q8,0 8,8V${middle - 8}q0,8 -8,8H${left + 8}q-8,0 -8,8` +
            `V${after.baseline - 8}q0,8 8,8H${rowMargin}`,
    });
}

const rowGap = 32;
const leastScale = 0.88; // where that saves a row

function drawRoute(route, width) {
    const pieces = piecesOf(route);
    const [plain, dense] = [1, leastScale].map((scale) => rowsOf(pieces, width / scale - 2 * rowMargin));
    let y = 2;
    const rows = (dense.length < plain.length ? dense : plain).map((row) => {
        const drawn = drawRow(row, y);
        y = drawn.bottom + rowGap;
        return drawn;
    });
    const size = { width: Math.max(...rows.map((row) => row.end)) + rowMargin, height: y - rowGap + 2 };
    const scale = Math.min(Math.max(width / size.width, leastScale), 1);
    return svg('svg', {
        width: size.width * scale, height: size.height * scale,
        viewBox: `0 0 ${size.width} ${size.height}`, 'aria-hidden': 'true',
    },
        ...rows.flatMap((row) => row.elements),
        ...rows.slice(1).map((row, i) => drawTurn(rows[i], row)));
}
