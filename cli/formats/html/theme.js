// Light and dark colours: as the browser prefers them, until a button changes them for good.

function stored(theme) {
    try {
        if (theme)
            localStorage.setItem('velk-theme', theme);
        return localStorage.getItem('velk-theme');
    } catch { // not every browser keeps anything for a page from the disk
        return theme;
    }
}

function setTheme(theme) {
    document.documentElement.dataset.theme = theme;
    byId('theme').textContent = theme === 'dark' ? 'Light' : 'Dark';
    byId('theme').setAttribute('aria-label', theme === 'dark' ? 'Use light colours' : 'Use dark colours');
}

function addTheme() {
    const dark = matchMedia('(prefers-color-scheme: dark)');
    const preferred = () => stored() ?? (dark.matches ? 'dark' : 'light');
    dark.addEventListener('change', () => setTheme(preferred()));
    byId('theme').addEventListener('click', () => {
        const theme = document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark';
        stored(theme);
        setTheme(theme);
    });
    setTheme(preferred());
}
