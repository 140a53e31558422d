// What is written can be read: contrast in both themes, and nothing ends outside of what holds it.

import assert from "node:assert/strict";
import { CATALOGUE, METADATA } from "./fixtures.mjs";
import { pageTest } from "./preview_case.mjs";

const PANELS = ["Changes", "Console", "Findings", "Source"];
const LEAST = 4.5; // of WCAG 2, level AA, for text of the usual size

/** Runs in the page: each visible text whose contrast is too small, with its ratio. What is disabled may be faint. */
function faintTexts(least) {
  const pixel = new OffscreenCanvas(1, 1).getContext("2d", { willReadFrequently: true });
  const parsed = (color) => {
    pixel.clearRect(0, 0, 1, 1);
    pixel.fillStyle = color;
    pixel.fillRect(0, 0, 1, 1);
    const [r, g, b, a] = pixel.getImageData(0, 0, 1, 1).data;
    return { rgb: [r, g, b], alpha: a / 255 };
  };
  const over = (front, back) => front.rgb.map((c, i) => c * front.alpha + back[i] * (1 - front.alpha));
  const linear = (c) => (c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
  const luminance = (rgb) => {
    const [r, g, b] = rgb.map((c) => linear(c / 255));
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const withParents = (e) => (e ? [...withParents(e.parentElement), e] : []);
  const contrast = (e) => {
    const chain = withParents(e).map((one) => getComputedStyle(one));
    const back = chain.reduce((below, style) => over(parsed(style.backgroundColor), below), [255, 255, 255]);
    const front = parsed(getComputedStyle(e).color);
    front.alpha *= chain.reduce((product, style) => product * Number(style.opacity), 1);
    if (front.alpha === 0) return Infinity;
    const [low, high] = [luminance(over(front, back)), luminance(back)].sort((a, b) => a - b);
    return (high + 0.05) / (low + 0.05);
  };
  const written = (e) =>
    (e.matches("input.entry") && e.value) ||
    [...e.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.trim());
  return [...document.querySelectorAll("body *")]
    .filter((e) => written(e) && e.checkVisibility() && !e.closest(":disabled, [aria-disabled]"))
    .map((e) => ({ e, ratio: contrast(e) }))
    .filter(({ ratio }) => ratio < least)
    .map(({ e, ratio }) => `${e.className} "${(e.value ?? e.textContent).slice(0, 30)}" ${ratio.toFixed(2)}`);
}

for (const colorScheme of ["light", "dark"]) {
  pageTest(
    `every text has the contrast that people need, ${colorScheme}`,
    "korvan::choices",
    async (s) => {
      for (const type of ["korvan::choices", "korvan::numbers", "korvan::curve"]) {
        await s.open(type);
        await s.page.locator("#parms .field").first().hover();
        for (const panel of PANELS) {
          await s.tab(panel);
          if (panel === "Source") await s.page.locator(".source-line").first().waitFor();
          assert.deepEqual(await s.page.evaluate(faintTexts, LEAST), [], `${type}, ${panel}`);
        }
      }
    },
    { look: { colorScheme } },
  );
}

const LONG = "a_shader_with_a_name_that_nobody_would_want_to_type_twice";
const crowd = {
  nodes: [
    ...CATALOGUE.nodes,
    ...Array.from({ length: 120 }, (_, i) => ({
      name: `zelk__${LONG}_${i}`,
      kind: "shader",
      output: "float",
      parameters: [{ name: "gain", type: "float", default: 1 }],
    })),
  ],
};
const wrong = `${METADATA}\n["zelk__${LONG}_0".parameters.gain]\n"houdini.lable" = "Gain"\n`;

/** Runs in the page: what ends to the right of the window. */
function outside() {
  return [...document.querySelectorAll("body *")]
    .filter((e) => e.checkVisibility() && e.getBoundingClientRect().right > innerWidth + 0.5)
    .map((e) => `${e.className} ${e.textContent.slice(0, 40)}`);
}

pageTest(
  "long names and hundreds of findings stay inside of the window",
  `korvan::${LONG}_0`,
  async (s) => {
    for (let i = 0; i < 101; i += 1)
      await s.preview.edit({ type: s.type, action: "set", token: "gain", value: i });
    await s.page.reload();
    await s.says(s.page.getByRole("tab", { name: "Changes" }), "99+");
    await s.says(s.page.getByRole("tab", { name: "Findings" }), "99+");
    for (const panel of PANELS) {
      await s.tab(panel);
      assert.deepEqual(await s.page.evaluate(outside), [], panel);
    }
  },
  { catalogue: crowd, metadata: wrong, look: { viewport: { width: 1000, height: 700 } } },
);
