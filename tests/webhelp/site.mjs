// What the tests of the site share: the handbook built with the template, a browser, and the site over HTTP and from a
// folder. QUILLBOX names the program.
import { execFileSync } from "node:child_process";
import { cpSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { extname, join, relative } from "node:path";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const source = join(import.meta.dirname ?? new URL(".", import.meta.url).pathname, "..", "..");
const program = process.env.QUILLBOX ?? join(source, "out/dev/bin/quillbox");

const types = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css", ".svg": "image/svg+xml", ".png": "image/png" };

// A built site in a folder of its own. `change` may alter the text of each of the project's files before.
export function buildSite(change = (text) => text) {
    const folder = mkdtempSync(join(tmpdir(), "quillbox-site-"));
    const project = join(folder, "project");
    const listed = execFileSync("git", ["ls-files", "-z", "."], { cwd: join(source, "examples/handbook"), encoding: "utf8" });
    for (const name of listed.split("\0").filter(Boolean)) {
        cpSync(join(source, "examples/handbook", name), join(project, name), { recursive: true });
        if (![".xml", ".qbp"].includes(extname(name))) continue;
        writeFileSync(join(project, name), change(readFileSync(join(project, name), "utf8"), name));
    }
    const site = join(folder, "site");
    execFileSync(program, ["build", join(project, "handbook.qbp"), "--template", "Web Help", "--site", site, "--no-compile"], {
        stdio: ["ignore", "ignore", "inherit"],
        env: { ...process.env, QUILLBOX_REGISTRY: join(folder, "registry") },
    });
    return { folder: site, url: pathToFileURL(site).href, remove: () => rmSync(folder, { recursive: true }) };
}

export function filesBelow(folder) {
    return readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
        const path = join(folder, entry.name);
        return entry.isDirectory() ? filesBelow(path) : [path];
    });
}

// Serves the folder on a free port of this machine; `missing` holds what was asked for and is not there.
export async function serve(folder) {
    const files = new Map(filesBelow(folder).map((file) => ["/" + relative(folder, file), file]));
    const missing = [];
    const server = createServer((request, response) => {
        const file = files.get(decodeURIComponent(new URL(request.url, "http://localhost").pathname));
        if (!file) missing.push(request.url);
        response.writeHead(file ? 200 : 404, { "Content-Type": types[extname(file ?? "")] ?? "text/plain" });
        response.end(file ? readFileSync(file) : "");
    });
    await new Promise((ready) => server.listen(0, "127.0.0.1", ready));
    return { url: `http://127.0.0.1:${server.address().port}`, missing, stop: () => server.close() };
}

export function launch() {
    return chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu"] });
}

// A page that keeps what went wrong in it.
export async function openPage(browser, options = {}) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
    const page = await context.newPage();
    page.problems = [];
    page.on("console", (message) => {
        if (["error", "warning"].includes(message.type())) page.problems.push(message.text());
    });
    page.on("pageerror", (error) => page.problems.push(String(error)));
    page.on("requestfailed", (request) => {
        const reason = request.failure().errorText;
        if (reason !== "net::ERR_ABORTED") page.problems.push(`${request.url()}: ${reason}`);
    });
    return page;
}
