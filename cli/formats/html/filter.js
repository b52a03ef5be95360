// Which routes a filter lets through.

// "K1 -R3 "K 7"": a word for each component, which may hold stars; those after a minus must not be on a route.
function wordsOf(filterText) {
    return Array.from(filterText.matchAll(/(-?)(?:"([^"]*)"?|(\S+))/g), ([, minus, quoted, plain]) => {
        const text = quoted ?? plain;
        return { isWanted: minus === '', text, pieces: withoutCase(text).split('*') };
    }).filter(({ text }) => text !== '' && text !== '-');
}

// Each character on its own, so that no character changes with those beside it.
function withoutCase(text) {
    return Array.from(text, (c) => c.toUpperCase().toLowerCase()).join('');
}

// The pieces are what stands between the stars; it is enough to look for the first place of each, so that no number of
// stars takes long.
function fits(pieces, text) {
    const [first, last] = [pieces[0], pieces.at(-1)];
    if (pieces.length === 1)
        return text === first;
    const end = text.length - last.length;
    if (first.length > end || !text.startsWith(first) || !text.endsWith(last))
        return false;
    let place = first.length;
    for (const piece of pieces.slice(1, -1)) {
        const found = text.indexOf(piece, place);
        if (found < 0)
            return false;
        place = found + piece.length;
    }
    return place <= end;
}

function asWord(ref) {
    if (ref.length > 200)
        return asWord(ref.slice(0, 200)) + '*';
    return /[\s"]/.test(ref) || ref.startsWith('-') ? `"${ref.replaceAll('"', '*')}"` : ref;
}

const refsWithoutCase = data.components.map(({ ref }) => withoutCase(ref));

// The places of the routes that pass. No number of switches chosen means any.
function filtered({ text, switches, alone }) {
    const words = wordsOf(text).map(({ isWanted, pieces }) => ({
        isWanted,
        isFitting: refsWithoutCase.map((ref) => fits(pieces, ref) || fits(pieces, withoutBoard(ref))),
    }));
    const passes = (route) =>
        (switches.size === 0 || switches.has(route.crossings.length)) &&
        (!alone || route.connections.length === 0) &&
        words.every(({ isWanted, isFitting }) =>
            route.crossings.some((place) => isFitting[data.crossings[place].component]) === isWanted);
    const places = [];
    data.routes.forEach((route, place) => {
        if (passes(route))
            places.push(place);
    });
    return places;
}
