// Numbers: sliders with soft and hard ends, vectors, colours, matrices, expressions.

import assert from "node:assert/strict";
import { eventually, pageTest } from "./preview_case.mjs";

const NUMBERS = "korvan::numbers";

pageTest("a number that is typed goes to the node", NUMBERS, async (s) => {
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75], changed: true });
});

pageTest("a hard end clamps what is typed, and the field shows what the node took", NUMBERS, async (s) => {
  await s.write(s.entry("hard"), "7");
  await s.shows(s.entry("hard"), "2");
  await s.nodeHas("hard", { values: [2] });
  assert.equal(await s.field("hard").getByRole("slider").getAttribute("max"), "2");
});

pageTest("a soft end extends to what is typed", NUMBERS, async (s) => {
  const slider = s.field("soft").getByRole("slider");
  assert.equal(await slider.getAttribute("max"), "4");
  await s.write(s.entry("soft"), "9");
  await s.nodeHas("soft", { values: [9] });
  await eventually(async () => assert.equal(await slider.getAttribute("max"), "9"));
});

pageTest("a drag of the slider ends with its last value in the node", NUMBERS, async (s) => {
  const box = await s.field("soft").getByRole("slider").boundingBox();
  const y = box.y + box.height / 2;
  await s.page.mouse.move(box.x + box.width / 8, y);
  await s.page.mouse.down();
  for (let i = 0; i <= 20; i += 1) await s.page.mouse.move(box.x + box.width * (0.2 + i * 0.03), y);
  await s.page.mouse.move(box.x + box.width - 1, y);
  await s.page.mouse.up();
  await s.nodeHas("soft", { values: [4] });
  await s.shows(s.entry("soft"), "4");
});

pageTest("of many quick values the last one is the node's, and not each is sent", NUMBERS, async (s) => {
  await s
    .field("soft")
    .getByRole("slider")
    .evaluate((slider) => {
      for (let i = 1; i <= 50; i += 1) {
        slider.value = i / 25;
        slider.dispatchEvent(new Event("input"));
      }
    });
  await s.nodeHas("soft", { values: [2] });
  await eventually(async () => assert.ok((await s.page.locator(".record").count()) > 0));
  assert.ok((await s.page.locator(".record").count()) <= 3);
});

pageTest("a slider moves by arrow keys, an integer's by whole numbers", NUMBERS, async (s) => {
  await s.field("steps").getByRole("slider").focus();
  await s.page.keyboard.press("ArrowRight");
  await s.nodeHas("steps", { values: [4] });
  await s.entry("steps").focus();
  await s.page.keyboard.press("Shift+ArrowUp");
  await s.nodeHas("steps", { values: [14] });
});

pageTest(
  "what is no number is refused beside the field, which goes back to the node's",
  NUMBERS,
  async (s) => {
    await s.write(s.entry("soft"), "abc");
    await s.says(s.page.locator(".errors").filter({ hasText: "abc" }), '"abc" is no number.');
    await s.shows(s.entry("soft"), "0.5");
    await s.nodeHas("soft", { values: [0.5] });
  },
);

pageTest("Esc takes back what was typed", NUMBERS, async (s) => {
  await s.entry("soft").fill("3");
  await s.entry("soft").press("Escape");
  await s.entry("soft").blur();
  await s.shows(s.entry("soft"), "0.5");
  await s.nodeHas("soft", { values: [0.5] });
});

pageTest("each number of a vector is set by itself", NUMBERS, async (s) => {
  await s.write(s.field("place").locator("input.entry").nth(1), "-4.5");
  await s.nodeHas("place", { values: [1, -4.5, 3] });
  await s.write(s.field("uv").locator("input.entry").nth(0), "0.25");
  await s.nodeHas("uv", { values: [0.25, 1] });
});

