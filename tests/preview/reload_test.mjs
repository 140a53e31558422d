// A file that is saved, a mistake in it, a server that goes away.

import assert from "node:assert/strict";
import { METADATA } from "./fixtures.mjs";
import { Preview, eventually, pageTest } from "./preview_case.mjs";

const NUMBERS = "korvan::numbers";
const CHOICES = "korvan::choices";

pageTest("a saved file is drawn at once; edits, tab, focus and fields stay", CHOICES, async (s) => {
  await s.tab("Second");
  await s.write(s.entry("map"), "/pictures/b.exr");
  await s.nodeHas("map", { value: "/pictures/b.exr" });
  await s.entry("tags").focus();
  await s.page.keyboard.type("half wri");
  s.preview.writeMetadata(
    METADATA.replace(
      '"houdini.type" = "file:*.exr"',
      '"houdini.type" = "file:*.tif"\n"houdini.label" = "Picture"',
    ),
  );
  await s.says(s.field("map"), "Picture");
  await s.says(s.field("map"), "*.tif");
  await s.page.keyboard.type("tten");
  await s.page.keyboard.press("Enter");
  await s.shows(s.entry("tags"), "half written");
  await s.nodeHas("tags", { value: "half written" });
  await s.nodeHas("map", { value: "/pictures/b.exr" });
  await s.says(s.page.locator("#status"), "Read again");
});

pageTest("parameters come, go and move with the file", NUMBERS, async (s) => {
  s.preview.writeMetadata(
    METADATA.replace(
      '"houdini.category" = "Texture"',
      '"houdini.category" = "Texture"\n"houdini.order" = "uv steps"',
    ).replace(
      '["zelk__numbers".parameters.soft]',
      '["zelk__numbers".parameters.soft]\n"houdini.skip" = true',
    ),
  );
  await eventually(async () => assert.equal(await s.field("soft").count(), 0));
  const tokens = await s.page.locator("#parms .field").evaluateAll((all) => all.map((e) => e.dataset.token));
  assert.deepEqual(tokens.slice(0, 3), ["uv", "steps", "hard"]);
});

pageTest("a shader that is gone gets a sentence, and comes back", NUMBERS, async (s) => {
  s.preview.writeMetadata(METADATA.replace('"houdini.label" = "Numbers"', '"houdini.skip" = true'));
  await eventually(async () =>
    assert.equal(await s.page.getByRole("option", { name: "Numbers" }).count(), 0),
  );
  await eventually(async () => assert.equal(await s.page.locator("#parms .field").count(), 0));
  await s.says(s.page.locator("#parms"), NUMBERS);
  s.preview.writeMetadata(METADATA);
  await eventually(async () => assert.equal(await s.field("soft").count(), 1));
  s.complaints.length = 0; // the browser notes the 404
});

pageTest("the source of a file is shown as it is on the disk", NUMBERS, async (s) => {
  await s.tab("Source");
  await s.page.getByLabel("File").selectOption({ label: "shaders.mtd" });
  const line = (text) => s.page.locator(".source-line").filter({ hasText: text });
  await line("Never above two.").first().waitFor();
  s.preview.writeMetadata(METADATA.replace("Never above two.", "Two at most."));
  await line("Two at most.").first().waitFor();
  assert.equal(await line("Never above two.").count(), 0);
});

const LONG_TEXTS = `["zelk__numbers".parameters.soft]
desc = """Says "one" \\
    and two = "2" # three"""
min = 0 # four
"houdini.label" = '''Soft
[no table]'''
softmax = 4
`;

pageTest("a text of several lines is coloured as a text", NUMBERS, async (s) => {
  s.preview.writeMetadata(LONG_TEXTS);
  await s.tab("Source");
  await s.page.getByLabel("File").selectOption({ label: "shaders.mtd" });
  const line = (number) => s.page.locator(`.source-line[data-line="${number}"] code`);
  await s.says(line(2), "Says");
  const pieces = (number) =>
    line(number)
      .locator("span")
      .evaluateAll((spans) => spans.map((span) => `${span.className}: ${span.textContent}`));
  assert.deepEqual(await pieces(2), ['text: """Says "one" \\']);
  assert.deepEqual(await pieces(3), ['text:     and two = "2" # three"""']);
  assert.deepEqual(await pieces(4), ["literal: 0", "comment: # four"]);
  assert.deepEqual(await pieces(5), ['key: "houdini.label"', "text: '''Soft"]);
  assert.deepEqual(await pieces(6), ["text: [no table]'''"]);
  assert.deepEqual(await pieces(7), ["literal: 4"]);
});

pageTest(
  "a mistake is marked in the menu, at the field, in the list, and below its line",
  NUMBERS,
  async (s) => {
    s.preview.writeMetadata(METADATA.replace("min = 0\nmax = 2", "min = 3\nmax = 2"));
    await s.field("hard").locator(".mark.error").waitFor();
    await s.page.getByRole("option", { name: "Numbers" }).locator(".dot.error").waitFor();
    await s.tab("Findings");
    const finding = s.page
      .getByRole("tabpanel", { name: "Findings" })
      .locator(".finding.error")
      .filter({ hasText: "numbers · hard" })
      .first();
    await finding.locator(".remedy").waitFor();
    await finding.locator(".link").click();
    const line = s.page.locator(".source-line.error").first();
    await line.waitFor();
    assert.match(await line.innerText(), /min = 3|max = 2/);
    assert.ok(await line.evaluate((e) => e.nextElementSibling.classList.contains("finding")));
    s.preview.writeMetadata(METADATA);
    await s.field("hard").locator(".mark.error").waitFor({ state: "hidden" });
    await eventually(async () => assert.equal(await s.page.locator(".source .finding.error").count(), 0));
  },
);

pageTest("a syntax error leaves the page alive and is told", NUMBERS, async (s) => {
  s.preview.writeMetadata(`${METADATA}\n["zelk__numbers"\n`);
  await eventually(async () =>
    assert.ok(
      Number.parseInt(await s.page.getByRole("tab", { name: "Findings" }).locator(".badge").innerText(), 10) >
        0,
    ),
  );
  s.preview.writeMetadata(METADATA);
  await s.says(s.page.locator(".title"), "Numbers");
  await s.write(s.entry("soft"), "0.75");
  await s.nodeHas("soft", { values: [0.75] });
});

pageTest(
  "a callback that never ends costs one edit, and the page goes on",
  CHOICES,
  async (s) => {
    await s.write(s.entry("strength"), "0.25");
    await s.nodeHas("strength", { values: [0.25] });
    await s.tab("Second");
    await s.field("run").getByRole("button", { name: "Run" }).click();
    await s.page.locator(".errors .error:visible").waitFor({ timeout: 40000 });
    await s.nodeHas("strength", { values: [0.25] });
    s.complaints.length = 0; // the browser notes the 500
  },
  {
    metadata: METADATA.replace(
      "print('strength is', kwargs['node'].parm('strength').eval())",
      "exec('while True: pass')",
    ),
  },
);

pageTest(
  "a server that ends is told, and its return on the same address with another token too",
  NUMBERS,
  async (s) => {
    const { port } = new URL(s.preview.origin);
    await s.preview.stop();
    const notice = s.page.locator("#notice");
    await s.says(notice, "The preview does not answer");
    const second = new Preview();
    try {
      await second.start(port);
      await s.says(notice, "Open the address that kshop preview printed");
    } finally {
      await second.remove();
    }
    s.complaints.length = 0; // the browser notes each refused connection
  },
);
