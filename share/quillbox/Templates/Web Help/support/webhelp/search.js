// The search: finds the pages that hold all words, by the scripts in the folder "search". Only those that a question
// needs are loaded, so that a site of many pages can be searched from a folder and from a phone.
"use strict";

// Words as the search index has them: cut where letters end, writing without blanks in pairs, without accents.
const searchWords = {
    dense: /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Thai}\p{Script=Lao}\p{Script=Khmer}\p{Script=Myanmar}\u30fc]/u,

    form(word) {
        return word
            .normalize("NFKD")
            .replace(/[\u0300-\u036f\u0591-\u05c7\u064b-\u065f\u0670]/g, "")
            .toLowerCase()
            .replace(/\u03c2/g, "\u03c3")
            .replace(/\u00df/g, "ss")
            .normalize("NFKC");
    },

    // Each word with whether longer words that begin so count too.
    of(question) {
        const words = [];
        for (const [run] of question.matchAll(/[\p{L}\p{N}\p{M}]+/gu)) {
            for (const [piece] of run.matchAll(new RegExp(`${this.dense.source}+|[^${this.dense.source.slice(1, -1)}]+`, "gu"))) {
                const characters = [...piece];
                if (!this.dense.test(piece)) {
                    words.push({ text: this.form(piece), open: characters.length > 2 });
                } else if (characters.length === 1) {
                    words.push({ text: this.form(piece), open: true });
                } else {
                    for (let at = 0; at + 1 < characters.length; at++) {
                        words.push({ text: this.form(characters[at] + characters[at + 1]), open: false });
                    }
                }
            }
        }
        return words.filter(({ text }) => !/^[a-z]$/.test(text));
    },
};

const searchData = {
    scripts: new Map(),

    // What the script of that name holds; each is loaded once.
    load(name) {
        if (!this.scripts.has(name)) {
            const script = document.createElement("script");
            const loaded = new Promise((take, fail) => {
                script.onload = () => take(this.taken.get(name));
                script.onerror = () => fail(new Error(name));
            });
            this.scripts.set(name, loaded);
            script.src = new URL(`search/${name}.js`, folder).href;
            document.head.append(script);
        }
        return this.scripts.get(name);
    },
    taken: new Map(),

    // The pages with a word as a map from their numbers to how much it tells there.
    async pagesWith({ text, open }) {
        const { pages, firstWords } = await this.load("index");
        const last = open ? text + "\uffff" : text;
        const from = Math.max(0, firstWords.findLastIndex((word) => word < text));
        const to = firstWords.findLastIndex((word) => word <= last);
        const found = new Map();
        const names = [];
        for (let at = from; at <= to; at++) names.push(`words-${at}`);
        for (const words of await Promise.all(names.map((name) => this.load(name)))) {
            for (const [word, ...postings] of words) {
                if (word < text || word > last) continue;
                if (word !== text && !word.startsWith(text)) continue;
                const rare = Math.log(1 + pages / postings.length);
                let page = 0;
                for (const posting of postings) {
                    page += Math.floor(posting / 10);
                    const told = (posting % 10) * rare * (word === text ? 1 : 0.5);
                    if (!(found.get(page) > told)) found.set(page, told);
                }
            }
        }
        return found;
    },

    // The numbers of the pages that hold all words, the most telling first.
    async search(words) {
        if (!words.length) return [];
        const [first, ...others] = await Promise.all(words.map((word) => this.pagesWith(word)));
        const hits = [];
        for (const [page, told] of first) {
            if (others.every((other) => other.has(page))) {
                hits.push({ page, told: others.reduce((sum, other) => sum + other.get(page), told) });
            }
        }
        return hits.sort((a, b) => b.told - a.told || a.page - b.page).map(({ page }) => page);
    },

    async page(number) {
        const { firstPages } = await this.load("index");
        const script = firstPages.findLastIndex((first) => first <= number);
        const [file, title, opening] = (await this.load(`pages-${script}`))[number - firstPages[script]];
        return { file, title, opening };
    },
};

webhelp.take = (name, data) => searchData.taken.set(name, data);

{
    const step = 20;
    const field = document.querySelector(".find input");
    const status = document.querySelector(".status");
    const list = document.querySelector(".hits");
    const more = document.querySelector(".more");
    let asked = 0;
    let hits = [];
    let question = "";

    const words = () => searchWords.of(question).map(({ text }) => text).join(" ");

    const entry = ({ file, title, opening }) => {
        const link = document.createElement("a");
        link.href = "../" + file.split("/").map(encodeURIComponent).join("/") + "?words=" + encodeURIComponent(words());
        link.textContent = title || file;
        const text = document.createElement("p");
        text.textContent = opening;
        const item = document.createElement("li");
        item.append(link, text);
        return item;
    };

    const showMore = async () => {
        const turn = asked;
        const from = list.children.length;
        const pages = await Promise.all(hits.slice(from, from + step).map((hit) => searchData.page(hit)));
        if (turn !== asked) return;
        list.append(...pages.map(entry));
        markWords(list, words());
        more.hidden = list.children.length >= hits.length;
    };

    const tell = () => {
        const { none, one, many } = status.dataset;
        const texts = { 0: question ? none : "", 1: one };
        status.textContent = texts[hits.length] ?? many.replace("{number}", hits.length.toLocaleString(root.lang));
        status.dataset.asked = question;
    };

    // The address tells the question, so that it can be kept and sent on; not every browser lets a file do this.
    const keepQuestion = () => {
        try {
            history.replaceState(null, "", question ? "?q=" + encodeURIComponent(question) : location.pathname);
        } catch {
            // The search works without.
        }
    };

    // An answer that comes after a later question is dropped.
    const search = async () => {
        const turn = ++asked;
        question = field.value.trim();
        keepQuestion();
        const found = await searchData.search(searchWords.of(question));
        if (turn !== asked) return;
        hits = found;
        list.replaceChildren();
        more.hidden = true;
        await showMore();
        if (turn === asked) tell();
    };

    field.value = new URLSearchParams(location.search).get("q") || "";
    field.addEventListener("input", search);
    field.form.addEventListener("submit", (event) => {
        event.preventDefault();
        search();
    });
    more.addEventListener("click", showMore);
    field.focus();
    search();
}
