// The search of the site.
import assert from "node:assert/strict";
import { readdirSync, statSync } from "node:fs";
import { join } from "node:path";
import { after, before, describe, test } from "node:test";
import { buildSite, launch, openPage, serve } from "./site.mjs";

let site, browser, server, page;
before(async () => {
    site = buildSite((text) =>
        text.replace("The $$contents tree$$ is what readers see", "Ελληνικός όρος, 東京都庁, Größenmaß, NewTopicList. The $$contents tree$$ is what readers see"));
    server = await serve(site.folder);
    browser = await launch();
});
after(async () => {
    await browser?.close();
    server?.stop();
    site?.remove();
});

const status = () => page.locator(".status").textContent();
const titles = () => page.locator(".hits a").allTextContents();
const settled = (url, question) =>
    page.waitForFunction((wanted) => document.querySelector(".status")?.dataset.asked === wanted, question);

for (const way of ["from a folder", "over HTTP"]) {
    describe(`a search ${way}`, () => {
        let base;
        before(async () => {
            base = way === "over HTTP" ? server.url : site.url;
            page = await openPage(browser);
        });
        after(() => assert.deepEqual(page.problems, []));

        const ask = async (question) => {
            await page.goto(`${base}/webhelp/search.html`);
            await page.locator(".find input").fill(question);
            await settled(base, question);
        };

        test("starts from the field of any page", async () => {
            await page.goto(`${base}/Welcome.html`);
            await page.getByRole("searchbox", { name: "Search" }).fill("contents tree");
            await page.keyboard.press("Enter");
            await page.waitForURL("**/webhelp/search.html?q=contents+tree");
            await settled(base, "contents tree");
            assert.equal((await titles())[0], "The contents tree");
        });

        test("marks the words on the page that it leads to", async () => {
            await ask("captions");
            await page.locator(".hits a").first().click();
            await page.waitForURL("**/ContentsTree.html?words=captions");
            const marked = await page.evaluate(() => [...(CSS.highlights.get("found") ?? [])].map(String));
            assert.ok(marked.some((text) => text.toLowerCase() === "captions"), marked.join());
        });

        test("finds words by their beginnings, without accents and capitals", async () => {
            for (const question of ["grossenmaß", "GRÖSSENMASS", "größenm", "ελληνικοσ", "ΕΛΛΗΝΙΚΌΣ", "東京", "京", "newtopic", "topiclist"]) {
                await ask(question);
                assert.ok((await titles()).includes("The contents tree"), `${question}: ${await titles()}`);
            }
        });

        test("asks for all words", async () => {
            await ask("contents");
            const one = (await titles()).length;
            await ask("contents chmcmd");
            const both = (await titles()).length;
            assert.ok(both > 0 && both < one, `${one}, ${both}`);
        });

        test("says when nothing is found, and takes any text", async () => {
            for (const question of ["qqqxyzzy", "<img src=x onerror=alert(1)>", "\\ \" ' %", "__proto__ constructor"]) {
                await ask(question);
                assert.deepEqual(await titles(), [], question);
                assert.equal(await status(), "No page holds all of these words.");
            }
        });

        test("counts what is found", async () => {
            await ask("größenmaß");
            assert.equal(await status(), "One page");
            await ask("project");
            assert.match(await status(), /^\d+ pages$/);
        });
    });
}

test("no script of the search index is large", () => {
    const folder = join(site.folder, "webhelp/search");
    for (const name of readdirSync(folder)) assert.ok(statSync(join(folder, name)).size < 200000, name);
});
