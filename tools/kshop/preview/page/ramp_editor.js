// The drawing of a ramp with its keys as handles: click to add, drag or arrows to move, Delete to delete.

import { arrange, el, roving, svg } from "./dom.js";
import { hexOf, tidy, toScreen } from "./color.js";
import { newGesture } from "./edits.js";
import { numberText } from "./number.js";
import { rampCurve } from "./ramp_curve.js";

const SAMPLES = 256;
const GRID = [0.25, 0.5, 0.75];
const clamp = (x, low, high) => Math.max(low, Math.min(high, x));

export class RampEditor {
  /** `owner`: changed(keys, gesture), select(index), label; keys are {position, value, interpolation}. */
  constructor(owner, isColor) {
    this.owner = owner;
    this.isColor = isColor;
    this.keys = [];
    this.selected = 0;
    this.handles = [];
    this.drawing = isColor
      ? el("canvas", { class: "ramp-canvas", width: SAMPLES, height: 1, "aria-hidden": "true" })
      : this.makeGraph();
    this.track = el("div", { class: "ramp-track" });
    this.element = el(
      "div",
      {
        class: `ramp-editor ${isColor ? "is-color" : "is-float"}`,
        role: "group",
        onpointerdown: (event) => this.press(event),
      },
      this.drawing,
      this.track,
    );
  }

  makeGraph() {
    this.area = svg("path", { class: "ramp-area" });
    this.line = svg("path", { class: "ramp-line" });
    const grid = GRID.flatMap((x) => [
      svg("line", { class: "ramp-grid", x1: x, x2: x, y1: 0, y2: 1 }),
      svg("line", { class: "ramp-grid", x1: 0, x2: 1, y1: x, y2: x }),
    ]);
    return svg(
      "svg",
      { class: "ramp-graph", viewBox: "0 0 1 1", preserveAspectRatio: "none", "aria-hidden": "true" },
      ...grid,
      this.area,
      this.line,
    );
  }

  /** Draws these keys; `words` are the tokens of the interpolations. */
  update(keys, words, enabled) {
    this.keys = keys;
    this.words = words;
    this.enabled = enabled;
    this.selected = clamp(this.selected, 0, Math.max(0, keys.length - 1));
    if (!this.dragging) this.findRange();
    this.draw();
    this.placeHandles();
  }

  // Values outside 0 to 1 widen the drawing.
  findRange() {
    const values = this.isColor ? [] : this.keys.map((key) => key.value);
    this.low = Math.min(0, ...values);
    this.high = Math.max(1, ...values);
  }

  curve() {
    return rampCurve(
      this.keys.map((key) => ({
        position: key.position,
        value: [key.value].flat(),
        word: this.words[key.interpolation],
      })),
    );
  }

  draw() {
    const curve = this.curve();
    if (this.isColor) this.drawColors(curve);
    else this.drawLine(curve);
  }

  drawColors(curve) {
    const context = this.drawing.getContext("2d");
    const image = context.createImageData(SAMPLES, 1);
    for (let i = 0; i < SAMPLES; i += 1) {
      const rgb = curve(i / (SAMPLES - 1));
      image.data.set([...rgb.slice(0, 3).map((x) => Math.round(toScreen(x) * 255)), 255], i * 4);
    }
    context.putImageData(image, 0, 0);
  }

  drawLine(curve) {
    const points = [];
    for (let i = 0; i <= SAMPLES; i += 1)
      points.push(`${(i / SAMPLES).toFixed(4)},${(1 - this.part(curve(i / SAMPLES)[0])).toFixed(4)}`);
    this.line.setAttribute("d", `M${points.join("L")}`);
    this.area.setAttribute("d", `M0,1L${points.join("L")}L1,1Z`);
  }

  part(value) {
    return (value - this.low) / (this.high - this.low);
  }

  placeHandles() {
    while (this.handles.length < this.keys.length) this.handles.push(this.makeHandle(this.handles.length));
    this.handles.length = this.keys.length;
    arrange(this.track, this.handles);
    this.keys.forEach((key, i) => this.placeHandle(this.handles[i], key, i));
    roving(this.handles, this.selected);
  }

  placeHandle(handle, key, i) {
    handle.style.left = `${clamp(key.position, 0, 1) * 100}%`;
    if (this.isColor) handle.style.setProperty("--color", hexOf(key.value));
    else handle.style.top = `${(1 - clamp(this.part(key.value), 0, 1)) * 100}%`;
    handle.classList.toggle("selected", i === this.selected);
    handle.setAttribute("aria-label", `Key ${i + 1} of ${this.keys.length}`);
    handle.setAttribute("aria-valuenow", numberText(key.position));
    handle.setAttribute(
      "aria-valuetext",
      `position ${numberText(key.position)}, ${this.isColor ? hexOf(key.value) : `value ${numberText(key.value)}`}`,
    );
    handle.setAttribute("aria-disabled", !this.enabled);
  }

