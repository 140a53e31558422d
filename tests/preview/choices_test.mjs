// Toggles, menus, strips, texts, files, nodes, buttons; folders, headings; what is greyed and hidden.

import assert from "node:assert/strict";
import { eventually, pageTest } from "./preview_case.mjs";

const CHOICES = "korvan::choices";

pageTest("a switch greys what it controls, on the same row", CHOICES, async (s) => {
  const toggle = s.page.getByRole("switch", { name: "Active" });
  assert.ok(await toggle.isChecked());
  const row = (token) => s.field(token).evaluate((e) => e.getBoundingClientRect().top);
  assert.equal(await row("active"), await row("strength"));
  assert.ok(await s.entry("strength").isEnabled());
  await toggle.click();
  await s.nodeHas("active", { value: false });
  await eventually(async () => assert.ok(await s.entry("strength").evaluate((e) => e.disabled)));
  await s.nodeHas("strength", { enabled: false });
});

pageTest("a menu sets its parameter and shows what its condition hid", CHOICES, async (s) => {
  const height = (token) => s.field(token).evaluate((e) => e.closest(".row").getBoundingClientRect().height);
  assert.equal(await s.field("secret").isVisible(), false);
  assert.equal(await height("hush"), 0);
  const menu = s.field("mode").locator(".menu-button");
  await s.choose(menu, "Fancy");
  await s.nodeHas("mode", { current: "fancy" });
  await eventually(async () => assert.ok(await s.field("secret").isVisible()));
  assert.ok((await height("hush")) > 0);
  await s.says(menu, "Fancy");
});

pageTest("a menu is used by keyboard alone", CHOICES, async (s) => {
  await s.field("mode").locator(".menu-button").focus();
  await s.page.keyboard.press("Enter");
  assert.equal(await s.page.locator(".popup [aria-selected=true]").innerText(), "✓\nPlain");
  await s.page.keyboard.press("f");
  await s.page.keyboard.press("Enter");
  await s.nodeHas("mode", { current: "fancy" });
  await s.page.keyboard.press("ArrowUp");
  await s.nodeHas("mode", { current: "plain" });
});

pageTest("arrow keys go through a menu as quickly as they are pressed", CHOICES, async (s) => {
  const values = [];
  s.page.on("request", (request) => {
    if (request.url().endsWith("/api/edit")) values.push(request.postDataJSON().value);
  });
  await s
    .field("mode")
    .locator(".menu-button")
    .evaluate((knob) => {
      for (const key of ["ArrowDown", "ArrowUp"]) knob.dispatchEvent(new KeyboardEvent("keydown", { key }));
    });
  await eventually(async () => assert.deepEqual(values, [1, 0]));
  await s.nodeHas("mode", { current: "plain" });
  await s.says(s.field("mode").locator(".menu-button"), "Plain");
});

pageTest("a server that refuses a choice leaves the field as the node is", CHOICES, async (s) => {
  await s.page.route("**/api/edit", (route) =>
    route.fulfill({ status: 500, json: { error: "The worker was ended." } }),
  );
  await s.choose(s.field("mode").locator(".menu-button"), "Fancy");
  await s.says(s.page.locator(".errors .error:visible"), "The worker was ended.");
  await s.says(s.field("mode").locator(".menu-button"), "Plain");
  s.complaints.length = 0; // the browser notes the 500
});

pageTest("each button of a strip is one bit", CHOICES, async (s) => {
  const press = (name) => s.field("seen_by").getByRole("button", { name, exact: true }).click();
  await press("Shadow");
  await press("Diffuse");
  await press("Camera");
  await s.nodeHas("seen_by", { value: 2 + 32 });
  const pressed = s.field("seen_by").locator("[aria-pressed=true]");
  await eventually(async () => assert.deepEqual(await pressed.allInnerTexts(), ["Shadow", "Diffuse"]));
});

pageTest("a button pressed between the answers to two others takes neither back", CHOICES, async (s) => {
  const press = (name) => s.field("seen_by").getByRole("button", { name, exact: true }).click();
  const edits = []; // each goes on when it is told to
  await s.page.route("**/api/edit", (route) => edits.push(route));
  const sent = (count) => eventually(async () => assert.equal(edits.length, count));
  await press("Shadow");
  await press("Diffuse");
  await sent(1);
  await edits[0].continue();
  await sent(2); // so the answer to the first is there
  await press("Camera");
  await edits[1].continue();
  await sent(3);
  await edits[2].continue();
  await s.nodeHas("seen_by", { value: 2 + 32 });
});

