// The page as a whole: the tab menu, search, keyboard, themes, narrow windows, help, the tile.

import assert from "node:assert/strict";
import { CATALOGUE } from "./fixtures.mjs";
import { eventually, pageTest } from "./preview_case.mjs";

const NUMBERS = "korvan::numbers";
const focused = (s) =>
  s.page.evaluate(
    () => document.activeElement?.getAttribute("aria-label") ?? document.activeElement?.textContent,
  );

pageTest("the tab menu has the types by category, and opens one", NUMBERS, async (s) => {
  const ramps = s.page.getByRole("group", { name: "Ramps" });
  assert.deepEqual(await ramps.getByRole("option").allInnerTexts(), ["Colours", "Curve"]);
  await ramps.getByRole("option", { name: "Curve" }).click();
  await s.says(s.page.locator(".title"), "korvan::curve");
  assert.ok(s.page.url().endsWith("#korvan::curve"));
  await s.page.goBack();
  await s.says(s.page.locator(".title"), NUMBERS);
});

pageTest("a type is found and opened without a mouse", NUMBERS, async (s) => {
  await s.page.keyboard.press("/");
  assert.equal(await focused(s), "Search node types");
  await s.page.keyboard.type("choi");
  await eventually(async () =>
    assert.deepEqual(
      await s.page.getByRole("listbox", { name: "Node types" }).getByRole("option").allInnerTexts(),
      ["Choices"],
    ),
  );
  await s.page.keyboard.press("ArrowDown");
  await s.page.keyboard.press("Enter");
  await s.says(s.page.locator(".title"), "korvan::choices");
  await s.page.keyboard.press("/");
  await s.page.keyboard.press("Escape");
  await eventually(async () =>
    assert.ok((await s.page.getByRole("listbox", { name: "Node types" }).getByRole("option").count()) > 10),
  );
});

pageTest("every field of a node is reached by Tab, and shows its help", NUMBERS, async (s) => {
  const met = new Set();
  await s.page.locator("#tree [tabindex='0']").focus();
  for (let i = 0; i < 80; i += 1) {
    await s.page.keyboard.press("Tab");
    const token = await s.page.evaluate(() => document.activeElement?.closest(".field")?.dataset.token);
    if (token) met.add(token);
    if (token === "hard") await s.says(s.page.locator("#help"), "Never above two.");
  }
  assert.deepEqual([...met].sort(), [
    "driven",
    "glow",
    "hard",
    "place",
    "soft",
    "steps",
    "tint",
    "uv",
    "xform",
  ]);
});

pageTest("a key that is no command does nothing while somebody types", "korvan::choices", async (s) => {
  await s.tab("Second");
  await s.entry("tags").focus();
  await s.page.keyboard.type("a/b");
  assert.equal(await s.entry("tags").inputValue(), "a/b");
});

pageTest("the tile has inputs and outputs in their order, coloured by type", NUMBERS, async (s) => {
  const { inputs, outputs } = await s.preview.node(NUMBERS);
  const labels = (list) => list.map((connector) => connector.label || connector.name);
  assert.deepEqual(await s.page.locator(".inputs .connector-label").allInnerTexts(), labels(inputs));
  assert.deepEqual(await s.page.locator(".outputs .connector-label").allInnerTexts(), labels(outputs));
  const color = (i) =>
    s.page
      .locator(".inputs .connector-dot")
      .nth(i)
      .evaluate((e) => getComputedStyle(e).backgroundColor);
  const at = (name) => inputs.findIndex((input) => input.name === name);
  assert.equal(await color(at("hard")), await color(at("soft")));
  assert.notEqual(await color(at("hard")), await color(at("xform")));
});

pageTest("an input is wired from another node, and cut off again", NUMBERS, async (s) => {
  await s.preview.node("korvan::curve");
  const knob = s.page.locator(".inputs .connector-button").first();
  await s.choose(knob, "curve1");
  await eventually(async () =>
    assert.equal((await s.preview.node(NUMBERS)).inputs[0].connected?.type, "korvan::curve"),
  );
  await s.says(knob, "curve1");
  await s.choose(knob, "Disconnect");
  await eventually(async () => assert.equal((await s.preview.node(NUMBERS)).inputs[0].connected, null));
});