  makeHandle(i) {
    return el("div", {
      class: "ramp-handle",
      role: "slider",
      tabindex: -1,
      "aria-valuemin": 0,
      "aria-valuemax": 1,
      onkeydown: (event) => this.key(event, i),
      onfocus: () => this.select(i),
    });
  }

  select(i) {
    if (this.selected === i) return;
    this.selected = i;
    this.placeHandles();
    this.owner.select(i);
  }

  focus(i) {
    this.select(i);
    this.handles[i]?.focus();
  }

  at(event) {
    const box = this.track.getBoundingClientRect();
    return {
      position: clamp((event.clientX - box.left) / box.width, 0, 1),
      value: this.low + (this.high - this.low) * clamp(1 - (event.clientY - box.top) / box.height, 0, 1),
    };
  }

  press(event) {
    if (!this.enabled || event.button !== 0) return;
    event.preventDefault();
    let i = this.handles.indexOf(event.target.closest(".ramp-handle"));
    if (i < 0) i = this.add(this.at(event));
    this.focus(i);
    this.drag(event, i);
  }

  drag(event, i) {
    const gesture = newGesture();
    const move = (e) => this.move(i, this.at(e), gesture);
    this.dragging = true;
    this.element.setPointerCapture(event.pointerId);
    this.element.addEventListener("pointermove", move);
    this.element.addEventListener(
      "lostpointercapture",
      () => {
        this.dragging = false;
        this.element.removeEventListener("pointermove", move);
      },
      { once: true },
    );
  }

  // A new key takes the ramp's own colour, or the height that was clicked, and goes on as the key before it does.
  add({ position, value }) {
    const curve = this.curve();
    const before =
      this.keys.filter((key) => key.position <= position).sort((a, b) => b.position - a.position)[0] ??
      this.keys[0];
    const key = {
      position: tidy(position),
      value: this.isColor ? curve(position).map(tidy) : tidy(value),
      interpolation: before?.interpolation ?? 1,
    };
    const place = this.keys.filter((other) => other.position <= position).length;
    this.change([...this.keys.slice(0, place), key, ...this.keys.slice(place)], newGesture());
    return place;
  }

  move(i, { position, value }, gesture) {
    const moved = { ...this.keys[i], position: tidy(position) };
    if (!this.isColor) moved.value = tidy(value);
    this.change(
      this.keys.map((key, k) => (k === i ? moved : key)),
      gesture,
    );
  }

  remove(i) {
    if (this.keys.length <= 1) return;
    this.change(
      this.keys.filter((_, k) => k !== i),
      newGesture(),
    );
    this.selected = -1;
    this.focus(Math.min(i, this.keys.length - 1));
  }

  change(keys, gesture) {
    this.update(keys, this.words, this.enabled);
    this.owner.changed(keys, gesture);
  }

  key(event, i) {
    const step = event.shiftKey ? 0.1 : 0.01;
    const key = this.keys[i];
    const moves = {
      ArrowLeft: [-step, 0],
      ArrowRight: [step, 0],
      ArrowUp: [0, step],
      ArrowDown: [0, -step],
    };
    const to = { PageUp: i - 1, PageDown: i + 1, Home: 0, End: this.keys.length - 1 }[event.key];
    if (to !== undefined) this.focus(clamp(to, 0, this.keys.length - 1));
    else if (!this.enabled) return;
    else if (moves[event.key]) {
      const [dx, dy] = moves[event.key];
      this.move(i, {
        position: clamp(key.position + dx, 0, 1),
        value: this.isColor ? 0 : key.value + dy * (this.high - this.low),
      });
    } else if (event.key === "Delete" || event.key === "Backspace") this.remove(i);
    else if (event.key === "Insert" || event.key === "+") this.addBehind(i);
    else return;
    event.preventDefault();
  }

  /** A new key half-way to the next one. */
  addBehind(i) {
    const here = this.keys[i]?.position ?? 0;
    const next =
      this.keys
        .map((key) => key.position)
        .filter((position) => position > here)
        .sort((a, b) => a - b)[0] ?? 1;
    const position = (here + next) / 2;
    this.focus(this.add({ position, value: this.curve()(position)[0] ?? 0 }));
  }
}
