// kshop preview with shaders of its own, and the page that it serves in a browser.
// KSHOP names the program, PREVIEW_MODULES the directory in which playwright-core is installed.

import assert from "node:assert/strict";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { createRequire } from "node:module";
import { spawn } from "node:child_process";
import { CATALOGUE, METADATA } from "./fixtures.mjs";

const HERE = path.dirname(new URL(import.meta.url).pathname);
const MODULES = process.env.PREVIEW_MODULES ?? HERE;
const { chromium } = createRequire(path.join(MODULES, "package.json"))("playwright-core");
const CHROMIUM = ["/usr/bin/chromium", "/usr/bin/chromium-browser"].find((file) => fs.existsSync(file));

// What would let the tests see the person's own set-up.
const FOREIGN = /^(HOUDINI_|KORVAN_|ZELK_|LC_|LANG|PYTHONPATH$|HH$)/;
// Milliseconds for whatever a person would see at once; a smaller PREVIEW_PATIENCE is for tests that are meant to fail.
const GENEROUS = Number(process.env.PREVIEW_PATIENCE ?? 15000);

export const sleep = (time) =>
  new Promise((resolve) => {
    setTimeout(resolve, time);
  });

/** Tries until `check` throws nothing more; then gives what it returned. */
export async function eventually(check) {
  const end = Date.now() + GENEROUS;
  for (;;) {
    try {
      return await check();
    } catch (error) {
      if (Date.now() > end) throw error;
      await sleep(50);
    }
  }
}

/** A preview that runs: its address, its files, and its interface for asking what the node has. */
export class Preview {
  constructor({ catalogue = CATALOGUE, metadata = METADATA } = {}) {
    this.home = fs.mkdtempSync(path.join(os.tmpdir(), "kshop_preview_"));
    this.metadataFile = path.join(this.home, "shaders", "korvan", "metadata", "shaders.mtd");
    fs.mkdirSync(path.dirname(this.metadataFile), { recursive: true });
    fs.writeFileSync(path.join(this.home, "catalogue.json"), JSON.stringify(catalogue));
    this.writeMetadata(metadata);
  }

  writeMetadata(text) {
    fs.writeFileSync(this.metadataFile, text);
  }

  environment() {
    const kept = Object.entries(process.env).filter(([name]) => !FOREIGN.test(name));
    return {
      ...Object.fromEntries(kept),
      HOME: this.home,
      HOUDINI_PATH: `${path.join(this.home, "shaders")};&`,
      KORVAN_CATALOGUE: path.join(this.home, "catalogue.json"),
      ZELK_IPR_ENDPOINT: `ipc://${path.join(this.home, "render")}`,
    };
  }

  /** Starts it; `port` "0" is any that is free. */
  async start(port = "0") {
    this.process = spawn(process.env.KSHOP, ["preview", "--port", port], {
      env: this.environment(),
      stdio: ["ignore", "pipe", "pipe"],
    });
    this.said = "";
    this.ended = new Promise((resolve) => {
      this.process.on("exit", resolve);
    });
    this.process.stderr.on("data", (text) => {
      this.said += text;
    });
    this.process.stdout.on("data", (text) => {
      this.said += text;
    });
    this.address = await eventually(() => {
      const address = /http:\/\/\S+/.exec(this.said)?.[0];
      assert.ok(address, `kshop preview printed no address: ${this.said}`);
      return address;
    });
    const url = new URL(this.address);
    this.origin = url.origin;
    this.token = url.searchParams.get("token");
  }

  async request(where, options = {}) {
    const response = await fetch(this.origin + where, {
      ...options,
      headers: { "X-Preview-Token": this.token, ...options.headers },
    });
    return response.json();
  }

  node(type) {
    return this.request(`/api/node?type=${encodeURIComponent(type)}`);
  }

  edit(body) {
    return this.request("/api/edit", {
      method: "POST",
      body: JSON.stringify(body),
      headers: { "Content-Type": "application/json" },
    });
  }

  async stop() {
    if (!this.process || this.process.exitCode !== null) return;
    this.process.kill("SIGTERM");
    await this.ended;
  }

