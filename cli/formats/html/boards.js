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
