// Runs before the page is shown: tells the styles that scripts are on, and takes up the colours that the reader chose.
"use strict";

const webhelp = {
    // What the browser remembers; some browsers keep nothing for pages of a folder.
    remembered(store, key) {
        try {
            return window[store].getItem(key);
        } catch {
            return null;
        }
    },
    remember(store, key, value) {
        try {
            window[store].setItem(key, value);
        } catch {
            // The page works without.
        }
    },
};

document.documentElement.classList.add("scripted");
{
    const theme = webhelp.remembered("localStorage", "webhelp-theme");
    if (theme === "light" || theme === "dark") document.documentElement.dataset.theme = theme;
}
