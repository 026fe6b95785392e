// The index: shows the entries that hold what is typed, with the terms above and below them.
"use strict";

{
    const field = document.getElementById("filter");
    const entries = document.querySelector(".entries");
    const none = document.querySelector(".none");
    const fold = (text) => text.normalize("NFKD").replace(/[\u0300-\u036f]/g, "").toLowerCase();
    const terms = [...entries.querySelectorAll("li")].filter((item) => !item.closest(".pages"));
    const texts = terms.map((item) => fold(item.firstElementChild.textContent));

    const show = () => {
        const wanted = fold(field.value.trim());
        const kept = new Set();
        terms.forEach((item, number) => {
            if (!texts[number].includes(wanted)) return;
            for (let at = item; at !== entries; at = at.parentElement) kept.add(at);
        });
        for (const item of terms) item.hidden = wanted !== "" && !kept.has(item) && !isBelow(item, kept);
        for (const letter of entries.children) letter.hidden = wanted !== "" && !kept.has(letter);
        document.querySelector(".letters").hidden = wanted !== "";
        none.textContent = kept.size || !wanted ? "" : none.dataset.text;
    };
    // Whether a term above matches by its own text: all below it then shows too.
    const isBelow = (item, kept) => {
        const wanted = fold(field.value.trim());
        for (let at = item.parentElement.closest("li"); at; at = at.parentElement.closest("li")) {
            if (kept.has(at) && fold(at.firstElementChild.textContent).includes(wanted)) return true;
        }
        return false;
    };

    document.querySelector(".filter").hidden = false;
    field.addEventListener("input", show);
}
