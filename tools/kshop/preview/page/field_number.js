// Numbers: one with a slider, several side by side, sixteen as a square.

import { Entry } from "./entry.js";
import { Field } from "./field.js";
import { button, el, setAttribute } from "./dom.js";
import { integerText, niceStep, numberText, parseNumber, roundTo, sliderEnds } from "./number.js";
import { newGesture } from "./edits.js";

const SCRUB_PIXELS = 4; // of a drag with the middle button, for one step

/** One channel: an entry that takes numbers, arrow keys and drags with the middle button, and shows its expression. */
class Channel {
  constructor(field, index) {
    this.field = field;
    this.index = index;
    this.entry = new Entry({
      label: "",
      style: "number",
      commit: (text) => this.commit(text),
      attributes: { inputmode: "decimal" },
    });
    this.entry.element.addEventListener("keydown", (event) => this.key(event));
    this.entry.element.addEventListener("pointerdown", (event) => this.scrub(event));
    this.flag = button("ƒ", () => field.openExpression(index), {
      class: "flag",
      title: "Edit the expression",
      hidden: true,
    });
    this.element = el("span", { class: "channel" }, this.entry.element, this.flag);
  }

  get name() {
    return this.field.parm.channels[this.index];
  }

  get value() {
    return this.field.parm.values[this.index];
  }

  get step() {
    const { kind, range } = this.field.parm;
    if (kind === "int") return 1;
    const { min, max } = sliderEnds(range ?? {}, 0);
    return Math.max(niceStep(min, max) * 10, 1e-6);
  }

  show() {
    const expression = this.field.parm.expressions?.[this.index];
    const isNumber = typeof this.value === "number";
    const text = isNumber
      ? this.field.textOf(this.value)
      : (this.field.parm.texts?.[this.index] ?? String(this.value ?? ""));
    this.entry.set(text);
    this.entry.enable(this.field.enabled);
    this.entry.label(this.field.parm.size === 1 ? this.field.parm.label : this.name);
    this.entry.element.readOnly = Boolean(expression);
    this.element.classList.toggle("has-expression", Boolean(expression));
    this.element.classList.toggle("is-wrong", Boolean(expression?.error));
    setAttribute(this.entry.element, "title", expression ? expression.text : null);
    this.flag.hidden = !expression;
  }

  commit(text) {
    const value = parseNumber(text);
    if (value === null) {
      this.field.complain(`"${text}" is no number.`);
      this.entry.set(this.entry.shown);
      return;
    }
    this.field.setChannel(this.name, this.field.parm.kind === "int" ? Math.round(value) : value);
  }

  bump(steps, gesture) {
    const step = this.step;
    const next = roundTo(
      (parseNumber(this.entry.element.value) ?? this.value) + steps * step,
      Math.min(step, 1),
    );
    this.entry.setTyping(false);
    this.entry.set(this.field.textOf(next));
    this.field.setChannel(this.name, next, gesture);
  }

  key(event) {
    const direction = { ArrowUp: 1, ArrowDown: -1 }[event.key];
    if (!direction || this.entry.element.readOnly) return;
    event.preventDefault();
    this.bump(direction * (event.shiftKey ? 10 : 1));
  }

  scrub(event) {
    if (event.button !== 1 || !this.field.enabled || this.entry.element.readOnly) return;
    event.preventDefault();
    const gesture = newGesture();
    let from = event.clientX;
    const input = this.entry.element;
    input.setPointerCapture(event.pointerId);
    const move = (e) => {
      const steps = Math.trunc((e.clientX - from) / SCRUB_PIXELS);
      if (steps === 0) return;
      from += steps * SCRUB_PIXELS;
      this.bump(steps * (e.shiftKey ? 10 : 1), gesture);
    };
    input.addEventListener("pointermove", move);
    input.addEventListener("lostpointercapture", () => input.removeEventListener("pointermove", move), {
      once: true,
    });
  }
}

export class NumberField extends Field {
  constructor(parm, desk) {
    super(parm, desk);
    this.channels = parm.channels.map((_, i) => new Channel(this, i));
    const square = parm.size === 16;
    this.numbers = el(
      "div",
      { class: square ? "matrix-grid" : "numbers" },
      ...this.channels.map((c) => c.element),
    );
    this.body.append(this.numbers);
    if (parm.slider) this.addSlider();
  }

  textOf(value) {
    return this.parm.kind === "int" ? integerText(value) : numberText(value);
  }

  addSlider() {
    this.gesture = newGesture();
    this.slider = el("input", {
      type: "range",
      class: "slider",
      "aria-label": `${this.parm.label} slider`,
      oninput: () => this.drag(),
      onchange: () => {
        this.gesture = newGesture();
      },
    });
    this.body.append(this.slider);
  }

  drag() {
    const value = Number(this.slider.value);
    this.channels[0].entry.set(this.textOf(value));
    this.fillSlider(value);
    this.setChannel(this.parm.channels[0], value, this.gesture);
  }

  show() {
    for (const channel of this.channels) channel.show();
    if (this.slider) this.showSlider();
  }

  showSlider() {
    const value = this.parm.values[0];
    const range = this.parm.range ?? {};
    const { min, max } = sliderEnds(range, value);
    const step = this.parm.kind === "int" ? 1 : niceStep(min, max);
    Object.entries({ min, max, step }).forEach(([name, text]) => setAttribute(this.slider, name, text));
    if (Number(this.slider.value) !== value) this.slider.value = value;
    this.slider.disabled = !this.enabled || Boolean(this.parm.expressions?.[0]);
    this.slider.classList.toggle("hard-min", Boolean(range.min_hard));
    this.slider.classList.toggle("hard-max", Boolean(range.max_hard));
    this.fillSlider(value);
  }

  fillSlider(value) {
    const min = Number(this.slider.min);
    const part = (value - min) / (Number(this.slider.max) - min);
    this.slider.style.setProperty("--part", `${Math.max(0, Math.min(1, part)) * 100}%`);
    this.slider.setAttribute("aria-valuetext", this.textOf(value));
  }
}
