// The panel behind a swatch: a square of saturation and brightness, a bar of hues, and the hexadecimal number.

import { Entry } from "./entry.js";
import { el } from "./dom.js";
import { hexOf, hsvOf, parseHex, rgbOf } from "./color.js";
import { newGesture } from "./edits.js";
import { openPopup } from "./popup.js";

const clamp = (x) => Math.max(0, Math.min(1, x));

class Picker {
  constructor(color, changed) {
    this.changed = changed;
    this.hsv = hsvOf(color);
    this.gesture = newGesture();
    this.thumb = el("span", { class: "picker-thumb" });
    this.square = el(
      "div",
      {
        class: "picker-square",
        tabindex: 0,
        role: "slider",
        "aria-label": "Saturation and brightness",
        "aria-valuenow": 0,
        onkeydown: (e) => this.key(e),
        onpointerdown: (e) => this.press(e),
      },
      this.thumb,
    );
    this.hue = el("input", {
      type: "range",
      class: "picker-hue",
      min: 0,
      max: 1,
      step: 0.001,
      "aria-label": "Hue",
      oninput: () => this.take([Number(this.hue.value), this.hsv[1], this.hsv[2]]),
      onchange: () => {
        this.gesture = newGesture();
      },
    });
    this.hex = new Entry({ label: "Hexadecimal", style: "code", commit: (text) => this.commitHex(text) });
    this.element = el(
      "div",
      { class: "picker" },
      this.square,
      this.hue,
      el(
        "div",
        { class: "button-row" },
        this.hex.element,
        el("span", { class: "quiet", text: "sRGB; the node gets linear" }),
      ),
    );
    this.show();
  }

  show() {
    const [h, s, v] = this.hsv;
    this.square.style.setProperty("--hue", hexOf(rgbOf([h, 1, 1])));
    this.thumb.style.left = `${s * 100}%`;
    this.thumb.style.top = `${(1 - v) * 100}%`;
    this.square.setAttribute(
      "aria-valuetext",
      `saturation ${Math.round(s * 100)} %, brightness ${Math.round(v * 100)} %`,
    );
    this.hue.value = h;
    this.hex.set(hexOf(rgbOf(this.hsv)));
  }

  take(hsv) {
    this.hsv = hsv;
    this.show();
    this.changed(rgbOf(hsv), this.gesture);
  }

  commitHex(text) {
    const color = parseHex(text);
    if (!color) return this.hex.set(this.hex.shown);
    this.hsv = hsvOf(color);
    this.show();
    return this.changed(color, newGesture());
  }

  press(event) {
    if (event.button !== 0) return;
    this.gesture = newGesture();
    const to = (e) => {
      const box = this.square.getBoundingClientRect();
      this.take([
        this.hsv[0],
        clamp((e.clientX - box.left) / box.width),
        1 - clamp((e.clientY - box.top) / box.height),
      ]);
    };
    this.square.setPointerCapture(event.pointerId);
    this.square.addEventListener("pointermove", to);
    this.square.addEventListener(
      "lostpointercapture",
      () => this.square.removeEventListener("pointermove", to),
      { once: true },
    );
    to(event);
  }

  key(event) {
    const [dx, dy] =
      { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] }[event.key] ?? [];
    if (dx === undefined) return;
    event.preventDefault();
    const step = event.shiftKey ? 0.1 : 0.01;
    this.take([this.hsv[0], clamp(this.hsv[1] + dx * step), clamp(this.hsv[2] + dy * step)]);
  }
}

/** Opens the picker beside `anchor`; `changed` hears each linear colour and the gesture it belongs to. */
export function openPicker(anchor, color, changed, label) {
  const picker = new Picker(color, changed);
  if (openPopup(anchor, picker.element, { label })) picker.square.focus();
}
