// Going through the site with a pointer, from a folder and over HTTP.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import { buildSite, launch, openPage, serve } from "./site.mjs";

let site, browser, server;
before(async () => {
    site = buildSite();
    server = await serve(site.folder);
    browser = await launch();
});
after(async () => {
    await browser?.close();
    server?.stop();
    site?.remove();
});

for (const way of ["from a folder", "over HTTP"]) {
    describe(`a reader ${way}`, () => {
        let page, base;
        before(async () => {
            base = way === "over HTTP" ? server.url : site.url;
            page = await openPage(browser);
        });
        after(() => {
            assert.deepEqual(page.problems, []);
            assert.deepEqual(server.missing, []);
        });
        const open = (name) => page.goto(`${base}/${name}`);
        const item = (name) => page.getByRole("treeitem", { name, exact: true });
        const heading = () => page.locator("h1").textContent();

        test("begins at the default topic", async () => {
            await open("index.html");
            await page.waitForURL("**/Welcome.html");
            assert.equal(await heading(), "Welcome to Quillbox");
            assert.equal(await item("Welcome").getAttribute("aria-current"), "page");
        });

        test("opens books and follows the contents", async () => {
            await open("Welcome.html");
            assert.equal(await item("Manifests").count(), 0);
            await item("Concepts").click();
            assert.equal(await item("Concepts").getAttribute("aria-expanded"), "true");
            await item("The project").locator("i").click();
            await item("The contents tree").click();
            await page.waitForURL("**/ContentsTree.html");
            assert.equal(await item("The contents tree").getAttribute("aria-current"), "page");
            assert.equal(await item("The project").getAttribute("aria-expanded"), "true");
            await item("Concepts").click();
            assert.equal(await item("Concepts").getAttribute("aria-expanded"), "false");
            assert.equal(await item("The contents tree").isVisible(), false);
        });

        test("sees the current page in the contents without scrolling", async () => {
            await page.setViewportSize({ width: 1280, height: 320 });
            await open("DirtyState.html");
            const box = await page.locator("[role=treeitem][aria-current]").boundingBox();
            assert.ok(box.y > 50 && box.y + box.height < 320, JSON.stringify(box));
            await page.setViewportSize({ width: 1280, height: 800 });
        });

        test("goes up by the trail and on by the way", async () => {
            await open("ContentsTree.html");
            await page.getByRole("navigation", { name: "Where you are" }).getByRole("link", { name: "The project" }).click();
            await page.waitForURL("**/Projects.html");
            const next = page.locator(".way .on b");
            const title = await next.textContent();
            await next.click();
            await page.waitForFunction((wanted) => document.querySelector("h1")?.textContent === wanted, title);
        });

        test("follows a see-also link", async () => {
            await open("ContentsTree.html");
            const related = page.locator(".related").filter({ has: page.getByRole("heading", { name: "See also" }) });
            await related.getByRole("link", { name: "Topics" }).click();
            await page.waitForURL("**/Topics.html");
        });

        test("finds a page by the index, typing a part of an entry", async () => {
            await open("Welcome.html");
            await page.getByRole("link", { name: "Index", exact: true }).click();
            await page.waitForURL("**/webhelp/index.html");
            await page.getByLabel("Show entries with").fill("FORMÁ");
            const shown = page.locator(".entries li:visible");
            const texts = await shown.allTextContents();
            assert.ok(texts.length >= 2 && texts.length < 12, texts.join("|"));
            const files = page.locator(".entries section > ul > li:visible", { hasText: "Files" }).first();
            await files.getByRole("link", { name: "Format" }).click();
            await page.waitForURL("**/FileFormat.html");
        });

        test("is told when no entry fits", async () => {
            await open("webhelp/index.html");
            await page.getByLabel("Show entries with").fill("zzzz");
            assert.equal(await page.locator(".entries li:visible").count(), 0);
            assert.equal(await page.locator(".none").textContent(), "No entry holds this.");
            await page.getByLabel("Show entries with").fill("");
            assert.ok((await page.locator(".entries li:visible").count()) > 30);
        });

        test("looks up a term in the glossary", async () => {
            await open("ContentsTree.html");
            await page.locator(".text").getByRole("link", { name: "contents tree" }).first().click();
            await page.waitForURL("**/Glossary.html#contents-tree");
            const term = page.locator("dt:target");
            assert.equal(await term.textContent(), "contents tree");
            const box = await term.boundingBox();
            assert.ok(box.y > 55 && box.y < 800);
        });

        test("sees the definition of a term at the term", async () => {
            await open("ContentsTree.html");
            const card = page.getByRole("tooltip");
            assert.equal(await card.isVisible(), false);
            const term = page.locator("a.term").first();
            await term.hover();
            assert.match(await card.textContent(), /^The nested list of books and pages/);
            await card.hover();
            assert.equal(await card.isVisible(), true);
            await page.locator("h1").hover();
            assert.equal(await card.isVisible(), false);
            await term.focus();
            assert.equal(await card.isVisible(), true);
            await page.keyboard.press("Escape");
            assert.equal(await card.isVisible(), false);
        });

        test("goes by the outline of a page", async () => {
            await page.setViewportSize({ width: 1600, height: 800 });
            await open("ContentsTree.html");
            await page.locator(".outline").getByRole("link", { name: "Walking the tree" }).click();
            await page.waitForURL("**/ContentsTree.html#walking");
            await page.setViewportSize({ width: 1280, height: 800 });
        });
    });
}
