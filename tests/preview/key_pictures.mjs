// The pictures of docs/shader-writers.md, made from its own examples. In front of an example stands
//   <!-- picture: NAME; of: PART...; after: ACTION ARGUMENT..., ... -->
// where parts and actions are rows of the tables below. Parts stand one below the other; those joined by a "+" are cut out
// as they stand on the page. A shader of the catalogue has, in a picture, those of its
// parameters that the example names.

import fs from "node:fs";
import path from "node:path";
import { Preview, eventually, openScene, sleep } from "./scene.mjs";

const DOCS = path.join(path.dirname(new URL(import.meta.url).pathname), "..", "..", "docs");
const EXAMPLE = /^<!-- picture: ([\w-]+)(?:; of: ([\w +]+))?(?:; after: ([^>]+?))? -->\n```toml\n(.*?)^```$/gms;
const LOOK = { viewport: { width: 1120, height: 620 }, colorScheme: "light" };
const MARGIN = 6;

// What a picture can hold.
const PARTS = {
  fields: (s) => s.page.locator("#parms > .rows > *"),
  tile: (s) => s.page.locator("#tile .tile"),
  menu: (s) => s.page.locator("#tree .group"),
  title: (s) => s.page.locator("#title"),
  help: (s) => s.page.locator("#help > *"),
  popup: (s) => s.page.locator(".popup"),
  console: (s) => s.page.locator(".console pre"),
};

// What is done on the page first.
const ACTIONS = {
  toggle: (s, token) => s.field(token).getByRole("switch").click(),
  menu: (s, token) => s.field(token).locator(".choose:visible, .menu-button").click(),
  pick: (s, label) => s.page.locator(".popup .menu-item").filter({ hasText: label }).first().click(),
  press: (s, token) => s.field(token).getByRole("button").first().click(),
  hover: (s, token) => s.field(token).hover(),
  write: (s, token, text) => s.write(s.entry(token), text),
};

const read = (name) => fs.readFileSync(path.join(DOCS, name), "utf8");
const names = (text, name) => new RegExp(`\\b${name}\\b`).test(text);

/** The shaders of `document` that `example` names, with the parameters that it names. */
export function shadersOf(example, document) {
  return {
    nodes: document.nodes
      .filter((node) => names(example, node.name))
      .map((node) => ({ ...node, parameters: node.parameters.filter(({ name }) => names(example, name)) })),
  };
}

/** The walk's shader at its end: the first metadata block with the lines that the next two put into it. */
function walk(text) {
  const blocks = [...text.split("\n## The catalogue")[0].matchAll(/^```(toml|json)\n(.*?)^```$/gms)];
  const [first, into, condition] = blocks.filter(([, kind]) => kind === "toml").map(([, , block]) => block);
  return {
    name: "ten-minutes",
    parts: ["fields"],
    actions: [],
    catalogue: JSON.parse(blocks.find(([, kind]) => kind === "json")[2]),
    metadata: first
      .replace('"houdini.category" = "Texture"\n', (line) => line + into)
      .replace("softmax = 2\n", (line) => line + condition),
  };
}

/** Every picture of the page. */
export function keyPictures() {
  const text = read("shader-writers.md");
  const document = JSON.parse(read("guide/demo.json"));
  const examples = [...text.matchAll(EXAMPLE)].map(([, name, parts = "fields", actions = "", metadata]) => ({
    name,
    parts: parts.trim().split(" "),
    actions: actions.split(",").map((action) => action.trim().split(" ")).filter(([verb]) => verb),
    catalogue: shadersOf(metadata, document),
    metadata,
  }));
  return [walk(text), ...examples];
}

async function boxesOf(scene, part) {
  const all = await PARTS[part](scene).all();
  const boxes = await Promise.all(all.map((element) => element.boundingBox()));
  const shown = boxes.filter((box) => box && box.width > 0 && box.height > 0);
  if (shown.length === 0) throw new Error(`the page shows no ${part}`);
  return shown;
}

/** The rectangle around parts that are joined by "+". */
async function frameOf(scene, joined) {
  const boxes = (await Promise.all(joined.split("+").map((part) => boxesOf(scene, part)))).flat();
  const x = Math.max(0, Math.min(...boxes.map((box) => box.x)) - MARGIN);
  const y = Math.max(0, Math.min(...boxes.map((box) => box.y)) - MARGIN);
  const right = Math.max(...boxes.map((box) => box.x + box.width)) + MARGIN;
  const bottom = Math.max(...boxes.map((box) => box.y + box.height)) + MARGIN;
  return {
    x,
    y,
    width: Math.min(LOOK.viewport.width, right) - x,
    height: Math.min(LOOK.viewport.height, bottom) - y,
  };
}

const SHOT = { animations: "disabled", caret: "hide" };

async function cut(scene, joined) {
  const clip = await eventually(() => frameOf(scene, joined));
  return scene.page.screenshot({ ...SHOT, clip });
}

/** Writes the pieces one below the other. */
async function stack(scene, pieces, file) {
  const page = await scene.page.context().newPage();
  const images = pieces.map((piece) => `<img src="data:image/png;base64,${piece.toString("base64")}">`);
  await page.setContent(
    `<div style="display: inline-grid; gap: 4px; justify-items: start">${images.join("")}</div>`,
  );
  await page.locator("div").screenshot({ ...SHOT, path: file });
}

async function prepare(scene, picture) {
  const { page } = scene;
  await page.getByRole("searchbox").fill("rust");
  // Marks of advice, such as for a missing help, which short examples do not have.
  const marks = await page.locator(".field .mark").all();
  await Promise.all(marks.map((mark) => mark.evaluate((element) => (element.style.visibility = "hidden"))));
  if (picture.parts.includes("console")) await page.getByRole("tab", { name: "Console" }).click();
  for (const [verb, ...rest] of picture.actions) {
    await ACTIONS[verb](scene, ...rest);
    await sleep(250); // the node answers, and the page follows
  }
  if (!picture.parts.some((part) => part.includes("popup")) && !picture.actions.some(([verb]) => verb === "hover"))
    await page.mouse.move(1, 1);
  await page.evaluate(() => document.fonts.ready);
}

/** Makes DIRECTORY/NAME.png. */
export async function takeKeyPicture(picture, directory) {
  const preview = new Preview(picture);
  try {
    const scene = await openScene("korvan::rust", { preview, ...LOOK });
    await prepare(scene, picture);
    const file = path.join(directory, `${picture.name}.png`);
    const pieces = [];
    for (const part of picture.parts) pieces.push(await cut(scene, part));
    if (pieces.length === 1) fs.writeFileSync(file, pieces[0]);
    else await stack(scene, pieces, file);
    await scene.page.context().close();
    return file;
  } finally {
    await preview.remove();
  }
}
