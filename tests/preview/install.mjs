// Puts playwright-core into the directory PREVIEW_MODULES, as package-lock.json has it. What is there stays.

import fs from "node:fs";
import path from "node:path";
import { spawnSync } from "node:child_process";

const HERE = path.dirname(new URL(import.meta.url).pathname);
const target = process.env.PREVIEW_MODULES ?? HERE;

function versionIn(directory) {
  const file = path.join(directory, "node_modules", "playwright-core", "package.json");
  return fs.existsSync(file) ? JSON.parse(fs.readFileSync(file, "utf8")).version : null;
}

const wanted = JSON.parse(fs.readFileSync(path.join(HERE, "package.json"), "utf8")).devDependencies[
  "playwright-core"
];
if (versionIn(target) === wanted) {
  console.log(`playwright-core ${wanted} is there`);
  process.exit(0);
}

fs.mkdirSync(target, { recursive: true });
if (path.resolve(target) !== path.resolve(HERE)) {
  for (const name of ["package.json", "package-lock.json"])
    fs.copyFileSync(path.join(HERE, name), path.join(target, name));
}
// The browser is Debian's.
const run = spawnSync("npm", ["ci", "--no-audit", "--no-fund"], {
  cwd: target,
  stdio: "inherit",
  env: { ...process.env, PLAYWRIGHT_SKIP_BROWSER_DOWNLOAD: "1" },
});
if (run.error) console.error(`npm could not be started (${run.error.message}); run script/bootstrap --test`);
process.exit(run.status ?? 1);