const backOf = (s) =>
  s.page.evaluate(() => getComputedStyle(document.querySelector(".pane")).backgroundColor);
const isDark = (color) =>
  color
    .match(/\d+/g)
    .slice(0, 3)
    .every((part) => Number(part) < 100);

pageTest(
  "the page is dark where the system is, and the button overrules it and is remembered",
  NUMBERS,
  async (s) => {
    assert.ok(isDark(await backOf(s)));
    const theme = s.page.getByRole("button", { name: "Theme" });
    await theme.click();
    assert.ok(!isDark(await backOf(s)));
    await s.page.reload();
    await s.page.locator(".title code").waitFor();
    assert.ok(!isDark(await backOf(s)));
    await theme.click();
    assert.ok(isDark(await backOf(s)));
  },
  { look: { colorScheme: "dark" } },
);

pageTest(
  "the page is light where the system is",
  NUMBERS,
  async (s) => {
    assert.ok(!isDark(await backOf(s)));
  },
  { look: { colorScheme: "light" } },
);

pageTest(
  "a window of 1000 pixels shows everything without scrolling sideways",
  NUMBERS,
  async (s) => {
    const widest = await s.page.evaluate(() =>
      Math.max(
        ...[...document.querySelectorAll("body *")]
          .filter((e) => e.checkVisibility())
          .map((e) => e.getBoundingClientRect().right),
      ),
    );
    assert.ok(widest <= 1000, `something ends at ${widest}`);
    for (const name of ["Changes", "Console", "Findings", "Source"]) {
      assert.ok(
        (await s.page.getByRole("tab", { name }).boundingBox()).y ===
          (await s.page.getByRole("tab", { name: "Changes" }).boundingBox()).y,
      );
    }
  },
  { look: { viewport: { width: 1000, height: 700 } } },
);

const MANY = 300;
const many = {
  nodes: [
    ...CATALOGUE.nodes,
    {
      name: "zelk__many",
      kind: "shader",
      output: "float",
      parameters: Array.from({ length: MANY }, (_, i) => ({
        name: `p${i}`,
        type: "float",
        default: 0,
      })),
    },
  ],
};

pageTest(
  "an edit among three hundred parameters keeps every field and the focus",
  "korvan::many",
  async (s) => {
    await eventually(async () => assert.equal(await s.page.locator("#parms .field").count(), MANY));
    await s.page.evaluate(() =>
      document.querySelectorAll("#parms .field").forEach((field) => {
        field.kept = true;
      }),
    );
    await s.entry("p150").fill("0.5");
    await s.page.keyboard.press("Enter");
    await s.nodeHas("p150", { values: [0.5] });
    await eventually(async () =>
      assert.ok((await s.field("p150").getAttribute("class")).includes("changed")),
    );
    assert.equal(
      await s.page.evaluate(
        () => [...document.querySelectorAll("#parms .field")].filter((field) => field.kept).length,
      ),
      MANY,
    );
    assert.equal(await focused(s), "P150");
  },
  { catalogue: many },
);

pageTest("a type that there is not gets a sentence", NUMBERS, async (s) => {
  await s.page.evaluate(() => {
    location.hash = "korvan::nothing";
  });
  await s.says(s.page.locator("#parms"), "korvan::nothing");
  s.complaints.length = 0; // the browser notes the 404
});

pageTest("a wrong token gets a sentence and no node", NUMBERS, async (s) => {
  await s.page.goto("about:blank");
  await s.page.goto(`${s.preview.origin}/?token=wrong#${NUMBERS}`);
  await s.says(s.page.getByRole("alert").first(), "Open the address that kshop preview printed");
  assert.equal(await s.page.locator("#parms .field").count(), 0);
  s.complaints.length = 0; // the browser notes the 403
});

pageTest(
  "the tile tells the icon's name and how detailed a new node's tile is",
  "korvan::numbers",
  async (s) => s.says(s.page.locator("#tile .tile-foot"), "SHELF_numbers · low detail"),
  {
    metadata: '["zelk__numbers"]\n"houdini.icon" = "SHELF_numbers"\n"houdini.lod" = "low"\n',
  },
);
