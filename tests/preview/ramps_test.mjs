// The ramp editor: pointer, keyboard, numbers.

import assert from "node:assert/strict";
import { eventually, pageTest, rounded } from "./preview_case.mjs";

const CURVE = "korvan::curve";
const COLORS = "korvan::colors";

const keysOf = async (s, token) => rounded((await s.parm(token)).keys);

async function keysAre(s, token, keys) {
  await eventually(async () => assert.deepEqual(await keysOf(s, token), keys));
}

const linear = (position, value) => ({ position, value, interpolation: 1 });

pageTest("a click on the curve adds a key there", CURVE, async (s) => {
  const track = await s.field("profile").locator(".ramp-track").boundingBox();
  await s.page.mouse.click(track.x + track.width / 2, track.y + track.height / 4);
  await eventually(async () => assert.equal((await keysOf(s, "profile")).length, 3));
  const [, middle] = await keysOf(s, "profile");
  assert.ok(
    Math.abs(middle.position - 0.5) < 0.01 && Math.abs(middle.value - 0.75) < 0.02,
    JSON.stringify(middle),
  );
  assert.equal(middle.interpolation, 1);
  await s.says(s.field("profile"), "Key 2 of 3");
});

pageTest("a key is dragged, and the last place is the node's", CURVE, async (s) => {
  const track = await s.field("profile").locator(".ramp-track").boundingBox();
  await s.page.mouse.move(track.x + track.width, track.y);
  await s.page.mouse.down();
  for (let i = 0; i < 10; i += 1)
    await s.page.mouse.move(track.x + track.width * (1 - i / 20), track.y + i * 3);
  await s.page.mouse.move(track.x + track.width / 2, track.y + track.height / 2);
  await s.page.mouse.up();
  await eventually(async () => {
    const [, key] = await keysOf(s, "profile");
    assert.ok(Math.abs(key.position - 0.5) < 0.01 && Math.abs(key.value - 0.5) < 0.01, JSON.stringify(key));
  });
});

pageTest("keys are added, moved and deleted by keyboard", CURVE, async (s) => {
  const handle = (i) => s.field("profile").locator(".ramp-handle").nth(i);
  await handle(0).focus();
  await s.page.keyboard.press("Insert");
  await keysAre(s, "profile", [linear(0, 0), linear(0.5, 0.5), linear(1, 1)]);
  assert.ok(await handle(1).evaluate((e) => e === document.activeElement));
  await s.page.keyboard.press("Shift+ArrowRight");
  await s.page.keyboard.press("ArrowUp");
  await keysAre(s, "profile", [linear(0, 0), linear(0.6, 0.51), linear(1, 1)]);
  assert.equal(await handle(1).getAttribute("aria-valuetext"), "position 0.6, value 0.51");
  await s.page.keyboard.press("PageDown");
  await s.page.keyboard.press("Delete");
  await keysAre(s, "profile", [linear(0, 0), linear(0.6, 0.51)]);
});

pageTest("the last key stays", CURVE, async (s) => {
  await s.field("profile").locator(".ramp-handle").first().focus();
  await s.page.keyboard.press("Delete");
  await keysAre(s, "profile", [linear(1, 1)]);
  await s.page.keyboard.press("Delete");
  await keysAre(s, "profile", [linear(1, 1)]);
  await eventually(async () =>
    assert.ok(await s.field("profile").getByRole("button", { name: "Remove the key" }).isDisabled()),
  );
});

pageTest("numbers and interpolation of the selected key are set below the curve", CURVE, async (s) => {
  await s.field("profile").locator(".ramp-handle").nth(1).focus();
  await s.write(s.field("profile").getByLabel("Position", { exact: true }).first(), "0.8");
  await s.write(s.field("profile").getByLabel("Value", { exact: true }).first(), "0.3");
  await s.choose(
    s
      .field("profile")
      .getByRole("button", { name: /^Interpolation/ })
      .first(),
    "Constant",
  );
  await keysAre(s, "profile", [linear(0, 0), { position: 0.8, value: 0.3, interpolation: 0 }]);
});

pageTest("a value above one widens the drawing", CURVE, async (s) => {
  const top = () =>
    s
      .field("profile")
      .locator(".ramp-handle")
      .nth(1)
      .evaluate((e) => e.style.top);
  assert.equal(await top(), "0%");
  await s.field("profile").locator(".ramp-handle").nth(0).focus();
  await s.write(s.field("profile").getByLabel("Value", { exact: true }).first(), "2");
  await keysAre(s, "profile", [linear(0, 2), linear(1, 1)]);
  await eventually(async () => assert.equal(await top(), "50%"));
});

pageTest("a new key of a colour ramp has the colour that was there", COLORS, async (s) => {
  const track = await s.field("stops").locator(".ramp-track").boundingBox();
  await s.page.mouse.click(track.x + track.width / 4, track.y - 10);
  await eventually(async () => assert.equal((await keysOf(s, "stops")).length, 3));
  const [, key] = await keysOf(s, "stops");
  for (const part of key.value) assert.ok(Math.abs(part - 0.25) < 0.01, JSON.stringify(key));
});

pageTest("a key's colour is chosen with the picker", COLORS, async (s) => {
  await s.field("stops").locator(".ramp-handle").nth(1).focus();
  await s.field("stops").getByRole("button", { name: "Choose the key's colour" }).click();
  await s.write(s.page.getByLabel("Hexadecimal"), "#f00");
  await keysAre(s, "stops", [linear(0, [0, 0, 0]), linear(1, [1, 0, 0])]);
});

pageTest("all keys are there as fields of the node", CURVE, async (s) => {
  await s.field("profile").getByText("All keys").click();
  const first = s.field("profile").locator(".instance").first();
  await s.write(first.locator("input.entry").nth(1), "0.4");
  await keysAre(s, "profile", [linear(0, 0.4), linear(1, 1)]);
});
