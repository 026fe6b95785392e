// The pages as a strict reader of HTML sees them.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { relative } from "node:path";
import { after, before, test } from "node:test";
import { parse } from "parse5";
import { buildSite, filesBelow } from "./site.mjs";

let site;
before(() => {
    site = buildSite();
});
after(() => site?.remove());

test("no page has a parse error", () => {
    const errors = [];
    let pages = 0;
    for (const file of filesBelow(site.folder).filter((name) => name.endsWith(".html"))) {
        pages++;
        const onParseError = ({ code, startLine }) => errors.push(`${relative(site.folder, file)}:${startLine}: ${code}`);
        parse(readFileSync(file, "utf8"), { onParseError, sourceCodeLocationInfo: true });
    }
    assert.deepEqual(errors, []);
    assert.ok(pages >= 30);
});

const all = function* (node) {
    yield node;
    for (const child of node.childNodes ?? []) yield* all(child);
};

test("landmarks, one heading of the first level, named fields and images with texts on every page", () => {
    for (const file of filesBelow(site.folder).filter((name) => name.endsWith(".html"))) {
        const nodes = [...all(parse(readFileSync(file, "utf8")))].filter((node) => node.tagName);
        const of = (name) => nodes.filter((node) => node.tagName === name);
        const attribute = (node, name) => node.attrs.find((one) => one.name === name)?.value;
        const place = relative(site.folder, file);
        for (const name of ["main", "header", "h1", "title"]) assert.equal(of(name).length, 1, `${place}: ${name}`);
        assert.ok(attribute(of("html")[0], "lang"), place);
        for (const nav of of("nav")) assert.ok(attribute(nav, "aria-label") ?? attribute(nav, "aria-labelledby"), `${place}: nav`);
        for (const image of of("img")) assert.notEqual(attribute(image, "alt"), undefined, place);
        for (const field of of("input")) {
            const named = attribute(field, "aria-label") ?? field.parentNode.tagName === "label";
            assert.ok(named, `${place}: input`);
        }
    }
});
