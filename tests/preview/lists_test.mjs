// Lists that grow and shrink.

import assert from "node:assert/strict";
import { eventually, pageTest } from "./preview_case.mjs";

const LISTS = "korvan::lists";

async function valuesAre(s, values) {
  await eventually(async () => {
    const list = await s.parm("knots");
    assert.deepEqual(
      list.instances.map((instance) => instance.parms[0].values[0]),
      values,
    );
    assert.deepEqual(
      await s
        .field("knots")
        .locator(".instance input.entry")
        .evaluateAll((all) => all.map((e) => Number(e.value))),
      values,
    );
  });
}

pageTest("a list grows and shrinks by its buttons", LISTS, async (s) => {
  await s.field("knots").getByRole("button", { name: "Add one" }).click();
  await s.nodeHas("knots", { count: 3 });
  await eventually(async () => assert.equal(await s.field("knots").locator(".instance").count(), 3));
  await s.field("knots").getByRole("button", { name: "Remove the last" }).click();
  await s.field("knots").getByRole("button", { name: "Remove the last" }).click();
  await s.nodeHas("knots", { count: 1 });
  await s.field("knots").getByRole("button", { name: "Clear" }).click();
  await s.nodeHas("knots", { count: 0 });
  await eventually(async () =>
    assert.ok(await s.field("knots").getByRole("button", { name: "Clear" }).isDisabled()),
  );
});

pageTest("two quick clicks add two", LISTS, async (s) => {
  const add = s.field("knots").getByRole("button", { name: "Add one" });
  await add.evaluate((e) => {
    e.click();
    e.click();
  });
  await s.nodeHas("knots", { count: 4 });
});

pageTest("an instance is inserted and removed in the middle", LISTS, async (s) => {
  const entries = s.field("knots").locator(".instance input.entry");
  await s.write(entries.nth(0), "1");
  await s.write(entries.nth(1), "2");
  await valuesAre(s, [1, 2]);
  await s.field("knots").getByRole("button", { name: "Insert before 2" }).click();
  await eventually(async () => assert.equal(await entries.count(), 3));
  await s.write(entries.nth(1), "9");
  await valuesAre(s, [1, 9, 2]);
  await s.field("knots").getByRole("button", { name: "Remove 1", exact: true }).click();
  await valuesAre(s, [9, 2]);
});

pageTest("a count is typed; what cannot be one is refused", LISTS, async (s) => {
  const count = s.field("knots").locator("input.count");
  await s.write(count, "5");
  await s.nodeHas("knots", { count: 5 });
  await s.write(count, "-1");
  await s.says(s.page.locator(".errors .error:visible"), "0 or more");
  await s.shows(count, "5");
  await s.write(count, "1000000");
  await eventually(async () =>
    assert.ok((await s.page.locator(".errors .error:visible").innerText()).includes("1000000")),
  );
  await s.shows(count, "5");
  await s.nodeHas("knots", { count: 5 });
});
