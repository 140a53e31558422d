// The pictures of docs/shader-writers.md: they show something, at the size of the ones that are kept.

import assert from "node:assert/strict";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import test from "node:test";
import zlib from "node:zlib";
import { keyPictures, shadersOf, takeKeyPicture } from "./key_pictures.mjs";
import { closeBrowser } from "./scene.mjs";

const KEPT = path.join(path.dirname(new URL(import.meta.url).pathname), "../../docs/images/keys");
const NEAR = 12; // pixels that another machine's fonts may make of difference

test.after(closeBrowser);

/** Width and height of a PNG file, and the bytes of its pixels, filtered as they are. */
function png(file) {
  const bytes = fs.readFileSync(file);
  const packed = [];
  for (let at = 8; at < bytes.length; at += bytes.readUInt32BE(at) + 12) {
    if (bytes.toString("latin1", at + 4, at + 8) === "IDAT")
      packed.push(bytes.subarray(at + 8, at + 8 + bytes.readUInt32BE(at)));
  }
  return {
    width: bytes.readUInt32BE(16),
    height: bytes.readUInt32BE(20),
    pixels: zlib.inflateSync(Buffer.concat(packed)),
  };
}

for (const name of ["disable-when", "callback"]) {
  test(`the picture of ${name} is as large as the kept one and not blank`, { timeout: 120000 }, async () => {
    const directory = fs.mkdtempSync(path.join(os.tmpdir(), "key_pictures_"));
    try {
      const picture = keyPictures().find((one) => one.name === name);
      const made = png(await takeKeyPicture(picture, directory));
      const kept = png(path.join(KEPT, `${name}.png`));
      assert.ok(Math.abs(made.width - kept.width) <= NEAR, `${made.width} wide, not ${kept.width}`);
      assert.ok(Math.abs(made.height - kept.height) <= NEAR, `${made.height} high, not ${kept.height}`);
      const drawn = made.pixels.filter((byte) => byte !== 0).length; // a blank row is all zeros once filtered
      assert.ok(drawn > 3000, `only ${drawn} bytes of drawing`);
    } finally {
      fs.rmSync(directory, { recursive: true });
    }
  });
}

test("a picture's shader has the parameters that the example names", () => {
  const document = { nodes: [{ name: "zelk__a", parameters: [{ name: "x" }, { name: "xy" }] }, { name: "zelk__b" }] };
  assert.deepEqual(shadersOf('["zelk__a".parameters.xy]', document), {
    nodes: [{ name: "zelk__a", parameters: [{ name: "xy" }] }],
  });
});
