// What every page does: the menu, the colours, the contents at the side, the outline of the page.
"use strict";

const folder = new URL(".", document.currentScript.src).href;
const root = document.documentElement;

// The switch between light and dark.
function startTheme() {
    const button = document.querySelector("button.theme");
    const dark = window.matchMedia("(prefers-color-scheme: dark)");
    const isDark = () => (root.dataset.theme ? root.dataset.theme === "dark" : dark.matches);
    const show = () => button.setAttribute("aria-pressed", String(isDark()));
    button.addEventListener("click", () => {
        root.dataset.theme = isDark() ? "light" : "dark";
        webhelp.remember("localStorage", "webhelp-theme", root.dataset.theme);
        show();
    });
    dark.addEventListener("change", show);
    show();
}

// On narrow windows the contents lie behind a button.
function startMenu() {
    const button = document.querySelector("button.menu");
    const side = document.getElementById("side");
    const narrow = window.matchMedia("(max-width: 60rem)");
    const isOpen = () => root.classList.contains("menu-open");
    const set = (open) => {
        root.classList.toggle("menu-open", open);
        button.setAttribute("aria-expanded", String(open));
        side.inert = narrow.matches && !open;
    };
    button.addEventListener("click", () => {
        set(!isOpen());
        if (isOpen()) (side.querySelector("[role=treeitem][tabindex='0']") || side.querySelector("a")).focus();
    });
    narrow.addEventListener("change", () => set(false));
    document.addEventListener("keydown", (event) => {
        if (event.key !== "Escape" || !isOpen()) return;
        set(false);
        button.focus();
    });
    for (const leaving of ["click", "focusin"]) {
        document.addEventListener(leaving, (event) => {
            if (isOpen() && !side.contains(event.target) && !button.contains(event.target)) set(false);
        });
    }
    set(false);
}

// Marks the place at the side that leads to this page.
function markPlace() {
    for (const link of document.querySelectorAll(".places a")) {
        if (link.pathname === location.pathname) link.setAttribute("aria-current", "page");
    }
}

// The headings of the page, where there is room for them beside the text.
function startOutline() {
    const outline = document.querySelector("aside.outline");
    if (!outline) return;
    const headings = [...document.querySelectorAll(".text h2, .text h3")].filter((h) => h.textContent.trim());
    if (headings.length < 2) return;
    const list = document.createElement("ul");
    const links = new Map();
    headings.forEach((heading, number) => {
        const named = heading.id ? heading : heading.querySelector("[id]");
        if (!named) heading.id = "heading-" + (number + 1);
        const link = document.createElement("a");
        link.href = "#" + encodeURIComponent((named || heading).id);
        link.textContent = heading.textContent.trim();
        const item = document.createElement("li");
        item.className = heading.localName;
        item.append(link);
        list.append(item);
        links.set(heading, link);
    });
    outline.append(list);
    outline.hidden = false;
    const mark = () => {
        const passed = headings.filter((heading) => heading.getBoundingClientRect().top < 120);
        const atEnd = window.scrollY + window.innerHeight >= root.scrollHeight - 2;
        const current = (atEnd && window.scrollY > 0 ? headings : passed).at(-1) || headings[0];
        for (const [heading, link] of links) {
            if (heading === current) link.setAttribute("aria-current", "true");
            else link.removeAttribute("aria-current");
        }
    };
    document.addEventListener("scroll", mark, { passive: true });
    mark();
}

// What is wider than the window scrolls by itself, with the keyboard too.
function tameWideParts() {
    for (const table of document.querySelectorAll(".text table, .glossary dd table")) {
        if (table.parentElement.closest("table")) continue;
        const frame = document.createElement("div");
        frame.className = "wide";
        table.replaceWith(frame);
        frame.append(table);
    }
    const check = () => {
        for (const part of document.querySelectorAll(".wide, .text pre")) {
            if (part.scrollWidth > part.clientWidth) part.tabIndex = 0;
            else part.removeAttribute("tabindex");
        }
    };
    window.addEventListener("resize", check);
    check();
}

// The definition of a term, shown where the pointer or the focus is; it stays while the pointer is on it.
function startTerms() {
    const terms = document.querySelectorAll("a.term[title]");
    if (!terms.length) return;
    const card = document.createElement("div");
    card.className = "definition";
    card.id = "definition";
    card.setAttribute("role", "tooltip");
    card.hidden = true;
    document.body.append(card);
    let shown = null;
    const hide = () => {
        shown?.removeAttribute("aria-describedby");
        card.hidden = true;
        shown = null;
    };
    const show = (term, text) => {
        hide();
        shown = term;
        card.textContent = text;
        card.hidden = false;
        term.setAttribute("aria-describedby", card.id);
        const place = term.getClientRects()[0];
        const most = root.clientWidth - card.offsetWidth - 12;
        card.style.left = Math.max(12, Math.min(place.left, most)) + window.scrollX + "px";
        card.style.top = place.bottom + window.scrollY + "px";
    };
    const leave = (event) => {
        const to = event.relatedTarget;
        if (to !== card && to !== shown && document.activeElement !== shown) hide();
    };
    for (const term of terms) {
        const text = term.title;
        term.removeAttribute("title");
        term.addEventListener("pointerenter", () => show(term, text));
        term.addEventListener("focus", () => show(term, text));
        term.addEventListener("pointerleave", leave);
        term.addEventListener("blur", hide);
    }
    card.addEventListener("pointerleave", leave);
    document.addEventListener("keydown", (event) => {
        if (event.key === "Escape") hide();
    });
}

// Shows where words stand in a part of the page, whatever their endings.
function markWords(part, words) {
    if (!window.CSS?.highlights) return;
    const wanted = words.toLowerCase().split(" ").filter(Boolean);
    const ranges = [];
    const texts = document.createTreeWalker(part, NodeFilter.SHOW_TEXT);
    while (texts.nextNode()) {
        const text = texts.currentNode.data.toLowerCase();
        if (text.length !== texts.currentNode.length) continue;
        for (const word of wanted) {
            for (let at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + word.length)) {
                if (at > 0 && /[\p{L}\p{N}]/u.test(text[at - 1]) && /^[\p{Script=Latin}\p{N}]/u.test(word)) continue;
                const range = new Range();
                range.setStart(texts.currentNode, at);
                range.setEnd(texts.currentNode, at + word.length);
                ranges.push(range);
            }
        }
    }
    CSS.highlights.set("found", new Highlight(...ranges));
}

startTheme();
markPlace();
startTree(document.getElementById("side"));
startMenu();
tameWideParts();
startOutline();
startTerms();
markWords(document.getElementById("main"), new URLSearchParams(location.search).get("words") || "");