  async remove() {
    await this.stop();
    fs.rmSync(this.home, { recursive: true, force: true });
  }
}

/** The first parameter that `wanted` accepts, wherever it stands. */
function findParm(parms, wanted) {
  for (const parm of parms) {
    if (wanted(parm)) return parm;
    for (const group of [...(parm.tabs ?? []), ...(parm.instances ?? [])]) {
      const found = findParm(group.parms, wanted);
      if (found) return found;
    }
  }
  return undefined;
}

/** What a test looks at: a page that shows one node, with words for the things on it. */
class Scene {
  constructor(preview, page, type) {
    Object.assign(this, { preview, page, type });
  }

  /** The element of the field of a parameter. */
  field(token) {
    return this.page.locator(`.field[data-token="${token}"]`);
  }

  /** The field's text entry; `label` tells several apart. */
  entry(token, label) {
    return label
      ? this.field(token).getByLabel(label, { exact: true })
      : this.field(token).locator("input.entry").first();
  }

  /** Types into an entry and leaves it with Enter. */
  async write(locator, text) {
    await locator.fill(text);
    await locator.press("Enter");
  }

  /** What the node itself has: the parameter as the server tells it. */
  async parm(token) {
    const { parms } = await this.preview.node(this.type);
    return findParm(parms, (parm) => parm.token === token);
  }

  /** Waits until the node's parameter is as `expected`, a part of it. */
  async nodeHas(token, expected) {
    return eventually(async () => {
      const parm = await this.parm(token);
      const part = Object.fromEntries(Object.keys(expected).map((name) => [name, parm?.[name]]));
      assert.deepEqual(rounded(part), expected);
    });
  }

  /** Waits until the locator's value is `text`. */
  async shows(locator, text) {
    return eventually(async () => assert.equal(await locator.inputValue(), text));
  }

  /** Waits until the locator's text holds `text`. */
  async says(locator, text) {
    return eventually(async () =>
      assert.ok(
        (await locator.innerText()).includes(text),
        `"${await locator.innerText()}" has no "${text}"`,
      ),
    );
  }

  async tab(name) {
    await this.page.getByRole("tab", { name }).first().click();
  }

  /** Chooses from a menu that a knob opens. */
  async choose(knob, item) {
    await knob.click();
    await this.page.locator(".popup .menu-item").filter({ hasText: item }).first().click();
  }

  async open(type) {
    this.type = type;
    await this.page.goto(`${this.preview.origin}/?token=${this.preview.token}#${type}`);
    await this.page.locator(".title code", { hasText: type }).waitFor({ timeout: GENEROUS });
  }
}

/** Numbers as the page shows them: single precision is noise behind the sixth digit. */
export function rounded(value) {
  if (typeof value === "number") return Number(value.toPrecision(6));
  if (Array.isArray(value)) return value.map(rounded);
  if (value && typeof value === "object")
    return Object.fromEntries(Object.entries(value).map(([k, v]) => [k, rounded(v)]));
  return value;
}

let browser;

async function startBrowser() {
  assert.ok(CHROMIUM, "chromium is missing; run script/bootstrap --test");
  browser ??= await chromium.launch({
    executablePath: CHROMIUM,
    args: ["--no-sandbox", "--disable-dev-shm-usage"],
  });
  return browser;
}

/** Ends the browser; what uses openScene calls it at the end. */
export async function closeBrowser() {
  await browser?.close();
  browser = undefined;
}

/** A page on `type` of a preview of its own. `complaints` collects what the browser's console has to say. */
export async function openScene(type, { preview = new Preview(), ...look } = {}) {
  await preview.start();
  const context = await (
    await startBrowser()
  ).newContext({ viewport: { width: 1280, height: 800 }, ...look });
  const page = await context.newPage();
  page.setDefaultTimeout(GENEROUS);
  const scene = new Scene(preview, page, type);
  scene.complaints = [];
  page.on("pageerror", (error) => scene.complaints.push(String(error)));
  page.on("console", (message) => {
    if (message.type() === "error") scene.complaints.push(message.text());
  });
  await scene.open(type);
  return scene;
}
