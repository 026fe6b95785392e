// The contents at the side, as a tree. A branch is made when it is opened first, so that a tree may be large.
"use strict";

// Captions and links come as they stand in HTML.
function plain(html) {
    return html.replace(/&(lt|gt|quot|amp);/g, (_, name) => ({ lt: "<", gt: ">", quot: '"', amp: "&" })[name]);
}

// The steps of contents.js as nodes with children; without a node to stand under, nodes stay on their level.
function readContents() {
    const top = { children: [] };
    const all = [];
    const open = [];
    let at = top;
    const node = (caption, link) => {
        const made = { caption, link, children: [], parent: at === top ? null : at, number: all.length };
        at.children.push(made);
        all.push(made);
    };
    const down = () => {
        open.push(at);
        at = at.children.at(-1) || at;
    };
    const up = () => {
        at = open.pop();
    };
    webhelp.contents(node, down, up);
    return { top, all };
}

function startTree(side) {
    const { top, all } = readContents();
    if (!all.length) return;
    const here = "../" + document.body.dataset.page;
    const leadsHere = (node) => node.link && plain(node.link) === here + location.hash;
    const current =
        all.find(leadsHere) || all.find((node) => node.link && plain(node.link).split("#")[0] === here);
    const key = "webhelp-open";
    const chosen = new Set(JSON.parse(webhelp.remembered("sessionStorage", key) || "[]"));
    const opened = new Set(chosen);
    for (let node = current; node; node = node.parent) opened.add(node.number);
    const items = new Map();

    const groupName = (node) => "contents-" + node.number;
    const isOpen = (node) => node.children.length > 0 && opened.has(node.number);
    const set = (node, open) => {
        const item = items.get(node);
        for (const numbers of [opened, chosen]) {
            if (open) numbers.add(node.number);
            else numbers.delete(node.number);
        }
        webhelp.remember("sessionStorage", key, JSON.stringify([...chosen]));
        item.setAttribute("aria-expanded", String(open));
        if (open && !item.nextElementSibling) item.after(fill(group(node), node));
        if (item.nextElementSibling) item.nextElementSibling.hidden = !open;
    };

    const makeItem = (node) => {
        const item = document.createElement("a");
        item.setAttribute("role", "treeitem");
        item.tabIndex = -1;
        const caption = document.createElement("span");
        caption.textContent = plain(node.caption);
        item.append(caption);
        if (node.link) item.href = new URL(plain(node.link), folder).href;
        if (node === current) item.setAttribute("aria-current", "page");
        items.set(node, item);
        item.node = node;
        if (!node.children.length) return item;
        item.setAttribute("aria-expanded", String(isOpen(node)));
        item.setAttribute("aria-owns", groupName(node));
        const mark = document.createElement("i");
        mark.setAttribute("aria-hidden", "true");
        item.prepend(mark);
        return item;
    };

    const group = (node) => {
        const made = document.createElement("ul");
        made.setAttribute("role", "group");
        made.id = groupName(node);
        return made;
    };

    // Without recursion: a list that begins open holds its open lists too.
    const fill = (made, of) => {
        const todo = [[of, made]];
        while (todo.length) {
            const [parent, place] = todo.pop();
            for (const node of parent.children) {
                const entry = document.createElement("li");
                entry.setAttribute("role", "none");
                entry.append(makeItem(node));
                place.append(entry);
                if (!isOpen(node)) continue;
                const below = group(node);
                entry.append(below);
                todo.push([node, below]);
            }
        }
        return made;
    };

    const tree = fill(document.createElement("ul"), top);
    tree.setAttribute("role", "tree");
    tree.setAttribute("aria-label", side.getAttribute("aria-label"));
    side.append(tree);
    const shown = () => [...tree.querySelectorAll("[role=treeitem]")].filter((item) => !item.closest("[hidden]"));
    const focusOn = (item) => {
        if (!item) return;
        tree.querySelector("[tabindex='0']")?.setAttribute("tabindex", "-1");
        item.tabIndex = 0;
        item.focus();
    };
    (items.get(current) || tree.querySelector("[role=treeitem]")).tabIndex = 0;

    tree.addEventListener("click", (event) => {
        const item = event.target.closest("[role=treeitem]");
        if (!item) return;
        const onMark = event.target.localName === "i";
        if (item.node.children.length && (onMark || !item.node.link)) {
            event.preventDefault();
            set(item.node, !isOpen(item.node));
        }
    });

    const forwards = getComputedStyle(root).direction === "rtl" ? "ArrowLeft" : "ArrowRight";
    const backwards = forwards === "ArrowRight" ? "ArrowLeft" : "ArrowRight";
    const moves = {
        ArrowDown: (item, all) => focusOn(all[all.indexOf(item) + 1]),
        ArrowUp: (item, all) => focusOn(all[all.indexOf(item) - 1]),
        Home: (item, all) => focusOn(all[0]),
        End: (item, all) => focusOn(all.at(-1)),
        [forwards]: (item, all) => {
            if (!item.node.children.length) return;
            if (isOpen(item.node)) focusOn(all[all.indexOf(item) + 1]);
            else set(item.node, true);
        },
        [backwards]: (item) => {
            if (isOpen(item.node)) set(item.node, false);
            else focusOn(items.get(item.node.parent));
        },
        Enter: (item) => item.click(),
        " ": (item) => item.click(),
    };
    tree.addEventListener("keydown", (event) => {
        const item = event.target.closest("[role=treeitem]");
        if (!item || event.altKey || event.ctrlKey || event.metaKey) return;
        const all = shown();
        if (moves[event.key]) {
            if (event.key === "Enter" && item.href) return;
            moves[event.key](item, all);
            event.preventDefault();
        } else if (event.key.length === 1 && /\S/.test(event.key)) {
            const from = all.indexOf(item) + 1;
            const letter = event.key.toLowerCase();
            focusOn([...all.slice(from), ...all.slice(0, from)].find(
                (other) => other.textContent.trim().toLowerCase().startsWith(letter)));
        }
    });

    const place = items.get(current)?.getBoundingClientRect();
    const view = side.getBoundingClientRect();
    if (place && place.bottom > view.bottom - 40) side.scrollTop += place.top - view.top - view.height / 3;
}
