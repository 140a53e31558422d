// Makes the pictures of the documents from the running page: node pictures.mjs DIRECTORY [NAME...]
// A picture is a row of the table: the type to show, what is done before, and the part of the page that is kept. The
// pictures of metadata keys come from the page that shows them; the name "keys" stands for all of them.

import fs from "node:fs";
import path from "node:path";
import { keyPictures, takeKeyPicture } from "./key_pictures.mjs";
import { Preview, closeBrowser, openScene } from "./scene.mjs";

const WIDE = { width: 1280, height: 700 };

// A shader with mistakes that are easily made.
const RUST = {
  nodes: [
    {
      name: "zelk__rust",
      kind: "shader",
      output: "rgb",
      parameters: [
        { name: "amount", type: "float", default: 0.5 },
        { name: "tint", type: "rgb", default: [0.35, 0.12, 0.04] },
        { name: "edges", type: "boolean", default: true },
        { name: "edge_width", type: "float", default: 0.1 },
        { name: "scale", type: "float", default: 1 },
      ],
    },
  ],
};

const FAULTY = `# Rust on metal.
["zelk__rust"]
"houdini.label" = "Rust"
"houdini.category" = "Texture"
"houdini.parm.folder.tabs" = "Look;4;Placement;1"
"houdini.order" = "tabs amount tint edges edge_width scale"

["zelk__rust".parameters.amount]
"houdini.label" = "Amount"
desc = "How much of the metal has rusted."
min = 1
max = 0

["zelk__rust".parameters.tint]
"houdini.lable" = "Tint"
desc = "The colour of the rust."

["zelk__rust".parameters.edges]
"houdini.label" = "Begin at the Edges"
desc = "Rust comes to edges first."
"houdini.join_next" = true

["zelk__rust".parameters.edge_width]
"houdini.label" = "Width"
desc = "How far from an edge, in scene units."
"houdini.disable_when" = "{ edges == 0 }"

["zelk__rust".parameters.scale]
"houdini.label" = "Scale"
desc = "Size of the stains."
softmax = 10
`;

async function overview(s) {
  await s.tab("Specular");
  await s.write(s.entry("specular_roughness"), "0.35");
  await s.nodeHas("specular_roughness", { values: [0.35] });
  await s.tab("Base");
  await s.field("base_color").locator(".swatch").click();
  await s.write(s.page.getByLabel("Hexadecimal"), "#d8733a");
  await s.page.keyboard.press("Escape");
  await s.write(s.entry("base"), "0.65");
  await s.nodeHas("base", { values: [0.65] });
  await s.entry("base").hover();
}

async function dark(s) {
  await s.choose(s.field("colorspace").getByRole("button", { name: "Choose" }), "ACEScg");
  await s.nodeHas("colorspace", { value: "acescg" });
  await s.field("reload").getByRole("button", { name: "Reload" }).click();
  await s.field("colorspace").getByRole("button", { name: "Choose" }).click();
}

async function ramp(s) {
  const track = await s.field("stops").locator(".ramp-track").boundingBox();
  await s.page.mouse.click(track.x + track.width * 0.4, track.y + 8);
  await s.field("stops").getByRole("button", { name: "Choose the key's colour" }).click();
  await s.write(s.page.getByLabel("Hexadecimal"), "#e0703a");
  await s.page.waitForTimeout(300);
}

async function lint(s) {
  await s.tab("Findings");
  await s.page.locator(".finding .link").first().click();
  await s.page.waitForTimeout(1500);
}

const PICTURES = [
  { name: "preview", type: "korvan::standard_surface", before: overview, look: { colorScheme: "light" } },
  { name: "preview-dark", type: "korvan::image", before: dark, look: { colorScheme: "dark" } },
  {
    name: "preview-ramp",
    type: "korvan::gradient",
    before: ramp,
    look: { colorScheme: "dark", viewport: { width: 1280, height: 560 } },
  },
  {
    name: "preview-lint",
    type: "korvan::rust",
    before: lint,
    catalogue: RUST,
    metadata: FAULTY,
    look: { colorScheme: "light" },
  },
];

function told(file) {
  console.log(`${file}: ${(fs.statSync(file).size / 1024).toFixed(1)} kB`);
}

async function take(picture, directory) {
  const preview = new Preview({
    catalogue: picture.catalogue ?? { nodes: [] },
    metadata: picture.metadata ?? "",
  });
  try {
    const scene = await openScene(picture.type, { preview, viewport: WIDE, ...picture.look });
    await picture.before(scene);
    await scene.page.evaluate(() => document.fonts.ready);
    const file = path.join(directory, `${picture.name}.png`);
    await scene.page.screenshot({ path: file, animations: "disabled", caret: "hide" });
    await scene.page.context().close();
    told(file);
  } finally {
    await preview.remove();
  }
}

const [directory, ...names] = process.argv.slice(2);
const keys = path.join(directory, "keys");
fs.mkdirSync(keys, { recursive: true });
const isWanted = (...known) => names.length === 0 || known.some((name) => names.includes(name));
for (const picture of PICTURES) {
  if (isWanted(picture.name)) await take(picture, directory);
}
for (const picture of keyPictures()) {
  if (isWanted("keys", picture.name)) told(await takeKeyPicture(picture, keys));
}
await closeBrowser();
