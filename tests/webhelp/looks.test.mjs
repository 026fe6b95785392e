// Widths, colours, paper, and pages without scripts.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import { buildSite, filesBelow, launch, openPage } from "./site.mjs";
import { relative } from "node:path";

let site, browser, names;
before(async () => {
    site = buildSite((text) =>
        text.replace("Title=\"The contents tree\"", `Title="${"A title that goes on and on, ".repeat(4)}Donaudampfschifffahrtsgesellschaftskapitänsmützenhersteller"`));
    names = filesBelow(site.folder).map((file) => relative(site.folder, file)).filter((name) => name.endsWith(".html"));
    browser = await launch();
});
after(async () => {
    await browser?.close();
    site?.remove();
});

for (const width of [320, 400, 768, 1024, 1280, 1600, 2400]) {
    test(`no page is wider than a window of ${width}`, async () => {
        const page = await openPage(browser, { viewport: { width, height: 800 } });
        for (const name of names.filter((name) => name !== "index.html")) {
            await page.goto(`${site.url}/${name}`);
            const wide = await page.evaluate(() => document.documentElement.scrollWidth);
            assert.ok(wide <= width, `${name}: ${wide}`);
        }
        assert.deepEqual(page.problems, []);
        await page.context().close();
    });
}

// As WCAG 2 has it, of each text that is shown, against the ground that lies behind it.
function poorTexts() {
    const parse = (colour) => {
        const [r, g, b, a = 1] = colour.match(/[\d.]+/g).map(Number);
        return { r, g, b, a };
    };
    const over = (top, below) => ({
        r: top.r * top.a + below.r * (1 - top.a),
        g: top.g * top.a + below.g * (1 - top.a),
        b: top.b * top.a + below.b * (1 - top.a),
        a: 1,
    });
    const ground = (element) => {
        const layers = [];
        for (let at = element; at; at = at.parentElement) layers.push(parse(getComputedStyle(at).backgroundColor));
        return layers.reduceRight((below, top) => over(top, below), { r: 255, g: 255, b: 255, a: 1 });
    };
    const light = ({ r, g, b }) => {
        const part = (value) => (value / 255 <= 0.03928 ? value / 255 / 12.92 : ((value / 255 + 0.055) / 1.055) ** 2.4);
        return 0.2126 * part(r) + 0.7152 * part(g) + 0.0722 * part(b);
    };
    const poor = [];
    let count = 0;
    const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
    while (texts.nextNode()) {
        const element = texts.currentNode.parentElement;
        if (!texts.currentNode.data.trim() || !element.checkVisibility() || element.closest(".skip, noscript")) continue;
        const behind = ground(element);
        const text = over(parse(getComputedStyle(element).color), behind);
        const [high, low] = [light(text), light(behind)].sort((a, b) => b - a);
        const contrast = (high + 0.05) / (low + 0.05);
        count++;
        if (contrast < 4.5) poor.push(`${texts.currentNode.data.trim().slice(0, 40)}: ${contrast.toFixed(2)}`);
    }
    return { poor, count };
}

for (const colorScheme of ["light", "dark"]) {
    test(`all text stands out in ${colorScheme} colours`, async () => {
        const page = await openPage(browser, { colorScheme, viewport: { width: 1600, height: 900 } });
        const papers = new Set();
        for (const name of ["Welcome.html", "ContentsTree.html", "FileFormat.html", "Glossary.html", "webhelp/index.html", "webhelp/contents.html", "webhelp/search.html?q=contents"]) {
            await page.goto(`${site.url}/${name}`);
            if (name.includes("search")) await page.locator(".hits li").first().waitFor();
            const { poor, count } = await page.evaluate(poorTexts);
            assert.deepEqual(poor, [], name);
            assert.ok(count > 30, `${name}: ${count}`);
            papers.add(await page.evaluate(() => getComputedStyle(document.body).backgroundColor));
        }
        assert.equal(papers.size, 1);
        const sum = [...papers][0].match(/\d+/g).slice(0, 3).map(Number).reduce((a, b) => a + b);
        assert.ok(colorScheme === "light" ? sum > 600 : sum < 150, [...papers][0]);
        await page.context().close();
    });
}

describe("without scripts", () => {
    let page;
    before(async () => {
        page = await openPage(browser, { javaScriptEnabled: false });
    });

    test("contents, index, glossary and topics are there", async () => {
        await page.goto(`${site.url}/Welcome.html`);
        assert.equal(await page.getByRole("button", { name: "Dark colours" }).isVisible(), false);
        await page.getByRole("link", { name: "Contents", exact: true }).click();
        await page.waitForURL("**/webhelp/contents.html");
        await page.locator(".outlined").getByRole("link", { name: "The project" }).click();
        await page.waitForURL("**/Projects.html");
        await page.getByRole("link", { name: "Index", exact: true }).click();
        await page.waitForURL("**/webhelp/index.html");
        assert.ok((await page.locator(".entries a:visible").count()) > 30);
        assert.equal(await page.locator(".filter").isVisible(), false);
        await page.goto(`${site.url}/webhelp/search.html`);
        assert.match(await page.locator("main").textContent(), /needs scripts/);
    });

    test("the menu of a narrow window lies open", async () => {
        await page.setViewportSize({ width: 400, height: 700 });
        await page.goto(`${site.url}/Welcome.html`);
        assert.equal(await page.getByRole("link", { name: "Index", exact: true }).isVisible(), true);
    });
});

test("writing from right to left has the contents at its right, and fits", async () => {
    const arabic = buildSite((text) => text.replace('<VariableValue Name="Language">en<', '<VariableValue Name="Language">ar<'));
    const page = await openPage(browser);
    await page.goto(`${arabic.url}/ContentsTree.html`);
    const side = await page.locator(".side").boundingBox();
    assert.equal(side.x + side.width, 1280);
    const item = page.locator("[role=treeitem][aria-current]");
    await item.focus();
    await page.keyboard.press("ArrowRight");
    assert.equal(await page.evaluate(() => document.activeElement.textContent), "The project");
    await page.keyboard.press("ArrowLeft");
    await page.keyboard.press("ArrowLeft");
    assert.equal(await page.evaluate(() => document.activeElement.textContent), "Topics");
    for (const width of [400, 1600]) {
        await page.setViewportSize({ width, height: 800 });
        assert.ok((await page.evaluate(() => document.documentElement.scrollWidth)) <= width, `${width}`);
    }
    assert.deepEqual(page.problems, []);
    await page.context().close();
    arabic.remove();
});

test("paper gets the text alone", async () => {
    const page = await openPage(browser);
    await page.goto(`${site.url}/ContentsTree.html`);
    await page.emulateMedia({ media: "print", colorScheme: "dark" });
    for (const part of [".bar", ".side", ".outline", ".way"]) assert.equal(await page.locator(part).isVisible(), false, part);
    assert.equal(await page.locator(".text").isVisible(), true);
    const style = await page.evaluate(() => {
        const { color, backgroundColor } = getComputedStyle(document.body);
        return [color, backgroundColor];
    });
    assert.deepEqual(style, ["rgb(0, 0, 0)", "rgb(255, 255, 255)"]);
    await page.context().close();
});
