// What the data of the page says of components.

const data = JSON.parse(byId('data').textContent);

// There may be any number of switches on a route, or of pins in a set; people look at the first ones.
const mostShown = 300;

function componentOf(place) {
    return data.components[place.component];
}

function typeOf(component) {
    return component.properties.CompType ?? '';
}

function isOfType(component, type) {
    return typeOf(component).toLowerCase() === type;
}

function isResistor(component) {
    return isOfType(component, 'resistor');
}

// "Relay reed 1 A"
function aboutText(component, longest) {
    return shortened([typeOf(component), component.value].filter((text) => text !== '').join(' '), longest);
}
