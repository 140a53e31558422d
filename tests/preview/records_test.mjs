// What an edit leaves behind: change records, undo, and the texts that can be copied out.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { eventually, pageTest } from "./preview_case.mjs";

const NUMBERS = "korvan::numbers";

// Finds the node wherever the script made it.
const PRINT_SOFT = `
def walk(node):
    yield node
    for child in node.children():
        yield from walk(child)
print("SOFT", [n.parm("soft").eval() for n in walk(hou.node("/")) if n.parm("soft")])
`;

pageTest("each edit's change record is on top of the list", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
  await s.write(s.entry("steps"), "7");
  const records = s.page.locator(".record");
  await s.says(records.first(), "steps");
  assert.ok((await records.first().innerText()).includes("7"));
  await s.says(s.page.locator(".record").filter({ hasText: "soft" }).first(), "0.75");
  assert.equal(
    await records.first().locator("header b").getAttribute("title"),
    (await s.preview.node(NUMBERS)).path,
  );
  await s.page.reload();
  await s.says(s.page.locator(".record").first(), "steps");
  await s.page.getByRole("tabpanel", { name: "Changes" }).getByRole("button", { name: "Clear" }).click();
  assert.equal(await records.count(), 0);
});

pageTest("a colour in a record has a chip of that colour", NUMBERS, async (s) => {
  await s.write(s.field("tint").locator("input.entry").nth(1), "0");
  const chip = s.page.locator(".record .chip").first();
  await eventually(async () =>
    assert.equal(await chip.evaluate((e) => getComputedStyle(e).backgroundColor), "rgb(255, 0, 0)"),
  );
});

pageTest("a record is copied as the line that kshop listen would print", NUMBERS, async (s) => {
  await s.page.context().grantPermissions(["clipboard-read", "clipboard-write"]);
  await s.write(s.entry("soft"), "0.75");
  const record = s.page.locator(".record").filter({ hasText: "soft" }).first();
  await record.hover();
  await record.getByRole("button", { name: "Copy the record" }).click();
  const copied = JSON.parse(await s.page.evaluate(() => navigator.clipboard.readText()));
  assert.equal(copied.entry_name, "zelk__numbers");
  assert.equal(copied.parms.soft.value, 0.75);
});

pageTest("undo and redo go through the edits, by button and by key", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
  await s.write(s.entry("soft"), "0.9");
  await s.nodeHas("soft", { values: [0.9] });
  await s.page.keyboard.press("Control+z");
  await s.shows(s.entry("soft"), "0.75");
  await s.page.getByRole("button", { name: "Undo" }).click();
  await s.shows(s.entry("soft"), "0.5");
  await s.page.getByRole("button", { name: "Redo" }).click();
  await s.shows(s.entry("soft"), "0.75");
});

pageTest("a drag is one step of undo, and the edit before it another", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
  const box = await s.field("soft").getByRole("slider").boundingBox();
  const to = async (part) => {
    await s.page.mouse.move(box.x + box.width * part, box.y + box.height / 2);
    await s.page.waitForTimeout(100);
  };
  await to(0.2);
  await s.page.mouse.down();
  for (const part of [0.3, 0.4, 0.5, 0.6, 0.7]) await to(part);
  await s.page.mouse.up();
  await eventually(async () => assert.ok((await s.page.locator(".record").count()) > 3));
  await eventually(async () => assert.ok((await s.parm("soft")).values[0] > 2));
  await s.page.getByRole("button", { name: "Undo" }).click();
  await s.shows(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
  await s.page.getByRole("button", { name: "Undo" }).click();
  await s.nodeHas("soft", { values: [0.5] });
});

pageTest("an edit of which a render hears nothing is told as one", "korvan::curve", async (s) => {
  await s.write(s.field("profile").getByLabel("Value", { exact: true }).first(), "0.4");
  await s.says(s.page.getByRole("log", { name: "Change records" }), "a running render is told nothing");
});

pageTest("Ctrl+Z in a field where somebody types is the browser's", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
  await s.entry("steps").focus();
  await s.page.keyboard.type("9");
  await s.page.keyboard.press("Control+z");
  await s.page.keyboard.press("Escape");
  await s.nodeHas("soft", { values: [0.75] });
});

pageTest("undo with nothing to undo says so", NUMBERS, async (s) => {
  await s.page.getByRole("button", { name: "Undo" }).click();
  await s.says(s.page.locator("#status"), "nothing to undo");
});

pageTest("reset all goes back to the defaults", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.write(s.entry("steps"), "8");
  await s.nodeHas("steps", { changed: true });
  assert.equal(await s.page.locator(".edited").count(), 1);
  await s.page.getByRole("button", { name: "Reset all" }).click();
  await s.shows(s.entry("soft"), "0.5");
  await s.shows(s.entry("steps"), "3");
  await eventually(async () => assert.equal(await s.page.locator(".edited").count(), 0));
});

pageTest(
  "the edits are copied out as Python that makes the same node, and as metadata lines",
  NUMBERS,
  async (s) => {
    await s.write(s.entry("soft"), "0.75");
    await s.nodeHas("soft", { values: [0.75] });
    await s.page.getByRole("button", { name: "Copy out" }).click();
    const text = s.page.locator(".export-text");
    await s.says(text.first(), "0.75");
    const script = await text.first().innerText();
    const run = spawnSync(process.env.KSHOP, ["python", "-"], {
      env: s.preview.environment(),
      encoding: "utf8",
      input: `${script}\n${PRINT_SOFT}`,
    });
    assert.equal(run.status, 0, run.stderr);
    assert.match(run.stdout, /SOFT \[0\.75\]/);
    await s.page.getByRole("tab", { name: ".mtd lines" }).click();
    await s.says(text.nth(1), "soft: 0.75");
    await s.page.keyboard.press("Escape");
    await eventually(async () => assert.equal(await s.page.locator("dialog").count(), 0));
  },
);