pageTest("two quick clicks on a strip set two bits", CHOICES, async (s) => {
  await s
    .field("seen_by")
    .locator(".strip")
    .evaluate((strip) => {
      strip.children[1].click();
      strip.children[2].click();
    });
  await s.nodeHas("seen_by", { value: 1 + 2 + 4 });
});

pageTest("folders are tabs, moved through by arrows; a change inside is marked", CHOICES, async (s) => {
  assert.equal(await s.field("tags").isVisible(), false);
  await s.page.getByRole("tab", { name: "First" }).focus();
  await s.page.keyboard.press("ArrowRight");
  assert.ok(await s.field("tags").isVisible());
  assert.ok(
    await s.page
      .getByRole("tab", { name: "Second", selected: true })
      .evaluate((e) => e === document.activeElement),
  );
  await s.nodeHas("tabs", { value: 1 });
  await s.write(s.entry("tags"), "x");
  await eventually(async () =>
    assert.equal(await s.page.getByRole("tab", { name: "Second" }).innerText(), "Second•"),
  );
});

pageTest("headings and lines shape the pane", CHOICES, async (s) => {
  assert.equal(await s.page.getByRole("heading", { name: "What is chosen" }).count(), 1);
  assert.equal(await s.page.locator("hr[data-token=line]").count(), 1);
});

pageTest("a replacing menu puts its token into the text, which can be typed too", CHOICES, async (s) => {
  await s.tab("Second");
  await s.choose(s.field("name_of").getByRole("button", { name: "Choose" }), "sRGB");
  await s.shows(s.entry("name_of"), "srgb");
  await s.write(s.entry("name_of"), "of my own");
  await s.nodeHas("name_of", { value: "of my own" });
});

pageTest("a toggling menu adds and removes words", CHOICES, async (s) => {
  await s.tab("Second");
  const knob = s.field("tags").getByRole("button", { name: "Choose" });
  await s.choose(knob, "A");
  await s.nodeHas("tags", { value: "a" });
  await s.choose(knob, "B");
  await s.nodeHas("tags", { value: "a b" });
  await s.choose(knob, "A");
  await s.nodeHas("tags", { value: "b" });
});

pageTest("an appending menu adds the token behind a blank", CHOICES, async (s) => {
  await s.tab("Second");
  const knob = s.field("words").getByRole("button", { name: "Choose" });
  await s.choose(knob, "B");
  await s.nodeHas("words", { value: "b" });
  await s.choose(knob, "B");
  await s.nodeHas("words", { value: "b b" });
});

pageTest("a scripted menu offers what its script makes", CHOICES, async (s) => {
  await s.tab("Second");
  await s.field("scripted").getByRole("button", { name: "Choose" }).click();
  assert.deepEqual(await s.page.locator(".menu-item span:nth-child(2)").allInnerTexts(), [
    "Item 0",
    "Item 1",
    "Item 2",
  ]);
  await s.page.locator(".menu-item").nth(1).click();
  await s.nodeHas("scripted", { value: "n2" });
});

pageTest("files show their pattern, node paths their filter, and both take a text", CHOICES, async (s) => {
  await s.tab("Second");
  await s.says(s.field("map"), "*.exr");
  await s.says(s.field("camera"), "!!OBJ!!");
  await s.write(s.entry("map"), "/pictures/b.exr");
  await s.nodeHas("map", { value: "/pictures/b.exr" });
  await s.write(s.entry("camera"), "/obj/cam1");
  await s.nodeHas("camera", { value: "/obj/cam1" });
});

pageTest("a button runs its callback, and what that prints is on the console", CHOICES, async (s) => {
  await s.write(s.entry("strength"), "0.25");
  await s.tab("Second");
  await s.field("run").getByRole("button", { name: "Run" }).click();
  await s.tab("Console");
  await s.says(s.page.getByRole("log", { name: "Console" }), "strength is 0.25");
});

pageTest(
  "text from metadata is never markup",
  CHOICES,
  async (s) => {
    assert.equal(await s.page.locator("#planted").count(), 0);
    await s.field("active").hover();
    await s.says(s.page.locator("#help"), "<img id=planted src=x>");
    assert.equal(await s.page.locator("#planted").count(), 0);
  },
  {
    metadata: `
["zelk__choices".parameters.active]
"houdini.label" = "<b id=planted>Active</b>"
desc = "<img id=planted src=x>"
`,
  },
);
