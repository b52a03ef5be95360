// The page of states: steps to choose from, and what the chosen one connects.

function setsText(sets) {
    return sets.flatMap((pins, i) => i > 0 ? [html('strong', {}, ' | '), ...pinNames(pins)] : pinNames(pins));
}

function wrongCount(step) {
    return (step.missing ?? []).length + (step.shorts ?? []).length;
}

function problems(step) {
    const line = (word, ...what) => html('li', {}, html('span', { class: 'wrong' }, word), ' ', ...what);
    const between = ([from, to]) => [named(data.pins[from].text), ' to ', named(data.pins[to].text)];
    return [
        ...step.missing.map((pins) => line('missing', ...between(pins))),
        ...step.shorts.map(({ sets, relays }) => line('short', ...setsText(sets),
            ...relays.length > 0 ? [' by ', ...refs(relays)] : [])),
        ...step.through.map(({ pins, passives }) => html('li', {}, ...between(pins), ' through ', ...refs(passives))),
        ...wrongCount(step) === 0 ? [html('li', {}, `As expected: ${counted(step.expected, 'connection',
            'connections')}, and no short`)] : [],
    ];
}

function showState(step) {
    const setOf = new Map(step.connected.flatMap((pins, set) => pins.map((pin) => [pin, set])));
    byId('relays').replaceChildren(...relaysText(step));
    byId('problems').replaceChildren(...step.missing ? problems(step) : []);
    // What was asked for of pins that are no interface's has no card.
    byId('system').replaceChildren(...data.boards.map((_, i) => frame(i + 1, data.interfacePins, step, setOf)));
    byId('sets').replaceChildren(...step.connected.length === 0 ? [html('li', {}, 'Nothing')]
        : step.connected.map((pins, set) => html('li', {}, setButton(set), ' ', ...pinNames(pins))));
    byId('couplings-title').hidden = step.couplings.length === 0;
    byId('couplings').replaceChildren(...step.couplings.map(({ sets, passives }) =>
        html('li', {}, ...setsText(sets), ' by ', ...refs(passives))));
    showSet(-1);
}

function stepNotes(step) {
    const relays = html('span', { class: 'about' }, counted(step.relays.length, 'relay', 'relays'));
    return wrongCount(step) === 0 ? [relays]
        : [relays, html('span', { class: 'wrong' }, `\u2715 ${wrongCount(step)}`)];
}

function showHeader() {
    const wrong = data.steps.filter((step) => wrongCount(step) > 0).length;
    const isCompared = data.steps.some((step) => step.missing);
    byId('summary').append(counted(data.steps.length, 'step', 'steps'),
        isCompared ? `; ${wrong === 0 ? 'all as expected' : `${wrong} not as expected`}` : '');
    showBoards();
    byId('wrong-label').hidden = !isCompared;
    if (data.unknown.length > 0)
        byId('unknown').append('What these relays connect is not known: ', ...refs(data.unknown));
}

addTheme();
showHeader();
byId('print').addEventListener('click', () => print());
new StepList({ notesOf: stepNotes, isWrong: (step) => wrongCount(step) > 0, show: showState });