pageTest("a matrix is a square of sixteen numbers", NUMBERS, async (s) => {
  const entries = s.field("xform").locator("input.entry");
  assert.equal(await entries.count(), 16);
  const boxes = await Promise.all([0, 3, 4].map((i) => entries.nth(i).boundingBox()));
  assert.equal(boxes[0].y, boxes[1].y);
  assert.ok(boxes[2].y > boxes[0].y && boxes[2].x === boxes[0].x);
  await s.write(entries.nth(7), "5");
  await s.nodeHas("xform", { values: [1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1, 0, 0, 0, 0, 1] });
});

pageTest(
  "a colour is set by its numbers and shown by its swatch as the screen has it",
  NUMBERS,
  async (s) => {
    const swatch = s.field("tint").locator(".swatch");
    await s.write(s.field("tint").locator("input.entry").nth(1), "0");
    await s.nodeHas("tint", { values: [1, 0, 0] });
    await eventually(async () =>
      assert.equal(await swatch.evaluate((e) => getComputedStyle(e).backgroundColor), "rgb(255, 0, 0)"),
    );
  },
);

pageTest("the picker takes a screen colour and gives the node linear light", NUMBERS, async (s) => {
  await s.field("glow").locator(".swatch").click();
  await s.write(s.page.getByLabel("Hexadecimal"), "#808080");
  await s.nodeHas("glow", { values: [0.21586, 0.21586, 0.21586, 1] });
});

pageTest("the picker's square is moved by pointer and keys", NUMBERS, async (s) => {
  await s.field("tint").locator(".swatch").click();
  const square = s.page.getByRole("slider", { name: "Saturation and brightness" });
  const box = await square.boundingBox();
  await s.page.mouse.click(box.x + box.width - 1, box.y + box.height - 1);
  await eventually(async () => assert.ok((await s.parm("tint")).values.every((x) => x < 0.01)));
  await square.press("Shift+ArrowUp");
  await eventually(async () => assert.ok((await s.parm("tint")).values[0] > 0.005));
  await s.page.keyboard.press("Escape");
  assert.equal(await s.page.locator(".popup").count(), 0);
  assert.ok(
    await s
      .field("tint")
      .locator(".swatch")
      .evaluate((e) => e === document.activeElement),
  );
});

pageTest("an expression shows its value, and follows what it reads", NUMBERS, async (s) => {
  await s.shows(s.entry("driven"), "6");
  assert.ok(await s.entry("driven").evaluate((e) => e.readOnly));
  await s.write(s.entry("steps"), "5");
  await s.shows(s.entry("driven"), "10");
});

pageTest("an expression is written, refused with its error, and removed", NUMBERS, async (s) => {
  const more = s.field("soft").getByRole("button", { name: "More" });
  await s.choose(more, "Add expression");
  await s.page.getByLabel("Expression of soft").getByRole("textbox").fill('ch("steps") + 0.5');
  await s.page.getByRole("button", { name: "Apply" }).click();
  await s.shows(s.entry("soft"), "3.5");
  await s.nodeHas("soft", { values: [3.5] });
  await s.choose(more, "Edit expression");
  await s.page.getByLabel("Expression of soft").getByRole("textbox").fill("1 +");
  await s.page.getByRole("button", { name: "Apply" }).click();
  await s.says(s.page.locator(".errors .error:visible"), "Expression:");
  assert.ok((await s.parm("soft")).expressions[0].error);
  await s.choose(more, "Remove expression");
  await eventually(async () => assert.deepEqual((await s.parm("soft")).expressions, [null]));
  await eventually(async () => assert.equal(await s.page.locator(".errors .error:visible").count(), 0));
});

pageTest("a field goes back to its default", NUMBERS, async (s) => {
  await s.write(s.entry("place"), "8");
  await s.nodeHas("place", { changed: true });
  await s.choose(s.field("place").getByRole("button", { name: "More" }), "Reset to default");
  await s.nodeHas("place", { values: [1, 2, 3], changed: false });
  await s.shows(s.entry("place"), "1");
});
