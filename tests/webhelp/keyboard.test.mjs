// The site with a keyboard alone.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import { buildSite, launch, openPage } from "./site.mjs";

let site, browser;
before(async () => {
    site = buildSite();
    browser = await launch();
});
after(async () => {
    await browser?.close();
    site?.remove();
});

const focused = (page) =>
    page.evaluate(() => {
        const at = document.activeElement;
        return (at.getAttribute("aria-label") || at.textContent || at.id || at.localName).trim();
    });
const press = async (page, ...keys) => {
    for (const key of keys) await page.keyboard.press(key);
};

describe("on a wide window", () => {
    let page;
    before(async () => {
        page = await openPage(browser);
    });
    after(() => assert.deepEqual(page.problems, []));

    test("the first key leads to the text", async () => {
        await page.goto(`${site.url}/Welcome.html`);
        await press(page, "Tab");
        assert.equal(await focused(page), "Skip to the text");
        const box = await page.locator(".skip").boundingBox();
        assert.ok(box.y >= 0, JSON.stringify(box));
        await press(page, "Enter");
        assert.equal(await page.evaluate(() => document.activeElement.id), "main");
    });

    test("Tab visits the parts of a page in their order, the contents once", async () => {
        await page.goto(`${site.url}/Welcome.html`);
        const order = [];
        for (let at = 0; at < 9; at++) {
            await press(page, "Tab");
            order.push(await focused(page));
        }
        assert.deepEqual(order, ["Skip to the text", "Quillbox Handbook", "Search", "Search", "Dark colours", "Contents", "Index", "Glossary", "Welcome"]);
        await press(page, "Tab");
        assert.equal(await page.evaluate(() => Boolean(document.activeElement.closest("main"))), true);
    });

    test("arrow keys open, walk and close the contents", async () => {
        await page.goto(`${site.url}/Welcome.html`);
        await page.locator("[role=treeitem][tabindex='0']").focus();
        await press(page, "ArrowDown", "ArrowDown");
        assert.equal(await focused(page), "Concepts");
        await press(page, "ArrowRight", "ArrowRight");
        assert.equal(await focused(page), "How Quillbox works");
        await press(page, "ArrowLeft");
        assert.equal(await focused(page), "Concepts");
        await press(page, "ArrowLeft");
        assert.equal(await page.getByRole("treeitem", { name: "Concepts", exact: true }).getAttribute("aria-expanded"), "false");
        await press(page, "End");
        assert.equal(await focused(page), "Glossary");
        await press(page, "Home");
        assert.equal(await focused(page), "Welcome");
        await press(page, "b");
        assert.equal(await focused(page), "Building");
        await press(page, "Enter", "ArrowDown");
        const title = await focused(page);
        await press(page, "Enter");
        await page.waitForFunction((wanted) => document.querySelector("[role=treeitem][aria-current]")?.textContent === wanted, title);
    });

    test("what has the focus is outlined", async () => {
        await page.goto(`${site.url}/ContentsTree.html`);
        for (let at = 0; at < 14; at++) {
            await press(page, "Tab");
            const shown = await page.evaluate(() => {
                const at = document.activeElement;
                const parts = [at, at.parentElement].map((part) => getComputedStyle(part));
                return parts.some((style) => style.outlineStyle !== "none" && parseFloat(style.outlineWidth) > 0);
            });
            assert.ok(shown, await focused(page));
        }
    });

    test("the colours change by a key and stay for the next page", async () => {
        await page.goto(`${site.url}/Welcome.html`);
        const button = page.getByRole("button", { name: "Dark colours" });
        await button.focus();
        const paper = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        const light = await paper();
        await press(page, "Enter");
        assert.equal(await button.getAttribute("aria-pressed"), "true");
        assert.notEqual(await paper(), light);
        await page.goto(`${site.url}/Topics.html`);
        assert.notEqual(await paper(), light);
        await page.getByRole("button", { name: "Dark colours" }).click();
        assert.equal(await paper(), light);
    });
});

test("on a narrow window the contents open and close by keys", async () => {
    const page = await openPage(browser, { viewport: { width: 400, height: 700 } });
    await page.goto(`${site.url}/Welcome.html`);
    const button = page.getByRole("button", { name: "Contents" });
    assert.equal(await page.getByRole("treeitem").count(), 0);
    await button.focus();
    await press(page, "Enter");
    assert.equal(await button.getAttribute("aria-expanded"), "true");
    assert.equal(await focused(page), "Welcome");
    await press(page, "Escape");
    assert.equal(await button.getAttribute("aria-expanded"), "false");
    assert.equal(await focused(page), "Contents");
    assert.equal(await page.getByRole("treeitem").count(), 0);
    await press(page, "Tab");
    assert.equal(await focused(page), "Quillbox Handbook");
    await button.focus();
    await press(page, "Enter");
    assert.equal(await focused(page), "Welcome");
    await press(page, "Tab");
    assert.equal(await button.getAttribute("aria-expanded"), "false", await focused(page));
    assert.deepEqual(page.problems, []);
    await page.context().close();
});
