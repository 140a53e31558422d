// Base of the preview's tests: each starts kshop preview with shaders of its own and looks at one node's page.

import assert from "node:assert/strict";
import test from "node:test";
import { Preview, closeBrowser, openScene } from "./scene.mjs";

export * from "./scene.mjs";

test.after(closeBrowser);

/** A test on the page of `type`: fails also when the page complained, unless the test takes the complaints away. */
export function pageTest(name, type, run, options = {}) {
  test(name, { timeout: 120000 }, async () => {
    const preview = new Preview(options);
    let scene;
    try {
      scene = await openScene(type, { preview, ...options.look });
      await run(scene);
      assert.deepEqual(scene.complaints, []);
    } finally {
      await scene?.page.context().close();
      await preview.remove();
    }
  });
}
