// Runs one file of tests; without the modules of package.json it is skipped (scripts/test installs them).
import { spawnSync } from "node:child_process";
import { existsSync } from "node:fs";
import { fileURLToPath } from "node:url";

const skipped = 77;
const here = (name) => fileURLToPath(new URL(name, import.meta.url));
if (!existsSync(here("node_modules/playwright-core/package.json"))) {
    console.log("Skipped: the modules are not installed; run scripts/test, or npm ci in tests/webhelp");
    process.exit(skipped);
}
const done = spawnSync(process.execPath, ["--test", here(process.argv[2])], { stdio: "inherit" });
process.exit(done.status ?? 1);
