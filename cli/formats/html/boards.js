// What the page knows of boards: data.boards are their files.

// References end in the number of the board: "K3#2".
function boardOf(component) {
    return Number(component.ref.slice(component.ref.lastIndexOf('#') + 1));
}

function withoutBoard(ref) {
    return ref.slice(0, ref.lastIndexOf('#'));
}

function boardName(board) {
    return data.boards[board - 1].replace(/^.*[/\\]/, '').replace(/\.net$/i, '');
}

// As many as the style sheet has.
function boardColour(board) {
    return `board-${(board - 1) % 10}`;
}

function showBoards() {
    byId('boards').append('Boards: ', ...data.boards.map((file, i) =>
        html('span', { class: boardColour(i + 1), title: inFull(file) },
            `#${i + 1} ${shortened(boardName(i + 1), 60)}`)));
}
