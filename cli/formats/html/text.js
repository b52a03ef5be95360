'use strict';

// A name may hold anything and be of any length. It gets into the page as text alone, through these functions.

const invisible = /[\u0000-\u001f\u007f-\u009f\u200b-\u200f\u2028-\u202e\u2066-\u2069\ufeff]/g;

function visible(text) {
    return text.replace(invisible, (c) => {
        const code = c.charCodeAt(0).toString(16).toUpperCase();
        return code.length > 2 ? '\\u' + code.padStart(4, '0') : '\\x' + code.padStart(2, '0');
    });
}

function shortened(text, longest) {
    if (text.length <= longest)
        return visible(text);
    const isWithinPair = /[\ud800-\udbff]/.test(text.charAt(longest - 2));
    return visible(text.slice(0, longest - (isWithinPair ? 2 : 1))) + '\u2026';
}

// For the rest of a name that is shortened elsewhere.
function inFull(text) {
    return shortened(text, 2000);
}

function counted(count, one, many) {
    return `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
}

function fill(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes))
        element.setAttribute(name, value);
    element.append(...children);
    return element;
}

function html(tag, attributes = {}, ...children) {
    return fill(document.createElement(tag), attributes, children);
}

function svg(tag, attributes = {}, ...children) {
    return fill(document.createElementNS('http://www.w3.org/2000/svg', tag), attributes, children);
}

function byId(id) {
    return document.getElementById(id);
}

// A name of the netlist, whose direction of writing changes nothing around it.
function named(text, longest = 80, className = '') {
    return html('bdi', { class: className, title: inFull(text) }, shortened(text, longest));
}
